// host/uikit/views/view_geometry.cpp: where a view is, and how its subviews follow it.

#include <cmath>

#include "host/layout/autoresizing.hpp"
#include "host/uikit/layout/layout_system.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/views/view.hpp"
#include "host/uikit/views/view_state.hpp"
#include "host/uikit/views/window.hpp"

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
T seen_value(const View& view, std::optional<AnimatedValue<T>> ViewAnimations::*slot, const T& model) {
  auto& animations = view.parts().animations;
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
void change(const View& view, std::optional<AnimatedValue<T>> ViewAnimations::*slot, T& model,
            const T& value) {
  AnimationEngine* const engine = AnimationEngine::current();
  const auto group = engine != nullptr ? engine->joining() : nullptr;
  if (!group) {
    model = value;
    return;
  }
  const T seen = seen_value(view, slot, model);
  model = value;
  auto& animations = view.parts().animations;
  if (!animations) animations = std::make_unique<ViewAnimations>();
  auto& animated = (*animations).*slot;
  if (animated && animated->group != group) animated->group->interrupted = true;
  animated = AnimatedValue<T>{difference(seen, value), group};
  engine->add(view, group);
}

AffineTransform to_superview(const View& view) {
  const ViewState& state = view.parts();
  const double anchor_x = state.bounds.origin.x + state.bounds.size.width / 2;
  const double anchor_y = state.bounds.origin.y + state.bounds.size.height / 2;
  return AffineTransform::translation(-anchor_x, -anchor_y)
      .then(state.transform)
      .then(AffineTransform::translation(state.center.x, state.center.y));
}

AffineTransform to_root(View view) {
  AffineTransform all;
  for (; view; view = view.superview()) all = all.then(to_superview(view));
  return all;
}

}  // namespace

Rect View::frame() const {
  const ViewState& state = parts();
  if (state.transform.is_identity()) {
    const Size size = state.bounds.size;
    return {{state.center.x - size.width / 2, state.center.y - size.height / 2}, size};
  }
  return to_superview(*this).apply(state.bounds);
}

void View::setFrame(const Rect& frame) const {
  const Point center{frame.origin.x + frame.size.width / 2, frame.origin.y + frame.size.height / 2};
  Rect bounds = parts().bounds;
  if (parts().transform.is_identity()) {
    bounds.size = frame.size;
  } else if (const auto inverse = parts().transform.inverted()) {
    bounds.size = inverse->apply(Rect{{0, 0}, frame.size}).size;
  }
  set_place(bounds, center);
}

void View::set_place(const Rect& bounds, const Point& center) const {
  ViewState& state = parts();
  const auto finite = [](double value) { return std::isfinite(value); };
  if (!finite(bounds.origin.x) || !finite(bounds.origin.y) || !finite(bounds.size.width) ||
      !finite(bounds.size.height) || !finite(center.x) || !finite(center.y)) {
    return;  // the platform raises here; a number that is none must not spread through the layout
  }
  const bool moved = !(state.center == center);
  const bool reshaped = !(state.bounds == bounds);
  if (!moved && !reshaped) return;
  if (moved) {
    change(*this, &ViewAnimations::center, state.center, center);
  }
  if (reshaped) {
    const Size old_size = state.bounds.size;
    change(*this, &ViewAnimations::bounds, state.bounds, bounds);
    if (!(old_size == bounds.size)) {
      resize_subviews(old_size);
      setNeedsLayout();
    }
  }
  place_changed();
}

void View::setBounds(const Rect& bounds) const { set_place(bounds, parts().center); }
void View::setCenter(const Point& center) const { set_place(parts().bounds, center); }
Rect View::bounds() const { return parts().bounds; }
Point View::center() const { return parts().center; }
AffineTransform View::transform() const { return parts().transform; }

void View::setTransform(const AffineTransform& transform) const {
  if (parts().transform == transform) return;
  change(*this, &ViewAnimations::transform, parts().transform, transform);
  place_changed();
}

void View::setAlpha(double alpha) const {
  alpha = std::isfinite(alpha) ? std::clamp(alpha, 0.0, 1.0) : 1.0;
  // Also when nothing changes inside an animation block: an animation that runs the other way is taken over.
  change(*this, &ViewAnimations::alpha, parts().alpha, alpha);
  place_changed();
}

void View::setBackgroundColor(const UIColor& colour) const {
  change(*this, &ViewAnimations::background, parts().background, colour);
  setNeedsDisplay();
}

void View::resize_subviews(Size old_size) const {
  const ViewState& state = parts();
  if (!state.autoresizes_subviews) return;
  for (const View& subview : subviews()) {
    const ViewState& inner = subview.parts();
    if (!inner.translates_mask || inner.autoresizing_mask == 0) continue;
    subview.setFrame(
        layout::autoresized(subview.frame(), old_size, state.bounds.size, inner.autoresizing_mask));
  }
}

Point View::convertPointToView(const Point& point, const View& other) const {
  const View target = other ? other : View(window());
  const Point in_root = to_root(*this).apply(point);
  if (!target) return in_root;
  const auto back = to_root(target).inverted();
  return back ? back->apply(in_root) : Point{};
}

Rect View::convertRectToView(const Rect& rect, const View& other) const {
  const View target = other ? other : View(window());
  const Rect in_root = to_root(*this).apply(rect);
  if (!target) return in_root;
  const auto back = to_root(target).inverted();
  return back ? back->apply(in_root) : Rect{};
}

void View::sizeToFit() const {
  const Rect old = parts().bounds;
  const Size size = sizeThatFits(old.size);
  const Rect frame = this->frame();
  setFrame({frame.origin, size});
}

EdgeInsets View::safeAreaInsets() const {
  if (const auto window = objc::cast_or_nil<Window>(*this)) return window.device_insets();
  const View above = superview();
  if (!above) return {};
  EdgeInsets outer = above.safeAreaInsets();
  if (const Responder controller = above.controller()) {
    const auto added = objc::send<"_safeAreaInsetsForContent", EdgeInsets>(controller);
    outer = {outer.top + added.top, outer.left + added.left, outer.bottom + added.bottom,
             outer.right + added.right};
  }
  // Where the view stands without its transform: a page that slides in has its insets from the start.
  const Size size = parts().bounds.size;
  const Rect frame{{parts().center.x - size.width / 2, parts().center.y - size.height / 2}, size};
  const Rect room = above.bounds();
  return {std::max(0.0, outer.top - (frame.min_y() - room.min_y())),
          std::max(0.0, outer.left - (frame.min_x() - room.min_x())),
          std::max(0.0, outer.bottom - (room.max_y() - frame.max_y())),
          std::max(0.0, outer.right - (room.max_x() - frame.max_x()))};
}

Rect View::presented_bounds() const { return seen_value(*this, &ViewAnimations::bounds, parts().bounds); }
Point View::presented_center() const { return seen_value(*this, &ViewAnimations::center, parts().center); }
double View::presented_alpha() const { return seen_value(*this, &ViewAnimations::alpha, parts().alpha); }
AffineTransform View::presented_transform() const {
  return seen_value(*this, &ViewAnimations::transform, parts().transform);
}
UIColor View::presented_background() const {
  return seen_value(*this, &ViewAnimations::background, parts().background);
}

}  // namespace wispen::uikit
