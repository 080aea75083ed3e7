// host/core/system_sounds.cpp: the system's short sounds: none is heard, all are remembered.

#include "host/core/system_sounds.hpp"

namespace wispen {

namespace {

std::vector<std::uint32_t>& sounds() {
  static auto* const played = new std::vector<std::uint32_t>();
  return *played;
}

}  // namespace

const std::vector<std::uint32_t>& played_sounds() { return sounds(); }
void clear_played_sounds() { sounds().clear(); }
bool is_haptic(std::uint32_t sound) { return sound >= 1519 && sound <= 1521; }

}  // namespace wispen

void AudioServicesPlaySystemSound(std::uint32_t sound) { wispen::sounds().push_back(sound); }
