// tests/host/graphics/pictures.hpp: small pictures for the tests.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "host/graphics/pixels.hpp"

namespace wispen::graphics {

/// A picture whose pixel at (x, y) is what the function says.
inline PixelsRef picture(int width, int height, const std::function<std::uint32_t(int x, int y)>& pixel) {
  auto pixels = Pixels::create(width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) pixels->mutable_view().row(y)[x] = pixel(x, y);
  }
  return std::make_shared<const Pixels>(*std::move(pixels));
}

inline PixelsRef flat_picture(int width, int height, std::uint32_t argb) {
  return picture(width, height, [argb](int, int) { return argb; });
}

/// Premultiplied noise, the same for the same seed.
inline PixelsRef noise(int width, int height, std::uint32_t seed) {
  return picture(width, height, [state = seed * 2654435761u + 1](int, int) mutable {
    state = state * 1664525u + 1013904223u;
    const std::uint32_t alpha = state >> 24;
    const auto part = [alpha](std::uint32_t byte) { return byte * alpha / 255; };
    return alpha << 24 | part((state >> 16) & 0xFF) << 16 | part((state >> 8) & 0xFF) << 8 |
           part(state & 0xFF);
  });
}

}  // namespace wispen::graphics
