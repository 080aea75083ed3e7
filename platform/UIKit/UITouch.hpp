// platform/UIKit/UITouch.hpp: a finger on the screen, and what it does now.
#pragma once

#include "platform/UIKit/UIApplication.hpp"

enum class UITouchPhase : NSInteger { Began = 0, Moved = 1, Stationary = 2, Ended = 3, Cancelled = 4 };

class UITouch : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"UITouch"};
  using NSObject::NSObject;

  /// In the view's coordinates; in the window's for nil.
  CGPoint locationInView(const UIView& view) const {
    return objc::send<"locationInView:", CGPoint>(*this, view);
  }
  CGPoint previousLocationInView(const UIView& view) const {
    return objc::send<"previousLocationInView:", CGPoint>(*this, view);
  }
  /// The one that was hit; it gets all that this finger does.
  UIView view() const { return objc::send<"view", UIView>(*this); }
  UIWindow window() const { return objc::send<"window", UIWindow>(*this); }
  UITouchPhase phase() const { return objc::send<"phase", UITouchPhase>(*this); }
  NSUInteger tapCount() const { return objc::send<"tapCount", NSUInteger>(*this); }
  /// Seconds.
  NSTimeInterval timestamp() const { return objc::send<"timestamp", NSTimeInterval>(*this); }
};

class UIEvent : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"UIEvent"};
  using NSObject::NSObject;
};
