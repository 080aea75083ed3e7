// tests/host/layout/near_rect.hpp: a matcher for frames.
#pragma once

#include <gmock/gmock.h>

#include <cmath>
#include <ostream>

#include "host/layout/geometry.hpp"

namespace wispen::layout {

inline void PrintTo(const Rect& rect, std::ostream* out) {
  *out << '(' << rect.x << ' ' << rect.y << ' ' << rect.width << ' ' << rect.height << ')';
}

/// Within a millionth of a point.
inline auto NearRect(double x, double y, double width, double height) {
  using testing::AllOf;
  using testing::DoubleNear;
  using testing::Field;
  return AllOf(Field("x", &Rect::x, DoubleNear(x, 1e-6)), Field("y", &Rect::y, DoubleNear(y, 1e-6)),
               Field("width", &Rect::width, DoubleNear(width, 1e-6)),
               Field("height", &Rect::height, DoubleNear(height, 1e-6)));
}

}  // namespace wispen::layout
