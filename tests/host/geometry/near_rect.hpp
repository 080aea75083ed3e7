// tests/host/geometry/near_rect.hpp: a matcher for frames.
#pragma once

#include <gmock/gmock.h>

#include <ostream>

#include "host/geometry/geometry.hpp"

namespace wispen {

inline void PrintTo(const Rect& rect, std::ostream* out) {
  *out << '(' << rect.min_x() << ' ' << rect.min_y() << ' ' << rect.width() << ' ' << rect.height() << ')';
}

/// Within a millionth of a point.
inline auto NearRect(double x, double y, double width, double height) {
  const auto near = [](double value) { return ::testing::DoubleNear(value, 1e-6); };
  return ::testing::AllOf(::testing::Property("x", &Rect::min_x, near(x)),
                          ::testing::Property("y", &Rect::min_y, near(y)),
                          ::testing::Property("width", &Rect::width, near(width)),
                          ::testing::Property("height", &Rect::height, near(height)));
}

}  // namespace wispen
