// host/graphics/premultiply.hpp: pixels as files hold them, made into pixels as they are kept.
#pragma once

#include <cstdint>

namespace wispen::graphics {

/// A pixel as it is kept, of components from 0 to 255; products are rounded to the nearest.
inline std::uint32_t premultiplied(std::uint32_t alpha, std::uint32_t red, std::uint32_t green,
                                   std::uint32_t blue) {
  const auto component = [alpha](std::uint32_t value) {
    const std::uint32_t product = value * alpha + 128;
    return (product + (product >> 8)) >> 8;
  };
  return alpha << 24 | component(red) << 16 | component(green) << 8 | component(blue);
}

/// A row of pixels whose bytes stand in memory as red, green, blue and alpha.
void premultiply_row(const std::uint32_t* rgba, std::uint32_t* argb, int width);

/// The same of pixels whose fourth byte has no meaning.
void opaque_row(const std::uint32_t* rgbx, std::uint32_t* argb, int width);

}  // namespace wispen::graphics
