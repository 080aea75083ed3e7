// platform/UIKit/UIControl.hpp: views that turn touches into actions.
#pragma once

#include "platform/UIKit/UIView.hpp"

using UIControlEvents = NSUInteger;
inline constexpr UIControlEvents UIControlEventTouchDown = 1;
inline constexpr UIControlEvents UIControlEventTouchDragInside = 4;
inline constexpr UIControlEvents UIControlEventTouchDragOutside = 8;
inline constexpr UIControlEvents UIControlEventTouchUpInside = 64;
inline constexpr UIControlEvents UIControlEventTouchUpOutside = 128;
inline constexpr UIControlEvents UIControlEventTouchCancel = 256;
inline constexpr UIControlEvents UIControlEventValueChanged = 4096;
inline constexpr UIControlEvents UIControlEventEditingChanged = 1 << 17;

using UIControlState = NSUInteger;
inline constexpr UIControlState UIControlStateNormal = 0;
inline constexpr UIControlState UIControlStateHighlighted = 1;
inline constexpr UIControlState UIControlStateDisabled = 2;
inline constexpr UIControlState UIControlStateSelected = 4;

class UIControl : public UIView {
 public:
  using Base = UIView;
  static constexpr objc::FixedString kClass{"UIControl"};
  using UIView::UIView;
  static UIViewAllocated<UIControl> alloc() {
    return UIViewAllocated<UIControl>(objc::allocate<UIControl>());
  }

  bool isEnabled() const { return objc::send<"isEnabled", bool>(*this); }
  void setEnabled(bool enabled) const { objc::send<"setEnabled:">(*this, enabled); }
  bool isSelected() const { return objc::send<"isSelected", bool>(*this); }
  void setSelected(bool selected) const { objc::send<"setSelected:">(*this, selected); }
  bool isHighlighted() const { return objc::send<"isHighlighted", bool>(*this); }
  UIControlState state() const { return objc::send<"state", UIControlState>(*this); }
  bool isTracking() const { return objc::send<"isTracking", bool>(*this); }

  /// The action takes nothing, the control, or the control and the event. The target is not kept alive;
  /// registering the same pair again only adds events.
  void addTarget(const objc::Object& target, objc::Selector action, UIControlEvents events) const {
    objc::send<"addTarget:action:forControlEvents:">(*this, target, action, events);
  }
  /// A nil target or action stands for every one.
  void removeTarget(const objc::Object& target, objc::Selector action, UIControlEvents events) const {
    objc::send<"removeTarget:action:forControlEvents:">(*this, target, action, events);
  }
  void sendActionsForControlEvents(UIControlEvents events) const {
    objc::send<"sendActionsForControlEvents:">(*this, events);
  }
};
