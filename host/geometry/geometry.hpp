// host/geometry/geometry.hpp: points, sizes, rectangles and transforms, laid out as the platform's are.
#pragma once

#include <optional>
#include <type_traits>

namespace wispen {

/// A place, in points; y grows downwards unless said otherwise.
struct Point {
  double x = 0;
  double y = 0;
  friend bool operator==(const Point&, const Point&) = default;
};

/// An extent, in points.
struct Size {
  double width = 0;
  double height = 0;
  bool empty() const { return !(width > 0 && height > 0); }
  friend bool operator==(const Size&, const Size&) = default;
};

/// Distances inwards from the four edges, in points.
struct EdgeInsets {
  double top = 0;
  double left = 0;
  double bottom = 0;
  double right = 0;
  friend bool operator==(const EdgeInsets&, const EdgeInsets&) = default;
};

/// An origin and a size. A negative size is not normalised, and counts as empty.
struct Rect {
  Point origin;
  Size size;

  static Rect make(double x, double y, double width, double height) { return {{x, y}, {width, height}}; }

  double min_x() const { return origin.x; }
  double min_y() const { return origin.y; }
  double max_x() const { return origin.x + size.width; }
  double max_y() const { return origin.y + size.height; }
  double mid_x() const { return origin.x + size.width / 2; }
  double mid_y() const { return origin.y + size.height / 2; }
  double width() const { return size.width; }
  double height() const { return size.height; }
  bool empty() const { return size.empty(); }

  /// The left and top edges belong to the rectangle, the others do not.
  bool contains(Point point) const;
  bool contains(const Rect& other) const;
  bool intersects(const Rect& other) const;
  /// The common part; an empty rectangle at the origin where there is none.
  Rect intersection(const Rect& other) const;
  /// The smallest rectangle around both; an empty one adds nothing.
  Rect united(const Rect& other) const;
  Rect offset(double dx, double dy) const;
  /// Smaller by dx at the left and right and by dy above and below; larger for negative values.
  Rect inset(double dx, double dy) const;
  Rect inset(const EdgeInsets& insets) const;
  /// The smallest rectangle around this one whose edges lie on whole pixels at `scale`.
  Rect pixel_aligned(double scale = 1) const;

  friend bool operator==(const Rect&, const Rect&) = default;
};

/// x' = a x + c y + tx, y' = b x + d y + ty: the platform's order of fields.
struct AffineTransform {
  double a = 1;
  double b = 0;
  double c = 0;
  double d = 1;
  double tx = 0;
  double ty = 0;

  static AffineTransform translation(double dx, double dy) { return {1, 0, 0, 1, dx, dy}; }
  static AffineTransform scaling(double sx, double sy) { return {sx, 0, 0, sy, 0, 0}; }
  /// Radians; positive turns from the x axis towards the y axis.
  static AffineTransform rotation(double angle);

  bool is_identity() const { return *this == AffineTransform{}; }
  /// This transform first, then `next`.
  AffineTransform then(const AffineTransform& next) const;
  /// Nothing when the transform flattens the plane.
  std::optional<AffineTransform> inverted() const;
  Point apply(Point point) const;
  /// The bounds of the transformed rectangle.
  Rect apply(const Rect& rect) const;

  friend bool operator==(const AffineTransform&, const AffineTransform&) = default;
};

/// Rounded up to the pixel grid at `scale`. A value that misses a pixel by rounding error alone stays on it.
double ceil_to_pixel(double value, double scale);
/// Rounded to the nearest pixel at `scale`, halves away from zero.
double round_to_pixel(double value, double scale);

static_assert(std::is_trivially_copyable_v<Rect> && sizeof(Rect) == 4 * sizeof(double));
static_assert(std::is_trivially_copyable_v<AffineTransform> && sizeof(AffineTransform) == 6 * sizeof(double));

}  // namespace wispen
