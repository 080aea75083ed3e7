// host/uikit/controls/control.cpp: UIControl: a view that turns touches and keys into actions.

#include "host/uikit/controls/control.hpp"

#include <algorithm>

#include "host/uikit/controls/controls.hpp"
#include "host/uikit/view/application.hpp"
#include "host/uikit/view/events/focus.hpp"
#include "host/uikit/view/events/key.hpp"
#include "host/uikit/view/events/touch.hpp"
#include "host/uikit/view/hooks.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

namespace {

// A finger may stray this far from a control before it counts as outside, as on the platform.
constexpr double kTrackingReach = 70;

bool near(const UIControl& self, const UITouch& touch) {
  return Rect(self.bounds()).inset(-kTrackingReach, -kTrackingReach).contains(touch.locationInView(self));
}

struct ControlTarget {
  objc::Weak<NSObject> target;
  bool has_target = false;  // without one the action goes along the responder chain
  objc::Selector action;
  UIControlEvents events = 0;
};

class Control : public objc::Implementation<Control, UIControl> {
 public:
  bool beginTracking(const UITouch&, const UIEvent&) { return true; }
  bool continueTracking(const UITouch&, const UIEvent&) { return true; }
  void endTracking(const UITouch&, const UIEvent&) {}
  void cancelTracking(const UIEvent&) {}
  void touchesBegan(const NSObject& touches, const UIEvent& event) {
    if (!enabled_) return;
    const UITouch touch = touch_of(touches);
    tracking_ = objc::send<"beginTrackingWithTouch:withEvent:", bool>(self(), touch, event);
    if (!tracking_) return;
    inside_ = true;
    self().setHighlighted(true);
    send_actions(UIControlEventTouchDown, event);
    if (touch.tapCount() > 1) send_actions(UIControlEventTouchDownRepeat, event);
  }
  void touchesMoved(const NSObject& touches, const UIEvent& event) {
    if (!tracking_) return;
    const UITouch touch = touch_of(touches);
    const bool inside = near(self(), touch);
    const bool was_inside = std::exchange(inside_, inside);
    // The control follows first: who hears of the drag finds the value that it led to.
    if (!objc::send<"continueTrackingWithTouch:withEvent:", bool>(self(), touch, event)) {
      tracking_ = false;
      self().setHighlighted(false);
      return;
    }
    if (inside != was_inside) {
      self().setHighlighted(inside);
      send_actions(inside ? UIControlEventTouchDragEnter : UIControlEventTouchDragExit, event);
    }
    send_actions(inside ? UIControlEventTouchDragInside : UIControlEventTouchDragOutside, event);
  }
  void touchesEnded(const NSObject& touches, const UIEvent& event) {
    if (!tracking_) return;
    tracking_ = false;
    const UITouch touch = touch_of(touches);
    const bool inside = inside_ = near(self(), touch);
    self().setHighlighted(false);
    objc::send<"endTrackingWithTouch:withEvent:">(self(), touch, event);
    send_actions(inside ? UIControlEventTouchUpInside : UIControlEventTouchUpOutside, event);
  }
  void touchesCancelled(const NSObject&, const UIEvent& event) {
    if (!tracking_) return;
    tracking_ = false;
    self().setHighlighted(false);
    objc::send<"cancelTrackingWithEvent:">(self(), event);
    send_actions(UIControlEventTouchCancel, event);
  }
  void sendAction(objc::Selector action, const NSObject& target, const NSObject& event) {
    Application::shared().sendAction(action, target, self(), event);
  }
  void stateChanged() { self().setNeedsDisplay(); }
  NSUInteger allControlEvents() {
    NSUInteger all = 0;
    for (const ControlTarget& known : targets_) all |= known.events;
    return all;
  }
  void setVertical(UIControlContentVerticalAlignment value) {
    vertical_alignment_ = value;
    self().setNeedsDisplay();
  }
  void setHorizontal(UIControlContentHorizontalAlignment value) {
    horizontal_alignment_ = value;
    self().setNeedsDisplay();
  }
  /// Space and return press a control; what else a key means is each control's own.
  bool handleKey(const UIKey& key) {
    if (!isEnabled() || focused_view() != self()) return false;
    if (!key.press().is_space() && key.press().code != KeyCode::Return) return false;
    sendActions(UIControlEventTouchDown);
    sendActions(UIControlEventTouchUpInside);
    return true;
  }
  bool canBecomeFocused() { return isEnabled(); }
  void setEnabled(bool enabled) {
    if (enabled_ == enabled) return;
    enabled_ = enabled;
    objc::send<hooks::kControlStateChanged>(self());
  }
  void setSelected(bool selected) {
    if (selected_ == selected) return;
    selected_ = selected;
    objc::send<hooks::kControlStateChanged>(self());
  }
  void setHighlighted(bool highlighted) {
    if (highlighted_ == highlighted) return;
    highlighted_ = highlighted;
    objc::send<hooks::kControlStateChanged>(self());
  }
  UIControlState state() const {
    return (highlighted_ ? UIControlStateHighlighted : 0) | (enabled_ ? 0 : UIControlStateDisabled) |
           (selected_ ? UIControlStateSelected : 0);
  }
  void addTarget(const NSObject& target, objc::Selector action, NSUInteger events) {
    if (!action) return;
    // The same pair once: further events join it, in its place, as the platform does.
    for (ControlTarget& known : targets_) {
      if (known.action == action && known.has_target == bool{target} && known.target.lock() == target) {
        known.events |= events;
        return;
      }
    }
    targets_.push_back({target, bool{target}, action, events});
  }
  void removeTarget(const NSObject& target, objc::Selector action, NSUInteger events) {
    for (ControlTarget& known : targets_) {
      if (target && known.target.lock() != target) continue;
      if (action && !(known.action == action)) continue;
      known.events &= ~events;
    }
    std::erase_if(targets_, [](const ControlTarget& known) { return known.events == 0; });
  }
  void send_actions(UIControlEvents events, const NSObject& event) {
    const UIControl kept = self();
    for (const ControlTarget& known : std::vector<ControlTarget>(targets_)) {
      if ((known.events & events) == 0) continue;
      const NSObject target = known.target.lock();
      if (known.has_target && !target) continue;  // it died
      objc::send<"sendAction:to:forEvent:">(kept, known.action, target, event);
    }
  }
  bool isEnabled() { return enabled_; }
  /// To every target of any of these events, in order of registration.
  void sendActions(NSUInteger events) { send_actions(events, NSObject()); }

 private:
  friend void wispen::uikit::define_control();

  std::vector<ControlTarget> targets_;
  bool enabled_ = true;
  bool selected_ = false;
  bool highlighted_ = false;
  bool tracking_ = false;
  bool inside_ = false;
  UIControlContentVerticalAlignment vertical_alignment_ = UIControlContentVerticalAlignment::Center;
  UIControlContentHorizontalAlignment horizontal_alignment_ = UIControlContentHorizontalAlignment::Center;
};

}  // namespace

void send_actions(const UIControl& control, UIControlEvents events, const NSObject& event) {
  Control::of(control).send_actions(events, event);
}

void define_control() {
  objc::Class<UIControl>::implemented_by<Control>()
      .method<"isEnabled", &Control::isEnabled>()
      .method<"setEnabled:", &Control::setEnabled>()
      .getter<"isSelected", &Control::selected_>()
      .method<"setSelected:", &Control::setSelected>()
      .getter<"isHighlighted", &Control::highlighted_>()
      .method<"setHighlighted:", &Control::setHighlighted>()
      .method<"state", &Control::state>()
      .getter<"isTracking", &Control::tracking_>()
      .getter<"isTouchInside", &Control::inside_>()
      .method<hooks::kControlStateChanged, &Control::stateChanged>()
      .method<"addTarget:action:forControlEvents:", &Control::addTarget>()
      .method<"removeTarget:action:forControlEvents:", &Control::removeTarget>()
      .method<"allControlEvents", &Control::allControlEvents>()
      .method<"sendActionsForControlEvents:", &Control::sendActions>()
      .method<"sendAction:to:forEvent:", &Control::sendAction>()
      .method<"beginTrackingWithTouch:withEvent:", &Control::beginTracking>()
      .method<"continueTrackingWithTouch:withEvent:", &Control::continueTracking>()
      .method<"endTrackingWithTouch:withEvent:", &Control::endTracking>()
      .method<"cancelTrackingWithEvent:", &Control::cancelTracking>()
      .method<"touchesBegan:withEvent:", &Control::touchesBegan>()
      .method<"touchesMoved:withEvent:", &Control::touchesMoved>()
      .method<"touchesEnded:withEvent:", &Control::touchesEnded>()
      .method<"touchesCancelled:withEvent:", &Control::touchesCancelled>()
      .getter<"contentVerticalAlignment", &Control::vertical_alignment_>()
      .method<"setContentVerticalAlignment:", &Control::setVertical>()
      .getter<"contentHorizontalAlignment", &Control::horizontal_alignment_>()
      .method<"setContentHorizontalAlignment:", &Control::setHorizontal>()
      .method<hooks::kHandleKey, &Control::handleKey>()
      .method<"canBecomeFocused", &Control::canBecomeFocused>()
      .register_class();
}

}  // namespace wispen::uikit
