// host/graphics/path.hpp: outlines to fill, stroke and clip by.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "host/geometry/geometry.hpp"

namespace wispen::graphics {

/// A value. Shapes are added clockwise.
class Path {
 public:
  enum class Verb : std::uint8_t { Move, Line, Curve, Close };
  /// Move and Line use the first point, Curve all three (two controls and the end), Close none.
  struct Element {
    Verb verb;
    std::array<Point, 3> points;
    friend bool operator==(const Element&, const Element&) = default;
  };

  static Path rect(const Rect& rect);
  /// Corners of a circle's quarter; the radius is cut to half of the shorter side.
  static Path rounded_rect(const Rect& rect, double radius);
  /// A radius for each corner: top left, top right, bottom right, bottom left.
  static Path rounded_rect(const Rect& rect, const std::array<double, 4>& radii);
  static Path ellipse(const Rect& bounds);

  Path& move_to(Point point);
  Path& line_to(Point point);
  Path& curve_to(Point control1, Point control2, Point end);
  /// Radians from the x axis, y downwards; a line leads to its beginning when a piece is open.
  Path& arc(Point centre, double radius, double from, double to);
  Path& close();
  Path& append(const Path& other);

  bool empty() const { return elements_.empty(); }
  const std::vector<Element>& elements() const { return elements_; }
  /// Around all points, controls included.
  Rect bounds() const;
  Path transformed(const AffineTransform& transform) const;
  friend bool operator==(const Path&, const Path&) = default;

 private:
  std::vector<Element> elements_;
};

}  // namespace wispen::graphics
