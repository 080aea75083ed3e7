// tests/colour/random_pictures.hpp: pictures of many kinds, the same for the same seed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace wispen::testing {

/// Premultiplied red, green, blue, alpha. Noise, a few colours in runs, soft ramps, and mixtures with
/// transparent and half-transparent parts.
inline std::vector<std::uint8_t> random_picture(std::mt19937& random, std::size_t pixels) {
  const auto any = [&] { return static_cast<std::uint32_t>(random()); };
  const auto below = [&](std::uint32_t bound) { return any() % bound; };
  const std::uint32_t kind = below(4);
  const bool transparent = below(2) == 0;
  std::uint32_t palette[5];
  for (std::uint32_t& colour : palette) colour = any();
  std::vector<std::uint8_t> bytes;
  bytes.reserve(4 * pixels);
  std::uint32_t colour = any();
  std::uint32_t alpha = 255;
  for (std::size_t i = 0; i < pixels; ++i) {
    if (kind == 0) {
      colour = any();
    } else if (kind == 1) {
      if (below(12) == 0) colour = palette[below(5)];
    } else if (kind == 2) {
      colour += below(3) | below(3) << 8 | below(3) << 16;
    } else if (below(4) == 0) {
      colour = palette[below(5)] ^ (below(32) * 0x010101u);  // near, by up to a threshold or two
    }
    if (transparent && below(6) == 0) alpha = below(3) == 0 ? 255 : 120 + below(16);
    for (const std::uint32_t shift : {0u, 8u, 16u}) {
      bytes.push_back(static_cast<std::uint8_t>(((colour >> shift) & 0xFF) * alpha / 255));
    }
    bytes.push_back(static_cast<std::uint8_t>(alpha));
  }
  return bytes;
}

}  // namespace wispen::testing
