// host/graphics/resample.cpp: scales premultiplied pixels, area-averaged when they shrink.

#include "host/graphics/resample.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "host/graphics/resample_kernels.hpp"

namespace wispen::graphics {

namespace {

using detail::AxisFilter;
using detail::kWeightOne;
using detail::Taps;

void append_taps(AxisFilter& filter, int first, const std::vector<std::int16_t>& weights) {
  std::size_t begin = 0;
  std::size_t end = weights.size();
  while (begin < end && weights[begin] == 0) ++begin;
  while (end > begin && weights[end - 1] == 0) --end;
  Taps taps{first + static_cast<int>(begin), static_cast<int>(end - begin), filter.weights.size()};
  filter.weights.insert(filter.weights.end(), weights.begin() + static_cast<std::ptrdiff_t>(begin),
                        weights.begin() + static_cast<std::ptrdiff_t>(end));
  if (taps.count % 2 != 0) {
    filter.weights.push_back(0);
    ++taps.count;
  }
  filter.taps.push_back(taps);
}

// Rounding the running sum instead of each weight makes the weights add up to `total` exactly.
void average(AxisFilter& filter, int length, double from, double to, int total) {
  const int first = std::clamp(static_cast<int>(std::floor(from)), 0, length - 1);
  const int last = std::clamp(static_cast<int>(std::ceil(to)) - 1, first, length - 1);
  std::vector<std::int16_t> weights;
  weights.reserve(static_cast<std::size_t>(last - first) + 1);
  long given = 0;
  for (int i = first; i <= last; ++i) {
    const double share = i == last ? 1.0 : std::clamp((i + 1 - from) / (to - from), 0.0, 1.0);
    const long sum = std::lround(share * total);
    weights.push_back(static_cast<std::int16_t>(sum - given));
    given = sum;
  }
  append_taps(filter, first, weights);
}

void interpolate(AxisFilter& filter, int length, double centre, int total) {
  const double place = std::clamp(centre - 0.5, 0.0, length - 1.0);
  const int first = std::min(static_cast<int>(place), std::max(length - 2, 0));
  const auto second = static_cast<std::int16_t>(std::lround((place - first) * total));
  if (length == 1) {
    append_taps(filter, 0, {static_cast<std::int16_t>(total)});
  } else {
    append_taps(filter, first, {static_cast<std::int16_t>(total - second), second});
  }
}

AxisFilter axis_filter(int length, double origin, double extent, int target_length) {
  AxisFilter filter;
  filter.taps.reserve(static_cast<std::size_t>(target_length));
  const double step = length / extent;
  for (int target = 0; target < target_length; ++target) {
    const double begin = std::max<double>(target, origin);
    const double end = std::min<double>(target + 1, origin + extent);
    const int total = end > begin ? static_cast<int>(std::lround((end - begin) * kWeightOne)) : 0;
    if (total == 0) {
      filter.taps.push_back({});
    } else if (extent <= length) {
      average(filter, length, (begin - origin) * step, (end - origin) * step, total);
    } else {
      interpolate(filter, length, ((begin + end) / 2 - origin) * step, total);
    }
  }
  return filter;
}

}  // namespace

void resample(const PixelView& source, const Rect& where, const MutablePixelView& target,
              ResampleKernel kernel) {
  const bool drawn = !source.empty() && where.width() > 0 && where.height() > 0 &&
                     std::isfinite(where.max_x()) && std::isfinite(where.max_y()) &&
                     std::isfinite(where.min_x()) && std::isfinite(where.min_y());
  const AxisFilter columns =
      drawn ? axis_filter(source.width, where.min_x(), where.width(), target.width) : AxisFilter{};
  const bool square = source.width == source.height && target.width == target.height &&
                      where.min_x() == where.min_y() && where.width() == where.height();
  const AxisFilter rows =
      !drawn ? AxisFilter{}
             : (square ? columns : axis_filter(source.height, where.min_y(), where.height(), target.height));

  int first_column = source.width;
  int end_column = 0;
  for (const Taps& taps : columns.taps) {
    if (taps.count == 0) continue;
    first_column = std::min(first_column, taps.first);
    end_column = std::max(end_column, std::min(taps.first + taps.count, source.width));
  }
  const auto used = static_cast<std::size_t>(std::max(end_column - first_column, 0));
  // One pixel more than is filled, for the tap that pads the last pair.
  std::vector<std::int16_t> combined((used + 1) * 4, 0);
  const detail::RowKernels& kernels = detail::row_kernels(kernel);

  for (int y = 0; y < target.height; ++y) {
    std::uint32_t* out = target.row(y);
    const Taps taps = drawn ? rows.taps[static_cast<std::size_t>(y)] : Taps{};
    if (taps.count == 0 || used == 0) {
      std::fill_n(out, target.width, 0u);
      continue;
    }
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(source.row(taps.first) + first_column);
    kernels.combine_rows(bytes, source.stride * 4, taps.count, rows.weights.data() + taps.weights, used * 4,
                         combined.data());
    kernels.combine_columns(combined.data(), first_column, columns, out);
  }
}

}  // namespace wispen::graphics
