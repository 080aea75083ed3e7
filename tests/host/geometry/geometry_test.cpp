// tests/host/geometry/geometry_test.cpp: points, sizes, rectangles and transforms, laid out as the
// platform's are.

#include "host/geometry/geometry.hpp"

#include <gtest/gtest.h>

#include <numbers>

namespace wispen {
namespace {

TEST(Geometry, RectanglesHoldTheirLeftAndTopEdgesOnly) {
  const Rect rect = Rect::make(10, 20, 30, 40);
  EXPECT_TRUE(rect.contains(Point{10, 20}));
  EXPECT_FALSE(rect.contains(Point{40, 30}));
  EXPECT_FALSE(rect.contains(Point{20, 60}));
}

TEST(Geometry, RectanglesThatOnlyTouchDoNotIntersect) {
  const Rect rect = Rect::make(0, 0, 10, 10);
  EXPECT_FALSE(rect.intersects(Rect::make(10, 0, 5, 5)));
  EXPECT_EQ(rect.intersection(Rect::make(5, 6, 10, 10)), Rect::make(5, 6, 5, 4));
}

TEST(Geometry, UnionIgnoresEmptyRectangles) {
  const Rect rect = Rect::make(5, 5, 10, 10);
  EXPECT_EQ(rect.united(Rect{}), rect);
  EXPECT_EQ(Rect{}.united(rect), rect);
  EXPECT_EQ(rect.united(Rect::make(0, 20, 1, 1)), Rect::make(0, 5, 15, 16));
}

TEST(Geometry, PixelAlignmentGrowsToWholePixelsButForgivesRoundingErrors) {
  EXPECT_EQ(Rect::make(0.3, 0.3, 1, 1).pixel_aligned(2), Rect::make(0, 0, 1.5, 1.5));
  EXPECT_EQ(ceil_to_pixel(0.1 + 0.2 + 0.2, 2), 0.5);
  EXPECT_EQ(ceil_to_pixel(20.287, 2), 20.5);
}

TEST(Geometry, ATransformAndItsInverseCancelOut) {
  const AffineTransform transform = AffineTransform::rotation(0.7)
                                        .then(AffineTransform::scaling(2, 3))
                                        .then(AffineTransform::translation(5, -4));
  const Point there = transform.apply(Point{3, 8});
  const Point back = transform.inverted()->apply(there);
  EXPECT_NEAR(back.x, 3, 1e-12);
  EXPECT_NEAR(back.y, 8, 1e-12);
  EXPECT_FALSE(AffineTransform::scaling(0, 1).inverted());
}

TEST(Geometry, AQuarterTurnLeadsFromXToY) {
  const Point turned = AffineTransform::rotation(std::numbers::pi / 2).apply(Point{1, 0});
  EXPECT_NEAR(turned.x, 0, 1e-12);
  EXPECT_NEAR(turned.y, 1, 1e-12);
}

}  // namespace
}  // namespace wispen
