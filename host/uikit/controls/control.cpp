// host/uikit/controls/control.cpp: UIControl: a view that turns touches and keys into actions.

#include "host/uikit/controls/control.hpp"

#include <algorithm>

#include "host/uikit/events/focus.hpp"
#include "host/uikit/views/application.hpp"

namespace wispen::uikit {

namespace {

// A finger may stray this far from a control before it counts as outside, as on the platform.
constexpr double kTrackingReach = 70;

bool near(const Control& self, const Touch& touch) {
  return self.bounds().inset(-kTrackingReach, -kTrackingReach).contains(touch.locationInView(self));
}

}  // namespace

void Control::setEnabled(bool enabled) const {
  if (control().enabled == enabled) return;
  control().enabled = enabled;
  objc::send<"_controlStateChanged">(*this);
}

void Control::setSelected(bool selected) const {
  if (control().selected == selected) return;
  control().selected = selected;
  objc::send<"_controlStateChanged">(*this);
}

void Control::setHighlighted(bool highlighted) const {
  if (control().highlighted == highlighted) return;
  control().highlighted = highlighted;
  objc::send<"_controlStateChanged">(*this);
}

NSUInteger Control::control_states() const {
  const ControlState& state = control();
  return (state.highlighted ? control_state::kHighlighted : 0) |
         (state.enabled ? 0 : control_state::kDisabled) | (state.selected ? control_state::kSelected : 0);
}

void Control::addTarget(const NSObject& target, objc::Selector action, NSUInteger events) const {
  if (!action) return;
  auto& targets = control().targets;
  // The same pair once: further events join it, in its place, as the platform does.
  for (ControlTarget& known : targets) {
    if (known.action == action && known.has_target == bool{target} && known.target.lock() == target) {
      known.events |= events;
      return;
    }
  }
  targets.push_back({target, bool{target}, action, events});
}

void Control::removeTarget(const NSObject& target, objc::Selector action, NSUInteger events) const {
  auto& targets = control().targets;
  for (ControlTarget& known : targets) {
    if (target && known.target.lock() != target) continue;
    if (action && !(known.action == action)) continue;
    known.events &= ~events;
  }
  std::erase_if(targets, [](const ControlTarget& known) { return known.events == 0; });
}

void Control::send_actions(NSUInteger events, const NSObject& event) const {
  const Control kept = *this;
  for (const ControlTarget& known : std::vector<ControlTarget>(kept.control().targets)) {
    if ((known.events & events) == 0) continue;
    const NSObject target = known.target.lock();
    if (known.has_target && !target) continue;  // it died
    objc::send<"sendAction:to:forEvent:">(kept, known.action, target, event);
  }
}

struct ControlMethods {
  static bool beginTracking(const Control&, const Touch&, const Event&) { return true; }
  static bool continueTracking(const Control&, const Touch&, const Event&) { return true; }
  static void endTracking(const Control&, const Touch&, const Event&) {}
  static void cancelTracking(const Control&, const Event&) {}

  static void touchesBegan(const Control& self, const NSObject& touches, const Event& event) {
    ControlState& state = self.control();
    if (!state.enabled) return;
    const Touch touch = touch_of(touches);
    state.tracking = objc::send<"beginTrackingWithTouch:withEvent:", bool>(self, touch, event);
    if (!state.tracking) return;
    state.inside = true;
    objc::send<"setHighlighted:">(self, true);
    self.send_actions(control_event::kTouchDown, event);
    if (touch.parts().tap_count > 1) self.send_actions(control_event::kTouchDownRepeat, event);
  }
  static void touchesMoved(const Control& self, const NSObject& touches, const Event& event) {
    ControlState& state = self.control();
    if (!state.tracking) return;
    const Touch touch = touch_of(touches);
    const bool inside = near(self, touch);
    const bool was_inside = std::exchange(state.inside, inside);
    // The control follows first: who hears of the drag finds the value that it led to.
    if (!objc::send<"continueTrackingWithTouch:withEvent:", bool>(self, touch, event)) {
      state.tracking = false;
      objc::send<"setHighlighted:">(self, false);
      return;
    }
    if (inside != was_inside) {
      objc::send<"setHighlighted:">(self, inside);
      self.send_actions(inside ? control_event::kTouchDragEnter : control_event::kTouchDragExit, event);
    }
    self.send_actions(inside ? control_event::kTouchDragInside : control_event::kTouchDragOutside, event);
  }
  static void touchesEnded(const Control& self, const NSObject& touches, const Event& event) {
    ControlState& state = self.control();
    if (!state.tracking) return;
    state.tracking = false;
    const Touch touch = touch_of(touches);
    const bool inside = state.inside = near(self, touch);
    objc::send<"setHighlighted:">(self, false);
    objc::send<"endTrackingWithTouch:withEvent:">(self, touch, event);
    self.send_actions(inside ? control_event::kTouchUpInside : control_event::kTouchUpOutside, event);
  }
  static void touchesCancelled(const Control& self, const NSObject&, const Event& event) {
    ControlState& state = self.control();
    if (!state.tracking) return;
    state.tracking = false;
    objc::send<"setHighlighted:">(self, false);
    objc::send<"cancelTrackingWithEvent:">(self, event);
    self.send_actions(control_event::kTouchCancel, event);
  }

  static void sendAction(const Control& self, objc::Selector action, const NSObject& target,
                         const NSObject& event) {
    Application::shared().sendAction(action, target, self, event);
  }
  static NSUInteger state(const Control& self) { return self.control_states(); }
  static bool isTracking(const Control& self) { return self.control().tracking; }
  static bool isTouchInside(const Control& self) { return self.control().inside; }
  static void stateChanged(const Control& self) { self.setNeedsDisplay(); }
  static NSUInteger allControlEvents(const Control& self) {
    NSUInteger all = 0;
    for (const ControlTarget& known : self.control().targets) all |= known.events;
    return all;
  }
  static NSInteger vertical(const Control& self) { return self.control().vertical_alignment; }
  static void setVertical(const Control& self, NSInteger value) {
    self.control().vertical_alignment = value;
    self.setNeedsDisplay();
  }
  static NSInteger horizontal(const Control& self) { return self.control().horizontal_alignment; }
  static void setHorizontal(const Control& self, NSInteger value) {
    self.control().horizontal_alignment = value;
    self.setNeedsDisplay();
  }

  /// Space and return press a control; what else a key means is each control's own.
  static bool handleKey(const Control& self, const Key& key) {
    if (!self.isEnabled() || focused_view() != self) return false;
    if (!key.is_space() && key.code() != KeyCode::Return) return false;
    self.sendActions(control_event::kTouchDown);
    self.sendActions(control_event::kTouchUpInside);
    return true;
  }
  static bool canBecomeFocused(const Control& self) { return self.isEnabled(); }
};

void Control::define() {
  using M = ControlMethods;
  objc::Class<Control>()
      .state<ControlState>()
      .method<"isEnabled", &Control::isEnabled>()
      .method<"setEnabled:", &Control::setEnabled>()
      .method<"isSelected", &Control::isSelected>()
      .method<"setSelected:", &Control::setSelected>()
      .method<"isHighlighted", &Control::isHighlighted>()
      .method<"setHighlighted:", &Control::setHighlighted>()
      .method<"state", &M::state>()
      .method<"isTracking", &M::isTracking>()
      .method<"isTouchInside", &M::isTouchInside>()
      .method<"_controlStateChanged", &M::stateChanged>()
      .method<"addTarget:action:forControlEvents:", &Control::addTarget>()
      .method<"removeTarget:action:forControlEvents:", &Control::removeTarget>()
      .method<"allControlEvents", &M::allControlEvents>()
      .method<"sendActionsForControlEvents:", &Control::sendActions>()
      .method<"sendAction:to:forEvent:", &M::sendAction>()
      .method<"beginTrackingWithTouch:withEvent:", &M::beginTracking>()
      .method<"continueTrackingWithTouch:withEvent:", &M::continueTracking>()
      .method<"endTrackingWithTouch:withEvent:", &M::endTracking>()
      .method<"cancelTrackingWithEvent:", &M::cancelTracking>()
      .method<"touchesBegan:withEvent:", &M::touchesBegan>()
      .method<"touchesMoved:withEvent:", &M::touchesMoved>()
      .method<"touchesEnded:withEvent:", &M::touchesEnded>()
      .method<"touchesCancelled:withEvent:", &M::touchesCancelled>()
      .method<"contentVerticalAlignment", &M::vertical>()
      .method<"setContentVerticalAlignment:", &M::setVertical>()
      .method<"contentHorizontalAlignment", &M::horizontal>()
      .method<"setContentHorizontalAlignment:", &M::setHorizontal>()
      .method<"_handleKey:", &M::handleKey>()
      .method<"canBecomeFocused", &M::canBecomeFocused>()
      .register_class();
}

}  // namespace wispen::uikit
