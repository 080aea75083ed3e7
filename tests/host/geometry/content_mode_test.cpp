// tests/host/geometry/content_mode_test.cpp: where content of one size lies in a box of another.

#include "host/geometry/content_mode.hpp"

#include <gtest/gtest.h>

#include "tests/host/geometry/near_rect.hpp"

namespace wispen {
namespace {

TEST(ContentMode, PutsContentWhereEachModeSays) {
  const Rect bounds{{10, 20}, {100, 60}};
  const Size content{40, 40};
  const struct {
    ContentMode mode;
    double x, y, width, height;
  } cases[] = {
      {ContentMode::ScaleToFill, 10, 20, 100, 60}, {ContentMode::AspectFit, 30, 20, 60, 60},
      {ContentMode::AspectFill, 10, 0, 100, 100},  {ContentMode::Redraw, 10, 20, 100, 60},
      {ContentMode::Centre, 40, 30, 40, 40},       {ContentMode::Top, 40, 20, 40, 40},
      {ContentMode::Bottom, 40, 40, 40, 40},       {ContentMode::Left, 10, 30, 40, 40},
      {ContentMode::Right, 70, 30, 40, 40},        {ContentMode::TopLeft, 10, 20, 40, 40},
      {ContentMode::TopRight, 70, 20, 40, 40},     {ContentMode::BottomLeft, 10, 40, 40, 40},
      {ContentMode::BottomRight, 70, 40, 40, 40},
  };
  for (const auto& [mode, x, y, width, height] : cases) {
    EXPECT_THAT(content_rect(mode, content, bounds), NearRect(x, y, width, height)) << static_cast<int>(mode);
  }
}

TEST(ContentMode, LetsUnscaledContentReachBeyondTheBounds) {
  EXPECT_THAT(content_rect(ContentMode::Centre, {30, 20}, {{0, 0}, {10, 10}}), NearRect(-10, -5, 30, 20));
  EXPECT_THAT(content_rect(ContentMode::BottomRight, {30, 20}, {{0, 0}, {10, 10}}),
              NearRect(-20, -10, 30, 20));
}

TEST(ContentMode, KeepsNoRatioOfContentOrBoundsWithoutASize) {
  for (const ContentMode mode : {ContentMode::AspectFit, ContentMode::AspectFill}) {
    EXPECT_THAT(content_rect(mode, {0, 5}, {{0, 0}, {10, 30}}), NearRect(5, 15, 0, 0));
    EXPECT_THAT(content_rect(mode, {5, 5}, {{0, 0}, {0, 30}}), NearRect(0, 15, 0, 0));
  }
}

}  // namespace
}  // namespace wispen
