// host/uikit/view/view_geometry.cpp: where a view stands, and how its subviews follow it.

#include <algorithm>
#include <cmath>

#include "host/layout/autoresizing.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/view/hooks.hpp"
#include "host/uikit/view/layout/layout_system.hpp"
#include "host/uikit/view/view.hpp"
#include "host/uikit/view/window.hpp"

namespace wispen::uikit {

namespace {

double difference(double from, double to) { return from - to; }
double plus(double value, double offset, double factor) { return value + offset * factor; }
Point difference(const Point& from, const Point& to) { return {from.x - to.x, from.y - to.y}; }
Point plus(const Point& value, const Point& offset, double factor) {
  return {value.x + offset.x * factor, value.y + offset.y * factor};
}
Rect difference(const Rect& from, const Rect& to) {
  return {difference(from.origin, to.origin), {from.width() - to.width(), from.height() - to.height()}};
}
Rect plus(const Rect& value, const Rect& offset, double factor) {
  return {plus(value.origin, offset.origin, factor),
          {value.width() + offset.width() * factor, value.height() + offset.height() * factor}};
}
AffineTransform difference(const AffineTransform& from, const AffineTransform& to) {
  return {from.a - to.a, from.b - to.b, from.c - to.c, from.d - to.d, from.tx - to.tx, from.ty - to.ty};
}
AffineTransform plus(const AffineTransform& value, const AffineTransform& offset, double factor) {
  return {value.a + offset.a * factor, value.b + offset.b * factor,   value.c + offset.c * factor,
          value.d + offset.d * factor, value.tx + offset.tx * factor, value.ty + offset.ty * factor};
}

// Colours have no differences: theirs is where they came from, and they are mixed.
UIColor difference(const UIColor& from, const UIColor&) { return from; }
UIColor plus(const UIColor& value, const UIColor& from, double factor) {
  if (factor <= 0) return value;
  const auto mixed = [&](graphics::Appearance appearance) {
    graphics::Rgba one = colour_of(from).rgba(appearance);
    graphics::Rgba other = colour_of(value).rgba(appearance);
    // Nothing has no hue of its own: it takes the other's, so that fading in does not pass through black.
    if (one.alpha == 0) one = {other.red, other.green, other.blue, 0};
    if (other.alpha == 0) other = {one.red, one.green, one.blue, 0};
    const auto mix = [&](double start, double end) { return end + (start - end) * factor; };
    return graphics::Colour::rgb(mix(one.red, other.red), mix(one.green, other.green),
                                 mix(one.blue, other.blue), mix(one.alpha, other.alpha));
  };
  return color_from(graphics::Colour::dynamic(mixed(graphics::Appearance::Light),
                                              mixed(graphics::Appearance::Dark),
                                              mixed(graphics::Appearance::DarkElevated)));
}

/// What is seen now of a value whose model is `model`.
template <class T>
T seen_value(std::unique_ptr<ViewAnimations>& animations,
             std::optional<AnimatedValue<T>> ViewAnimations::*slot, const T& model) {
  const AnimationEngine* const engine = AnimationEngine::current();
  if (!animations || engine == nullptr || !((*animations).*slot)) return model;
  auto& animated = (*animations).*slot;
  if (animated->group->over(engine->now())) {
    animated.reset();
    return model;
  }
  return plus(model, animated->offset, 1 - animated->group->progress(engine->now()));
}

/// Sets the model's value: at once, or so that it is seen to change over the time of the animation block that
/// is open. Without one, an animation that is on its way goes on, and ends at the new value.
template <class T>
void change(View& view, std::optional<AnimatedValue<T>> ViewAnimations::*slot, T& model, const T& value) {
  AnimationEngine* const engine = AnimationEngine::current();
  const auto group = engine != nullptr ? engine->joining() : nullptr;
  if (!group) {
    model = value;
    return;
  }
  auto& animations = view.animations();
  const T seen = seen_value(animations, slot, model);
  model = value;
  if (!animations) animations = std::make_unique<ViewAnimations>();
  auto& animated = (*animations).*slot;
  if (animated && animated->group != group) animated->group->interrupted = true;
  animated = AnimatedValue<T>{difference(seen, value), group};
  engine->add(view.self(), group);
}

AffineTransform to_superview(const View& view) {
  const Rect& bounds = view.bounds();
  return AffineTransform::translation(-bounds.mid_x(), -bounds.mid_y())
      .then(view.transform())
      .then(AffineTransform::translation(view.center().x, view.center().y));
}

AffineTransform to_root(UIView view) {
  AffineTransform all;
  for (; view; view = View::of(view).superview()) all = all.then(to_superview(View::of(view)));
  return all;
}

/// From the coordinates of `from` to those of `to`, or of its window for nil. None where a view on the way is
/// flat.
std::optional<AffineTransform> between(const View& from, const UIView& to) {
  const UIView target = to ? to : from.window();
  const AffineTransform up = to_root(from.self());
  if (!target) return up;
  const auto down = to_root(target).inverted();
  return down ? std::optional(up.then(*down)) : std::nullopt;
}

}  // namespace

Rect View::frame() const {
  if (transform_.is_identity()) {
    const Size size = bounds_.size;
    return {{center_.x - size.width / 2, center_.y - size.height / 2}, size};
  }
  return to_superview(*this).apply(bounds_);
}

void View::setFrame(const Rect& frame) {
  const Point center{frame.origin.x + frame.size.width / 2, frame.origin.y + frame.size.height / 2};
  Rect bounds = bounds_;
  if (transform_.is_identity()) {
    bounds.size = frame.size;
  } else if (const auto inverse = transform_.inverted()) {
    bounds.size = inverse->apply(Rect{{0, 0}, frame.size}).size;
  }
  set_geometry(bounds, center);
}

void View::set_geometry(const Rect& bounds, const Point& center) {
  for (const double value :
       {bounds.origin.x, bounds.origin.y, bounds.size.width, bounds.size.height, center.x, center.y}) {
    // The platform raises here; what is not a number must not spread through the layout.
    if (!std::isfinite(value)) return;
  }
  const bool moved = !(center_ == center);
  const bool reshaped = !(bounds_ == bounds);
  if (!moved && !reshaped) return;
  if (moved) change(*this, &ViewAnimations::center, center_, center);
  if (reshaped) {
    const Size old_size = bounds_.size;
    change(*this, &ViewAnimations::bounds, bounds_, bounds);
    if (!(old_size == bounds_.size)) {
      resize_subviews(old_size);
      setNeedsLayout();
    }
  }
  geometry_changed();
}

void View::setTransform(const AffineTransform& transform) {
  if (transform_ == transform) return;
  change(*this, &ViewAnimations::transform, transform_, transform);
  geometry_changed();
}

void View::setAlpha(double alpha) {
  alpha = std::isfinite(alpha) ? std::clamp(alpha, 0.0, 1.0) : 1.0;
  // Also when nothing changes inside an animation block: an animation that runs the other way is taken over.
  change(*this, &ViewAnimations::alpha, alpha_, alpha);
  geometry_changed();
}

void View::setBackgroundColor(const UIColor& colour) {
  change(*this, &ViewAnimations::background, background_, colour);
  setNeedsDisplay();
}

void View::resize_subviews(Size old_size) {
  if (!autoresizes_subviews_) return;
  for (const UIView& subview : std::vector<UIView>(subviews_)) {
    const View& inner = of(subview);
    if (!inner.translates_mask_ || inner.autoresizing_mask_ == 0) continue;
    subview.setFrame(layout::autoresized(inner.frame(), old_size, bounds_.size, inner.autoresizing_mask_));
  }
}

Point View::convertPointToView(const Point& point, const UIView& other) const {
  const auto way = between(*this, other);
  return way ? way->apply(point) : Point{};
}

Rect View::convertRectToView(const Rect& rect, const UIView& other) const {
  const auto way = between(*this, other);
  return way ? way->apply(rect) : Rect{};
}

Point View::convertPointFromView(const Point& point, const UIView& other) const {
  const UIView source = other ? other : window();
  return source ? of(source).convertPointToView(point, self()) : point;
}

Rect View::convertRectFromView(const Rect& rect, const UIView& other) const {
  const UIView source = other ? other : window();
  return source ? of(source).convertRectToView(rect, self()) : rect;
}

void View::sizeToFit() {
  const Size size = self().sizeThatFits(bounds_.size);
  self().setFrame(Rect{frame().origin, size});
}

EdgeInsets View::safeAreaInsets() const {
  const UIView above = superview();
  if (!above) return {};
  EdgeInsets outer = above.safeAreaInsets();
  if (const UIViewController controller = of(above).controller()) {
    const EdgeInsets added = objc::send<hooks::kSafeAreaForContent, UIEdgeInsets>(controller);
    outer = {outer.top + added.top, outer.left + added.left, outer.bottom + added.bottom,
             outer.right + added.right};
  }
  // Where the view stands without its transform: a page that slides in has its insets from the start.
  const Size size = bounds_.size;
  const Rect frame{{center_.x - size.width / 2, center_.y - size.height / 2}, size};
  const Rect room = of(above).bounds();
  return {std::max(0.0, outer.top - (frame.min_y() - room.min_y())),
          std::max(0.0, outer.left - (frame.min_x() - room.min_x())),
          std::max(0.0, outer.bottom - (room.max_y() - frame.max_y())),
          std::max(0.0, outer.right - (room.max_x() - frame.max_x()))};
}

Rect View::presented_bounds() { return seen_value(animations_, &ViewAnimations::bounds, bounds_); }
Point View::presented_center() { return seen_value(animations_, &ViewAnimations::center, center_); }
double View::presented_alpha() { return seen_value(animations_, &ViewAnimations::alpha, alpha_); }
AffineTransform View::presented_transform() {
  return seen_value(animations_, &ViewAnimations::transform, transform_);
}
UIColor View::presented_background() {
  return seen_value(animations_, &ViewAnimations::background, background_);
}

}  // namespace wispen::uikit
