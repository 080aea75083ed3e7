// host/graphics/resample_kernels.hpp: the two inner loops of scaling, once per kind of processor.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/graphics/resample.hpp"

namespace wispen::graphics::detail {

/// Weights are fractions of this; a pixel that is covered wholly gets exactly this much.
inline constexpr int kWeightOne = 1 << 14;
/// Between the passes a component holds 6 more bits than a byte.
inline constexpr int kVerticalShift = 8;
inline constexpr int kHorizontalShift = 20;

/// What one target row or column is made of. `count` is even; a weight that only pads is 0.
struct Taps {
  int first = 0;
  int count = 0;
  std::size_t weights = 0;  ///< index of the first weight
};

struct AxisFilter {
  std::vector<Taps> taps;
  std::vector<std::int16_t> weights;
};

struct RowKernels {
  /// The weighted sum of `count` rows of `bytes` bytes, from `rows` on, `stride` bytes apart, into `out`. A
  /// row of weight 0 is not read.
  void (*combine_rows)(const std::uint8_t* rows, std::ptrdiff_t stride, int count,
                       const std::int16_t* weights, std::size_t bytes, std::int16_t* out);
  /// One target row from a combined row, whose first pixel has the index `row_first`. The row is readable for
  /// one pixel beyond its end.
  void (*combine_columns)(const std::int16_t* row, int row_first, const AxisFilter& filter,
                          std::uint32_t* out);
};

const RowKernels& row_kernels(ResampleKernel kernel);

}  // namespace wispen::graphics::detail
