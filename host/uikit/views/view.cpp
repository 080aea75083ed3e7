// host/uikit/views/view.cpp: UIView's place in the hierarchy, and its look.

#include "host/uikit/views/view.hpp"

#include <algorithm>
#include <utility>

#include "host/uikit/layout/layout_system.hpp"
#include "host/uikit/painting/damage.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/views/view_state.hpp"
#include "host/uikit/views/window.hpp"

namespace wispen::uikit {

ViewState::ViewState() = default;
ViewState::~ViewState() = default;

ViewState& View::parts() const { return state<ViewState>(); }

View View::make(const Rect& frame) { return alloc().initialize<"initWithFrame:">(frame); }

View View::initWithFrame(objc::Allocated<View> self, const Rect& frame) {
  View view = std::move(self).initialize_super<"init">();
  if (view) view.setFrame(frame);
  return view;
}

void View::farewell() {
  ViewState& state = parts();
  if (state.layer) state.layer.detach();
  if (AnimationEngine* const engine = AnimationEngine::current()) engine->forget(*this);
  for (const GestureRecognizer& recognizer : state.recognizers) recognizer.set_view(View());
  for (const View& subview : state.subviews) {
    subview.parts().superview = objc::Unowned<View>();
    subview.set_window(View());
  }
  for (const LayoutConstraint& constraint : state.constraints) constraint.lose_holder();
}

View View::superview() const { return parts().superview.get(); }
std::vector<View> View::subviews() const { return parts().subviews; }
Window View::window() const { return parts().window.get().as<Window>(); }
Responder View::controller() const { return parts().controller.get(); }
void View::set_controller(const Responder& controller) const {
  parts().controller = objc::Unowned<Responder>(controller);
}

void View::set_window(const View& window) const {
  if (parts().window.refers_to(window)) return;
  objc::send<"willMoveToWindow:">(*this, window);
  parts().window = objc::Unowned<View>(window);
  if (window) parts().needs_layout = parts().subtree_needs_layout = true;
  for (const View& subview : subviews()) subview.set_window(window);
  objc::send<"didMoveToWindow">(*this);
}

void View::move_to(const View& superview, const std::function<void()>& change) const {
  const View kept = *this;
  objc::send<"willMoveToSuperview:">(kept, superview);
  if (const View old = kept.superview()) {
    leave_picture(kept);
    objc::send<"willRemoveSubview:">(old, kept);
    LayoutSystem::drop_crossing_constraints(kept);
    auto& siblings = old.parts().subviews;
    siblings.erase(std::ranges::find(siblings, kept));
    kept.parts().superview = objc::Unowned<View>();
    LayoutSystem::invalidate(old);
    if (old != superview) old.setNeedsLayout();
  }
  change();
  const bool is_window = objc::cast_or_nil<Window>(superview) ? true : false;
  kept.set_window(is_window ? superview : superview ? superview.parts().window.get() : View());
  if (superview) {
    objc::send<"didAddSubview:">(superview, kept);
    LayoutSystem::invalidate(superview);
    superview.setNeedsLayout();
    // Through its own flag: a view that asked for layout while it stood alone is reached again.
    kept.setNeedsLayout();
    kept.place_changed();
    if (!kept.parts().tint) kept.tint_changed();
  }
  objc::send<"didMoveToSuperview">(kept);
}

void View::insertSubviewAtIndex(const View& view, NSInteger index) const {
  if (!view || view == *this || isDescendantOfView(view)) return;
  const View self = *this;
  view.move_to(self, [&] {
    auto& subviews = self.parts().subviews;
    const auto place = std::clamp<NSInteger>(index, 0, static_cast<NSInteger>(subviews.size()));
    subviews.insert(subviews.begin() + place, view);
    view.parts().superview = objc::Unowned<View>(self);
  });
}

void View::addSubview(const View& view) const {
  insertSubviewAtIndex(view, static_cast<NSInteger>(parts().subviews.size()));
}

void View::removeFromSuperview() const {
  if (!superview()) return;
  const View kept = *this;
  kept.move_to(View(), [] {});
}

bool View::isDescendantOfView(const View& other) const {
  for (View view = *this; view; view = view.superview()) {
    if (view == other) return true;
  }
  return false;
}

View View::viewWithTag(NSInteger tag) const {
  if (parts().tag == tag) return *this;
  for (const View& subview : parts().subviews) {
    if (View found = subview.viewWithTag(tag)) return found;
  }
  return View();
}

double View::alpha() const { return parts().alpha; }
bool View::isHidden() const { return parts().hidden; }
UIColor View::backgroundColor() const { return parts().background; }
bool View::clipsToBounds() const { return parts().clips; }
void View::setClipsToBounds(bool clips) const {
  if (parts().clips == clips) return;
  parts().clips = clips;
  look_changed_inside();
}
ContentMode View::contentMode() const { return parts().content_mode; }
void View::setContentMode(NSInteger mode) const {
  if (mode < 0 || mode > static_cast<NSInteger>(ContentMode::BottomRight)) return;
  if (std::exchange(parts().content_mode, static_cast<ContentMode>(mode)) != static_cast<ContentMode>(mode)) {
    place_changed();  // what it shows may reach elsewhere out of it
    setNeedsDisplay();
  }
}

void View::setHidden(bool hidden) const {
  if (parts().hidden == hidden) return;
  parts().hidden = hidden;
  place_changed();
  if (const View above = superview()) LayoutSystem::invalidate(above);  // a stack view closes the gap
}

UIColor View::tintColor() const {
  for (View view = *this; view; view = view.superview()) {
    if (view.parts().tint) return view.parts().tint;
  }
  return UIColor::systemBlueColor();
}

void View::setTintColor(const UIColor& colour) const {
  if (parts().tint == colour) return;
  parts().tint = colour;
  tint_changed();
}

void View::tint_changed() const {
  objc::send<"tintColorDidChange">(*this);
  setNeedsDisplay();
  for (const View& subview : subviews()) {
    if (!subview.parts().tint) subview.tint_changed();
  }
}

Layer View::layer() const {
  Layer& layer = parts().layer;
  if (!layer) layer = Layer::of(*this);
  return layer;
}

bool View::isUserInteractionEnabled() const { return parts().interaction; }
void View::setUserInteractionEnabled(bool enabled) const { parts().interaction = enabled; }

bool View::is_right_to_left() const {
  // The platform's values: 1 playback and 2 spatial never turn, 3 and 4 force a direction.
  switch (parts().semantic_attribute) {
    case 1:
    case 2:
    case 3:
      return false;
    case 4:
      return true;
    default:
      return display_settings().right_to_left;
  }
}

void View::mark(bool PaintRecord::*what) const {
  parts().record.*what = true;
  for (View above = superview(); above && !above.parts().record.inside; above = above.superview()) {
    above.parts().record.inside = true;
  }
}

void View::setNeedsDisplay() const { mark(&PaintRecord::look); }
void View::place_changed() const { mark(&PaintRecord::moved); }
void View::look_changed_inside() const {
  mark(&PaintRecord::moved);
  mark(&PaintRecord::whole);
}

View View::hitTest(const Point& point) const {
  const ViewState& state = parts();
  if (state.hidden || !state.interaction || state.alpha < 0.01) return View();
  if (!objc::send<"pointInside:withEvent:", bool>(*this, point, NSObject())) return View();
  const std::vector<View> inside = subviews();
  for (std::size_t i = inside.size(); i-- > 0;) {
    const Point within = convertPointToView(point, inside[i]);
    if (View hit = objc::send<"hitTest:withEvent:", View>(inside[i], within, NSObject())) return hit;
  }
  return *this;
}

void View::addGestureRecognizer(const GestureRecognizer& recognizer) const {
  if (!recognizer) return;
  if (const View old = recognizer.view()) old.removeGestureRecognizer(recognizer);
  parts().recognizers.push_back(recognizer);
  recognizer.set_view(*this);
}

void View::removeGestureRecognizer(const GestureRecognizer& recognizer) const {
  if (std::erase(parts().recognizers, recognizer) > 0) recognizer.set_view(View());
}

}  // namespace wispen::uikit
