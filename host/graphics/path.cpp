// host/graphics/path.cpp: outlines to fill, stroke and clip by.

#include "host/graphics/path.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace wispen::graphics {

namespace {

// How far the controls of a curve lie from its ends to follow a quarter of a circle of radius 1.
constexpr double kQuarterControl = 0.5522847498307936;

std::size_t point_count(Path::Verb verb) {
  if (verb == Path::Verb::Close) return 0;
  return verb == Path::Verb::Curve ? 3 : 1;
}

}  // namespace

Path Path::rect(const Rect& rect) {
  Path path;
  path.move_to(rect.origin).line_to({rect.max_x(), rect.min_y()}).line_to({rect.max_x(), rect.max_y()});
  path.line_to({rect.min_x(), rect.max_y()}).close();
  return path;
}

Path Path::rounded_rect(const Rect& bounds, double radius) {
  return rounded_rect(bounds, std::array<double, 4>{radius, radius, radius, radius});
}

Path Path::rounded_rect(const Rect& bounds, const std::array<double, 4>& radii) {
  const double largest = std::max(0.0, std::min(bounds.width(), bounds.height()) / 2);
  std::array<double, 4> r{};
  std::transform(radii.begin(), radii.end(), r.begin(),
                 [largest](double radius) { return std::clamp(radius, 0.0, largest); });
  if (r == std::array<double, 4>{}) return rect(bounds);
  const double left = bounds.min_x(), top = bounds.min_y(), right = bounds.max_x(), bottom = bounds.max_y();
  const double rest = 1 - kQuarterControl;
  Path path;
  path.move_to({left + r[0], top}).line_to({right - r[1], top});
  path.curve_to({right - r[1] * rest, top}, {right, top + r[1] * rest}, {right, top + r[1]});
  path.line_to({right, bottom - r[2]});
  path.curve_to({right, bottom - r[2] * rest}, {right - r[2] * rest, bottom}, {right - r[2], bottom});
  path.line_to({left + r[3], bottom});
  path.curve_to({left + r[3] * rest, bottom}, {left, bottom - r[3] * rest}, {left, bottom - r[3]});
  path.line_to({left, top + r[0]});
  path.curve_to({left, top + r[0] * rest}, {left + r[0] * rest, top}, {left + r[0], top});
  return path.close();
}

Path Path::ellipse(const Rect& bounds) {
  const double rx = bounds.width() / 2, ry = bounds.height() / 2;
  const double cx = bounds.mid_x(), cy = bounds.mid_y();
  const double kx = rx * kQuarterControl, ky = ry * kQuarterControl;
  Path path;
  path.move_to({cx, cy - ry});
  path.curve_to({cx + kx, cy - ry}, {cx + rx, cy - ky}, {cx + rx, cy});
  path.curve_to({cx + rx, cy + ky}, {cx + kx, cy + ry}, {cx, cy + ry});
  path.curve_to({cx - kx, cy + ry}, {cx - rx, cy + ky}, {cx - rx, cy});
  path.curve_to({cx - rx, cy - ky}, {cx - kx, cy - ry}, {cx, cy - ry});
  return path.close();
}

Path& Path::move_to(Point point) {
  elements_.push_back({Verb::Move, {point}});
  return *this;
}

Path& Path::line_to(Point point) {
  elements_.push_back({elements_.empty() ? Verb::Move : Verb::Line, {point}});
  return *this;
}

Path& Path::curve_to(Point control1, Point control2, Point end) {
  if (elements_.empty()) move_to(control1);
  elements_.push_back({Verb::Curve, {control1, control2, end}});
  return *this;
}

Path& Path::arc(Point centre, double radius, double from, double to) {
  const auto at = [&](double angle, double distance) {
    return Point{centre.x + std::cos(angle) * distance, centre.y + std::sin(angle) * distance};
  };
  const bool open = !elements_.empty() && elements_.back().verb != Verb::Close;
  const Point start = at(from, radius);
  if (open) {
    line_to(start);
  } else {
    move_to(start);
  }
  // Curves of at most a quarter turn stay within a ten-thousandth of the circle.
  const int pieces =
      std::max(1, static_cast<int>(std::ceil(std::abs(to - from) / (std::numbers::pi / 2) - 1e-9)));
  const double step = (to - from) / pieces;
  const double control = 4.0 / 3 * std::tan(step / 4) * radius;
  for (int i = 0; i < pieces; ++i) {
    const double begin = from + i * step;
    const double end = begin + step;
    const Point p0 = at(begin, radius);
    const Point p3 = at(end, radius);
    curve_to({p0.x - std::sin(begin) * control, p0.y + std::cos(begin) * control},
             {p3.x + std::sin(end) * control, p3.y - std::cos(end) * control}, p3);
  }
  return *this;
}

Path& Path::close() {
  if (!elements_.empty()) elements_.push_back({Verb::Close, {}});
  return *this;
}

Path& Path::append(const Path& other) {
  const std::vector<Element> added = other.elements_;
  elements_.insert(elements_.end(), added.begin(), added.end());
  return *this;
}

Rect Path::bounds() const {
  bool any = false;
  double left = 0, top = 0, right = 0, bottom = 0;
  for (const Element& element : elements_) {
    for (std::size_t i = 0; i < point_count(element.verb); ++i) {
      const Point point = element.points[i];
      left = any ? std::min(left, point.x) : point.x;
      right = any ? std::max(right, point.x) : point.x;
      top = any ? std::min(top, point.y) : point.y;
      bottom = any ? std::max(bottom, point.y) : point.y;
      any = true;
    }
  }
  return Rect::make(left, top, right - left, bottom - top);
}

Path Path::transformed(const AffineTransform& transform) const {
  Path copy = *this;
  for (Element& element : copy.elements_) {
    for (std::size_t i = 0; i < point_count(element.verb); ++i) {
      element.points[i] = transform.apply(element.points[i]);
    }
  }
  return copy;
}

}  // namespace wispen::graphics
