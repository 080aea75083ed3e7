// host/graphics/appearance.hpp: what the user chose that changes how the same thing is drawn.
#pragma once

#include <cstdint>

namespace wispen::graphics {

/// The two looks that dynamic colours are defined for.
enum class Appearance : std::uint8_t { Light, Dark };

/// The family of device that image names and metrics may depend on.
enum class Idiom : std::uint8_t { Phone, Pad };

}  // namespace wispen::graphics
