// host/uikit/view/painting/focus_ring.cpp: shows which view the keyboard is talking to.

#include "host/uikit/view/painting/focus_ring.hpp"

#include <algorithm>

#include "host/uikit/values/color.hpp"
#include "host/uikit/view/events/focus.hpp"
#include "host/uikit/view/hooks.hpp"
#include "host/uikit/view/layer.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

namespace {

constexpr double kWidth = 3;
constexpr double kGap = 1;  // between the view and its ring
constexpr double kPlainRadius = 6;

/// What can be seen of the view: a row that is half under the bar has half a ring.
Rect visible_part(const UIView& view, const UIWindow& window) {
  Rect seen = window.bounds();
  for (UIView above = View::of(view).superview(); above; above = View::of(above).superview()) {
    if (!above.clipsToBounds()) continue;
    seen = seen.intersection(
        Rect(above.convertRectToView(above.bounds(), window)).inset(-kFocusRingReach, -kFocusRingReach));
  }
  return seen;
}

}  // namespace

Rect focus_ring_place() {
  const UIView focused = focused_view();
  if (!focused) return {};
  const auto window = View::of(focused).window().as<UIWindow>();
  if (!window || window.isHidden()) return {};
  const Rect frame = window.frame();
  return Rect(focused.convertRectToView(focused.bounds(), window))
      .inset(-kFocusRingReach, -kFocusRingReach)
      .intersection(visible_part(focused, window))
      .offset(frame.min_x(), frame.min_y());
}

void paint_focus_ring(const UIView& view, graphics::Canvas& canvas, const Rect&) {
  const UIView focused = focused_view();
  const UIWindow window = view.as<UIWindow>();
  if (!focused || View::of(focused).window() != window) return;
  // Rows touch each other: their ring lies inside.
  const bool inside = objc::responds_to(focused, objc::selector<hooks::kShowsFocusInside>()) &&
                      objc::send<hooks::kShowsFocusInside, bool>(focused);
  const double outset = inside ? -kWidth / 2 : kGap + kWidth / 2;
  const Rect ring = Rect(focused.convertRectToView(focused.bounds(), window)).inset(-outset, -outset);
  const CALayer& layer = View::of(focused).layer_if_made();
  const double own = layer ? Layer::of(layer).style().corner_radius : 0;
  const double radius = own > 0 || inside ? std::max(own + outset, 4.0) : kPlainRadius;
  canvas.save();
  canvas.clip(visible_part(focused, window));
  canvas.stroke(graphics::Path::rounded_rect(ring, radius), colour_of(UIColor::systemBlueColor()),
                {.width = kWidth, .round_caps = false, .dashes = {}});
  canvas.restore();
}

}  // namespace wispen::uikit
