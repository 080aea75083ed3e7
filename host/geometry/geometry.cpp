// host/geometry/geometry.cpp: points, sizes, rectangles and transforms, laid out as the platform's are.

#include "host/geometry/geometry.hpp"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace wispen {

namespace {
// Sums of tenths of points miss the grid by far less than this, and no one sees a thousandth of a pixel.
constexpr double kGridSlack = 1e-3;
}  // namespace

bool Rect::contains(Point point) const {
  return point.x >= min_x() && point.x < max_x() && point.y >= min_y() && point.y < max_y();
}

bool Rect::contains(const Rect& other) const {
  return other.min_x() >= min_x() && other.max_x() <= max_x() && other.min_y() >= min_y() &&
         other.max_y() <= max_y();
}

bool Rect::intersects(const Rect& other) const { return !intersection(other).empty(); }

Rect Rect::intersection(const Rect& other) const {
  const double left = std::max(min_x(), other.min_x());
  const double top = std::max(min_y(), other.min_y());
  const double right = std::min(max_x(), other.max_x());
  const double bottom = std::min(max_y(), other.max_y());
  if (!(right > left && bottom > top)) return {};
  return make(left, top, right - left, bottom - top);
}

Rect Rect::united(const Rect& other) const {
  if (empty()) return other;
  if (other.empty()) return *this;
  const double left = std::min(min_x(), other.min_x());
  const double top = std::min(min_y(), other.min_y());
  return make(left, top, std::max(max_x(), other.max_x()) - left, std::max(max_y(), other.max_y()) - top);
}

Rect Rect::offset(double dx, double dy) const { return {{origin.x + dx, origin.y + dy}, size}; }

Rect Rect::inset(double dx, double dy) const { return inset(EdgeInsets{dy, dx, dy, dx}); }

Rect Rect::inset(const EdgeInsets& insets) const {
  return make(origin.x + insets.left, origin.y + insets.top, size.width - insets.left - insets.right,
              size.height - insets.top - insets.bottom);
}

Rect Rect::pixel_aligned(double scale) const {
  if (empty()) return *this;
  const double left = std::floor(min_x() * scale + kGridSlack) / scale;
  const double top = std::floor(min_y() * scale + kGridSlack) / scale;
  return make(left, top, ceil_to_pixel(max_x(), scale) - left, ceil_to_pixel(max_y(), scale) - top);
}

AffineTransform AffineTransform::rotation(double angle) {
  const double cosine = std::cos(angle);
  const double sine = std::sin(angle);
  return {cosine, sine, -sine, cosine, 0, 0};
}

AffineTransform AffineTransform::then(const AffineTransform& next) const {
  return {a * next.a + b * next.c,
          a * next.b + b * next.d,
          c * next.a + d * next.c,
          c * next.b + d * next.d,
          tx * next.a + ty * next.c + next.tx,
          tx * next.b + ty * next.d + next.ty};
}

std::optional<AffineTransform> AffineTransform::inverted() const {
  const double determinant = a * d - b * c;
  if (determinant == 0 || !std::isfinite(determinant)) return std::nullopt;
  return AffineTransform{d / determinant,
                         -b / determinant,
                         -c / determinant,
                         a / determinant,
                         (c * ty - d * tx) / determinant,
                         (b * tx - a * ty) / determinant};
}

Point AffineTransform::apply(Point point) const {
  return {a * point.x + c * point.y + tx, b * point.x + d * point.y + ty};
}

Rect AffineTransform::apply(const Rect& rect) const {
  const Point first = apply(rect.origin);
  double left = first.x, right = first.x, top = first.y, bottom = first.y;
  for (const Point corner : {Point{rect.max_x(), rect.min_y()}, Point{rect.min_x(), rect.max_y()},
                             Point{rect.max_x(), rect.max_y()}}) {
    const Point moved = apply(corner);
    left = std::min(left, moved.x);
    right = std::max(right, moved.x);
    top = std::min(top, moved.y);
    bottom = std::max(bottom, moved.y);
  }
  return Rect::make(left, top, right - left, bottom - top);
}

double ceil_to_pixel(double value, double scale) { return std::ceil(value * scale - kGridSlack) / scale; }

double round_to_pixel(double value, double scale) { return std::round(value * scale) / scale; }

}  // namespace wispen
