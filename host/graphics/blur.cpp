// host/graphics/blur.cpp: softens pixels, and changes how strong their colours are.

#include "host/graphics/blur.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "host/graphics/resample.hpp"

namespace wispen::graphics {

namespace {

constexpr int kPasses = 3;
constexpr int kMeanShift = 24;
constexpr double kLeastSigma = 0.25;
constexpr double kLargestSigma = 1000;

using Sums = std::array<std::uint32_t, 4>;

void change(Sums& sums, std::uint32_t entering, std::uint32_t leaving) {
  for (std::size_t channel = 0; channel < 4; ++channel) {
    const auto shift = static_cast<int>(channel * 8);
    sums[channel] += ((entering >> shift) & 0xFF) - ((leaving >> shift) & 0xFF);
  }
}

// The reciprocal is rounded up, by less than the half that is added: a flat area gives its own value back.
std::uint32_t mean(const Sums& sums, std::uint32_t width, std::uint64_t reciprocal) {
  std::uint32_t pixel = 0;
  for (std::size_t channel = 0; channel < 4; ++channel) {
    const std::uint64_t value = (sums[channel] + width / 2) * reciprocal >> kMeanShift;
    pixel |= static_cast<std::uint32_t>(value) << (channel * 8);
  }
  return pixel;
}

/// One box pass over `count` pixels, `step` apart, read from `in` and written to `out` without gaps.
void average_line(const std::uint32_t* in, std::ptrdiff_t step, int count, int radius, std::uint32_t* out) {
  const auto width = static_cast<std::uint32_t>(2 * radius + 1);
  const std::uint64_t reciprocal = ((std::uint64_t{1} << kMeanShift) + width - 1) / width;
  const auto at = [&](int i) { return in[std::clamp(i, 0, count - 1) * step]; };
  Sums sums{};
  for (int i = -radius; i <= radius; ++i) change(sums, at(i), 0);
  for (int i = 0; i < count; ++i) {
    out[i] = mean(sums, width, reciprocal);
    change(sums, at(i + radius + 1), at(i - radius));
  }
}

// Three boxes of these radii have together the spread of the Gaussian.
std::array<int, kPasses> box_radii(double sigma) {
  const double ideal = std::sqrt(12 * sigma * sigma / kPasses + 1);
  int lower = static_cast<int>(ideal);
  if (lower % 2 == 0) --lower;
  lower = std::max(lower, 1);
  const double variance = 12 * sigma * sigma;
  const double smaller =
      (variance - kPasses * lower * lower - 4.0 * kPasses * lower - 3.0 * kPasses) / (-4.0 * lower - 4);
  std::array<int, kPasses> radii{};
  for (int pass = 0; pass < kPasses; ++pass) {
    radii[static_cast<std::size_t>(pass)] = (pass < std::lround(smaller) ? lower : lower + 2) / 2;
  }
  return radii;
}

void blur_whole(const MutablePixelView& pixels, double sigma) {
  const std::array<int, kPasses> radii = box_radii(sigma);
  const auto longest = static_cast<std::size_t>(std::max(pixels.width, pixels.height));
  std::vector<std::uint32_t> a(longest);
  std::vector<std::uint32_t> b(longest);
  const auto line = [&](std::uint32_t* first, std::ptrdiff_t step, int count) {
    average_line(first, step, count, radii[0], a.data());
    average_line(a.data(), 1, count, radii[1], b.data());
    average_line(b.data(), 1, count, radii[2], a.data());
    for (int i = 0; i < count; ++i) first[i * step] = a[static_cast<std::size_t>(i)];
  };
  for (int y = 0; y < pixels.height; ++y) line(pixels.row(y), 1, pixels.width);
  for (int x = 0; x < pixels.width; ++x) line(pixels.pixels + x, pixels.stride, pixels.height);
}

// A strong blur leaves nothing that a smaller picture could not hold.
int reduction(const PixelView& pixels, double sigma) {
  constexpr double kSigmaLeft = 3;
  int factor = 1;
  while (factor < 16 && sigma / (factor * 2) >= kSigmaLeft && pixels.width >= factor * 4 &&
         pixels.height >= factor * 4) {
    factor *= 2;
  }
  return factor;
}

}  // namespace

void blur(const MutablePixelView& pixels, double sigma) { soften(pixels, 0, 0, pixels, sigma, 1); }

void soften(const PixelView& source, int left, int top, const MutablePixelView& target, double sigma,
            double saturation) {
  if (source.empty() || target.empty()) return;
  sigma = sigma > kLeastSigma ? std::min(sigma, kLargestSigma) : 0;
  const int factor = reduction(source, sigma);
  const int width = std::max(1, (source.width + factor / 2) / factor);
  const int height = std::max(1, (source.height + factor / 2) / factor);
  std::vector<std::uint32_t> memory(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  const MutablePixelView small{memory.data(), width, height, width};
  resample(source, Rect::make(0, 0, width, height), small);
  if (sigma > 0) blur_whole(small, sigma / factor);
  saturate(small, saturation);
  resample(small, Rect::make(-left, -top, source.width, source.height), target);
}

void saturate(const MutablePixelView& pixels, double factor) {
  if (factor == 1) return;
  constexpr int kOne = 1 << 12;
  const int strength = static_cast<int>(std::lround(factor * kOne));
  for (int y = 0; y < pixels.height; ++y) {
    std::uint32_t* row = pixels.row(y);
    for (int x = 0; x < pixels.width; ++x) {
      const int alpha = static_cast<int>(row[x] >> 24);
      const int red = static_cast<int>((row[x] >> 16) & 0xFF);
      const int green = static_cast<int>((row[x] >> 8) & 0xFF);
      const int blue = static_cast<int>(row[x] & 0xFF);
      // Weights of the eye's sense of lightness, in parts of 256.
      const int lightness = (54 * red + 183 * green + 19 * blue + 128) >> 8;
      const auto moved = [&](int value) {
        const int result = lightness + (((value - lightness) * strength + kOne / 2) >> 12);
        return static_cast<std::uint32_t>(std::clamp(result, 0, alpha));
      };
      row[x] = static_cast<std::uint32_t>(alpha) << 24 | moved(red) << 16 | moved(green) << 8 | moved(blue);
    }
  }
}

}  // namespace wispen::graphics
