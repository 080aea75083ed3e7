// tests/host/graphics/path_test.cpp: outlines to fill, stroke and clip by.

#include "host/graphics/path.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace wispen::graphics {
namespace {

TEST(Paths, AnArcStaysOnItsCircle) {
  Path path;
  path.arc({0, 0}, 10, 0, 3 * std::numbers::pi / 2);
  for (const Path::Element& element : path.elements()) {
    const Point end = element.points[element.verb == Path::Verb::Curve ? 2 : 0];
    EXPECT_NEAR(std::hypot(end.x, end.y), 10, 1e-9);
  }
}

TEST(Paths, ARadiusIsCutToHalfOfTheShorterSide) {
  EXPECT_EQ(Path::rounded_rect(Rect::make(0, 0, 20, 10), 50),
            Path::rounded_rect(Rect::make(0, 0, 20, 10), 5));
  EXPECT_EQ(Path::rounded_rect(Rect::make(0, 0, 20, 10), -1), Path::rect(Rect::make(0, 0, 20, 10)));
}

}  // namespace
}  // namespace wispen::graphics
