// colour/sample_size.cpp: at how many positions an image is looked at.

#include "colour/sample_size.hpp"

#include <cmath>

#include "colour/truncation.hpp"

namespace wispen::colour {

SampleSize sample_size(double width, double height) {
  const SampleSize own{truncated(width), truncated(height)};
  // The product wraps, as 32 bits do.
  const auto product = static_cast<std::int32_t>(static_cast<std::uint32_t>(own.width) *
                                                 static_cast<std::uint32_t>(own.height));
  if (product <= kSamplingBudget) return own;
  // A height of 0 has a product of 0, and is out by now.
  const std::int32_t ratio = own.width / own.height;  // NOLINT(clang-analyzer-core.DivideZero)
  const float side = std::sqrt(static_cast<float>(ratio) * static_cast<float>(kSamplingBudget));
  return {truncated(side), truncated(static_cast<float>(kSamplingBudget) / side)};
}

}  // namespace wispen::colour
