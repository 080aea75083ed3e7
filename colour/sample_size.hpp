// colour/sample_size.hpp: at how many positions an image is looked at.
#pragma once

#include <cstdint>

namespace wispen::colour {

/// An image of at most so many positions is looked at as it is; a larger one at about so many.
inline constexpr std::int32_t kSamplingBudget = 2000;

struct SampleSize {
  std::int32_t width = 0;
  std::int32_t height = 0;
  friend bool operator==(const SampleSize&, const SampleSize&) = default;
};

/// From the image's size in points. The aspect ratio is the truncated quotient, so that every landscape image
/// up to 2:1 is looked at in a square, and a large portrait one not at all: its width is then 0.
SampleSize sample_size(double width, double height);

}  // namespace wispen::colour
