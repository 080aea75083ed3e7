// host/core/system_sounds.hpp: the system's short sounds: none is heard, all are remembered.
#pragma once

#include <cstdint>
#include <vector>

namespace wispen {

/// What was played since the last clear, oldest first. On the main thread.
const std::vector<std::uint32_t>& played_sounds();
void clear_played_sounds();
/// 1519 to 1521 are taps of the phone's motor, which a window can show.
bool is_haptic(std::uint32_t sound);

}  // namespace wispen

extern "C" [[gnu::visibility("default")]] void AudioServicesPlaySystemSound(std::uint32_t sound);
