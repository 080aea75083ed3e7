// host/graphics/png_filter.cpp: a PNG's rows, made whole again from the differences that the file holds.

#include "host/graphics/png_filter.hpp"

#include <cstddef>
#include <cstring>

namespace wispen::graphics {

namespace {

// Each filter leans on the pixel before, so the time goes into waiting for it: a pixel's four bytes are
// worked in one register, and what does not depend on the pixel before is kept out of the chain.
using Words = std::int16_t __attribute__((vector_size(16)));
using Bytes = std::uint8_t __attribute__((vector_size(16)));
using Lanes = std::uint32_t __attribute__((vector_size(16)));

std::uint32_t load(const std::uint8_t* bytes) {
  std::uint32_t pixel = 0;
  std::memcpy(&pixel, bytes, sizeof pixel);
  return pixel;
}

/// The sums of the four bytes, each within itself.
std::uint32_t sum(std::uint32_t a, std::uint32_t b) {
  constexpr std::uint32_t kTop = 0x80808080;
  return ((a & ~kTop) + (b & ~kTop)) ^ ((a ^ b) & kTop);
}

/// The halves of the four bytes' sums, rounded down.
std::uint32_t average(std::uint32_t a, std::uint32_t b) { return (a & b) + (((a ^ b) & 0xFEFEFEFE) >> 1); }

Words widen(std::uint32_t pixel) {
  const auto bytes = reinterpret_cast<Bytes>(Lanes{pixel, 0, 0, 0});
  const Bytes zero{};
  return reinterpret_cast<Words>(
      __builtin_shufflevector(bytes, zero, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23));
}

/// The reverse, of words from 0 to 255.
std::uint32_t narrow(Words words) {
  std::uint64_t four = 0;
  std::memcpy(&four, &words, sizeof four);
  four = (four | four >> 8) & 0x0000FFFF0000FFFF;
  return static_cast<std::uint32_t>(four | four >> 16);
}

Words magnitude(Words words) { return words > -words ? words : -words; }

/// Whichever of left, above and above left is nearest to left + above - above left; the first of equals.
Words paeth(Words left, Words above, Words above_left) {
  const Words to_left = magnitude(above - above_left);
  const Words to_above = magnitude(left - above_left);
  const Words to_above_left = magnitude((above - above_left) + (left - above_left));
  const Words is_left = (to_left <= to_above) & (to_left <= to_above_left);
  return is_left ? left : (to_above <= to_above_left ? above : above_left);
}

template <int kBytes>
void restore(PngFilter filter, const std::uint8_t* packed, const std::uint32_t* above, std::uint32_t* row,
             int width) {
  const auto packed_at = [packed](int x) { return load(packed + std::ptrdiff_t{kBytes} * x); };
  std::uint32_t left = 0;
  switch (filter) {
    case PngFilter::None:
      for (int x = 0; x < width; ++x) row[x] = packed_at(x);
      break;
    case PngFilter::Left:
      for (int x = 0; x < width; ++x) row[x] = left = sum(left, packed_at(x));
      break;
    case PngFilter::Above:
      for (int x = 0; x < width; ++x) row[x] = sum(above[x], packed_at(x));
      break;
    case PngFilter::Average:
      for (int x = 0; x < width; ++x) {
        row[x] = left = sum(average(left, above[x]), packed_at(x));
      }
      break;
    case PngFilter::Paeth: {
      Words wide_left{};
      Words wide_above_left{};
      for (int x = 0; x < width; ++x) {
        const Words wide_above = widen(above[x]);
        const Words predicted = paeth(wide_left, wide_above, wide_above_left);
        wide_left = (predicted + widen(packed_at(x))) & 0xFF;
        wide_above_left = wide_above;
        row[x] = narrow(wide_left);
      }
      break;
    }
  }
}

}  // namespace

void restore_png_row(PngFilter filter, const std::uint8_t* packed, int bytes_per_pixel,
                     const std::uint32_t* above, std::uint32_t* row, int width) {
  if (bytes_per_pixel == 3) return restore<3>(filter, packed, above, row, width);
  restore<4>(filter, packed, above, row, width);
}

}  // namespace wispen::graphics
