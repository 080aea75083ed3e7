// host/layout/geometry.hpp: points, sizes and rectangles as plain numbers, in points, y growing downwards.
#pragma once

namespace wispen::layout {

struct Point {
  double x = 0;
  double y = 0;
  friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
  double width = 0;
  double height = 0;
  friend bool operator==(const Size&, const Size&) = default;
};

struct Rect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
  friend bool operator==(const Rect&, const Rect&) = default;

  double right() const { return x + width; }
  double bottom() const { return y + height; }
  Size size() const { return {width, height}; }
};

struct Insets {
  double top = 0;
  double left = 0;
  double bottom = 0;
  double right = 0;
  friend bool operator==(const Insets&, const Insets&) = default;
};

enum class Axis { Horizontal = 0, Vertical = 1 };

enum class Direction { LeftToRight, RightToLeft };

}  // namespace wispen::layout
