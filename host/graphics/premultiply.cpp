// host/graphics/premultiply.cpp: pixels as files hold them, made into pixels as they are kept.

#include "host/graphics/premultiply.hpp"

#include <bit>
#include <cstring>

namespace wispen::graphics {

namespace {

static_assert(std::endian::native == std::endian::little, "a pixel's red is its lowest byte");

using Words = std::uint16_t __attribute__((vector_size(16)));
using Bytes = std::uint8_t __attribute__((vector_size(16)));

/// Two pixels in words, red first, to two in words, blue first, multiplied by their alpha.
Words premultiplied(Words rgba) {
  const Words alpha = __builtin_shufflevector(rgba, rgba, 3, 3, 3, 3, 7, 7, 7, 7);
  const Words bgra = __builtin_shufflevector(rgba, rgba, 2, 1, 0, 3, 6, 5, 4, 7);
  // Alpha itself is multiplied by one.
  constexpr Words kOne = {0, 0, 0, 255, 0, 0, 0, 255};
  const Words product = bgra * (alpha | kOne) + 128;
  return (product + (product >> 8)) >> 8;
}

}  // namespace

void premultiply_row(const std::uint32_t* rgba, std::uint32_t* argb, int width) {
  constexpr int kAtOnce = 4;
  const Bytes zero{};
  int x = 0;
  for (; x + kAtOnce <= width; x += kAtOnce) {
    Bytes four;
    std::memcpy(&four, rgba + x, sizeof four);
    const auto low = reinterpret_cast<Words>(
        __builtin_shufflevector(four, zero, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23));
    const auto high = reinterpret_cast<Words>(
        __builtin_shufflevector(four, zero, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31));
    const Bytes out = __builtin_shufflevector(reinterpret_cast<Bytes>(premultiplied(low)),
                                              reinterpret_cast<Bytes>(premultiplied(high)), 0, 2, 4, 6, 8, 10,
                                              12, 14, 16, 18, 20, 22, 24, 26, 28, 30);
    std::memcpy(argb + x, &out, sizeof out);
  }
  for (; x < width; ++x) {
    const std::uint32_t pixel = rgba[x];
    argb[x] = premultiplied(pixel >> 24, pixel & 0xFF, pixel >> 8 & 0xFF, pixel >> 16 & 0xFF);
  }
}

void opaque_row(const std::uint32_t* rgbx, std::uint32_t* argb, int width) {
  for (int x = 0; x < width; ++x) {
    const std::uint32_t pixel = rgbx[x];
    argb[x] = 0xFF000000 | (pixel & 0xFF) << 16 | (pixel & 0xFF00) | (pixel >> 16 & 0xFF);
  }
}

}  // namespace wispen::graphics
