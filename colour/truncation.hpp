// colour/truncation.hpp: from floating point to 32-bit integers, as the phone's processor converts.
#pragma once

#include <concepts>
#include <cstdint>
#include <limits>

namespace wispen::colour {

/// Towards zero; values beyond the integers give the nearest one, and no number gives 0. (In C++ alone such a
/// conversion means nothing, and processors differ.)
template <std::floating_point T>
constexpr std::int32_t truncated(T value) {
  constexpr T kBound = static_cast<T>(2147483648.0);  // exact in single precision too
  if (value >= kBound) return std::numeric_limits<std::int32_t>::max();
  if (value > -kBound) return static_cast<std::int32_t>(value);
  return value <= -kBound ? std::numeric_limits<std::int32_t>::min() : 0;
}

}  // namespace wispen::colour
