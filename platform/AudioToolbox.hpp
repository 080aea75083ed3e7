// platform/AudioToolbox.hpp: the system's short sounds.
#pragma once

#include <cstdint>

extern "C" {
/// Plays it and goes on at once; 1519 to 1521 are taps that are felt, not heard.
void AudioServicesPlaySystemSound(std::uint32_t sound);
}
