// host/geometry/geometry.hpp: points, sizes, rectangles and transforms, laid out as the platform's are.
#pragma once

#include <concepts>
#include <optional>
#include <type_traits>

namespace wispen {

// Structures of the platform that are laid out alike come and go as these by themselves.
template <class T, class Own>
concept LaidOutAs = std::is_aggregate_v<T> && std::is_trivially_copyable_v<T> && sizeof(T) == sizeof(Own);
template <class T, class Own>
concept PointLike = LaidOutAs<T, Own> && requires(const T& t) {
  t.x;
  t.y;
};
template <class T, class Own>
concept SizeLike = LaidOutAs<T, Own> && requires(const T& t) {
  t.width;
  t.height;
};
template <class T, class Own>
concept InsetsLike = LaidOutAs<T, Own> && requires(const T& t) {
  t.top;
  t.left;
  t.bottom;
  t.right;
};
template <class T, class Own>
concept RectLike = LaidOutAs<T, Own> && requires(const T& t) {
  t.origin;
  t.size;
};
template <class T, class Own>
concept TransformLike = LaidOutAs<T, Own> && requires(const T& t) {
  t.a;
  t.b;
  t.c;
  t.d;
  t.tx;
  t.ty;
};

/// A position, in points; y grows downwards unless said otherwise.
struct Point {
  double x = 0;
  double y = 0;

  constexpr Point() = default;
  constexpr Point(double x_, double y_) : x(x_), y(y_) {}
  template <PointLike<Point> T>
  constexpr Point(const T& p) : x(p.x), y(p.y) {}  // NOLINT(google-explicit-constructor)
  template <PointLike<Point> T>
  constexpr operator T() const {  // NOLINT(google-explicit-constructor)
    return {x, y};
  }
  friend bool operator==(const Point&, const Point&) = default;
  template <PointLike<Point> T>
  friend bool operator==(const Point& a, const T& b) {
    return a == Point(b);
  }
};

/// An extent, in points.
struct Size {
  double width = 0;
  double height = 0;

  constexpr Size() = default;
  constexpr Size(double width_, double height_) : width(width_), height(height_) {}
  template <SizeLike<Size> T>
  constexpr Size(const T& s) : width(s.width), height(s.height) {}  // NOLINT(google-explicit-constructor)
  template <SizeLike<Size> T>
  constexpr operator T() const {  // NOLINT(google-explicit-constructor)
    return {width, height};
  }

  bool empty() const { return !(width > 0 && height > 0); }
  friend bool operator==(const Size&, const Size&) = default;
  template <SizeLike<Size> T>
  friend bool operator==(const Size& a, const T& b) {
    return a == Size(b);
  }
};

/// Distances inwards from the four edges, in points.
struct EdgeInsets {
  double top = 0;
  double left = 0;
  double bottom = 0;
  double right = 0;

  constexpr EdgeInsets() = default;
  constexpr EdgeInsets(double top_, double left_, double bottom_, double right_)
      : top(top_), left(left_), bottom(bottom_), right(right_) {}
  template <InsetsLike<EdgeInsets> T>
  constexpr EdgeInsets(const T& i)  // NOLINT(google-explicit-constructor)
      : top(i.top), left(i.left), bottom(i.bottom), right(i.right) {}
  template <InsetsLike<EdgeInsets> T>
  constexpr operator T() const {  // NOLINT(google-explicit-constructor)
    return {top, left, bottom, right};
  }

  friend bool operator==(const EdgeInsets&, const EdgeInsets&) = default;
  template <InsetsLike<EdgeInsets> T>
  friend bool operator==(const EdgeInsets& a, const T& b) {
    return a == EdgeInsets(b);
  }
};

/// An origin and a size. A negative size is not normalised, and counts as empty.
struct Rect {
  Point origin;
  Size size;

  constexpr Rect() = default;
  constexpr Rect(Point origin_, Size size_) : origin(origin_), size(size_) {}
  template <RectLike<Rect> T>
  constexpr Rect(const T& r) : origin(r.origin), size(r.size) {}  // NOLINT(google-explicit-constructor)
  template <RectLike<Rect> T>
  constexpr operator T() const {  // NOLINT(google-explicit-constructor)
    return {origin, size};
  }

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
  template <RectLike<Rect> T>
  friend bool operator==(const Rect& a, const T& b) {
    return a == Rect(b);
  }
};

/// x' = a x + c y + tx, y' = b x + d y + ty: the platform's order of fields.
struct AffineTransform {
  double a = 1;
  double b = 0;
  double c = 0;
  double d = 1;
  double tx = 0;
  double ty = 0;

  constexpr AffineTransform() = default;
  constexpr AffineTransform(double a_, double b_, double c_, double d_, double tx_, double ty_)
      : a(a_), b(b_), c(c_), d(d_), tx(tx_), ty(ty_) {}
  template <TransformLike<AffineTransform> T>
  constexpr AffineTransform(const T& t)  // NOLINT(google-explicit-constructor)
      : a(t.a), b(t.b), c(t.c), d(t.d), tx(t.tx), ty(t.ty) {}
  template <TransformLike<AffineTransform> T>
  constexpr operator T() const {  // NOLINT(google-explicit-constructor)
    return {a, b, c, d, tx, ty};
  }

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
  template <TransformLike<AffineTransform> T>
  friend bool operator==(const AffineTransform& left, const T& right) {
    return left == AffineTransform(right);
  }
};

/// Rounded up to the pixel grid at `scale`. A value that misses a pixel by rounding error alone stays on it.
double ceil_to_pixel(double value, double scale);
/// Rounded to the nearest pixel at `scale`, halves away from zero.
double round_to_pixel(double value, double scale);

static_assert(std::is_trivially_copyable_v<Rect> && sizeof(Rect) == 4 * sizeof(double));
static_assert(std::is_trivially_copyable_v<AffineTransform> && sizeof(AffineTransform) == 6 * sizeof(double));

}  // namespace wispen
