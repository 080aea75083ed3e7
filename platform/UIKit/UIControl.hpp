// platform/UIKit/UIControl.hpp: views that turn touches into actions.
#pragma once

#include "platform/UIKit/UIView.hpp"

using UIControlEvents = NSUInteger;
inline constexpr UIControlEvents UIControlEventTouchDown = 1;
inline constexpr UIControlEvents UIControlEventTouchDownRepeat = 1 << 1;
inline constexpr UIControlEvents UIControlEventTouchDragInside = 4;
inline constexpr UIControlEvents UIControlEventTouchDragOutside = 8;
inline constexpr UIControlEvents UIControlEventTouchDragEnter = 1 << 4;
inline constexpr UIControlEvents UIControlEventTouchDragExit = 1 << 5;
inline constexpr UIControlEvents UIControlEventTouchUpInside = 64;
inline constexpr UIControlEvents UIControlEventTouchUpOutside = 128;
inline constexpr UIControlEvents UIControlEventTouchCancel = 256;
inline constexpr UIControlEvents UIControlEventValueChanged = 4096;
inline constexpr UIControlEvents UIControlEventPrimaryActionTriggered = 1 << 13;
inline constexpr UIControlEvents UIControlEventEditingDidBegin = 1 << 16;
inline constexpr UIControlEvents UIControlEventEditingChanged = 1 << 17;
inline constexpr UIControlEvents UIControlEventEditingDidEnd = 1 << 18;
inline constexpr UIControlEvents UIControlEventEditingDidEndOnExit = 1 << 19;

enum class UIControlContentVerticalAlignment : NSInteger { Center = 0, Top = 1, Bottom = 2, Fill = 3 };
enum class UIControlContentHorizontalAlignment : NSInteger {
  Center = 0,
  Left = 1,
  Right = 2,
  Fill = 3,
  Leading = 4,
  Trailing = 5
};

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
  void setHighlighted(bool highlighted) const { objc::send<"setHighlighted:">(*this, highlighted); }
  UIControlState state() const { return objc::send<"state", UIControlState>(*this); }
  bool isTracking() const { return objc::send<"isTracking", bool>(*this); }
  bool isTouchInside() const { return objc::send<"isTouchInside", bool>(*this); }
  UIControlContentHorizontalAlignment contentHorizontalAlignment() const {
    return objc::send<"contentHorizontalAlignment", UIControlContentHorizontalAlignment>(*this);
  }
  void setContentHorizontalAlignment(UIControlContentHorizontalAlignment alignment) const {
    objc::send<"setContentHorizontalAlignment:">(*this, alignment);
  }

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
