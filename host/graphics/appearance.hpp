// host/graphics/appearance.hpp: what the user chose that changes how the same thing is drawn.
#pragma once

#include <cstdint>

namespace wispen::graphics {

/// The looks that dynamic colours are defined for. What is presented over the dark stands on a lighter ground
/// there, so that its edge is seen; in the light there is no such step.
enum class Appearance : std::uint8_t { Light, Dark, DarkElevated };

constexpr bool is_dark(Appearance appearance) { return appearance != Appearance::Light; }
/// The look of what is presented over this one.
constexpr Appearance elevated(Appearance appearance) {
  return is_dark(appearance) ? Appearance::DarkElevated : Appearance::Light;
}

/// The family of device that image names and metrics may depend on.
enum class Idiom : std::uint8_t { Phone, Pad };

}  // namespace wispen::graphics
