// platform/UIKit/UIGestureRecognizer.hpp: what a finger's way means.
#pragma once

#include "platform/UIKit/UIView.hpp"

enum class UIGestureRecognizerState : NSInteger {
  Possible = 0,
  Began = 1,
  Changed = 2,
  Ended = 3,
  Cancelled = 4,
  Failed = 5
};

/// What alloc of a recogniser class gives.
template <class T>
class UIGestureRecognizerAllocated : public objc::Allocated<T> {
 public:
  explicit UIGestureRecognizerAllocated(objc::Allocated<T>&& fresh) : objc::Allocated<T>(std::move(fresh)) {}
  /// The action takes the recogniser, or nothing. The target is not kept alive.
  T initWithTarget(const objc::Object& target, objc::Selector action) && {
    return std::move(*this).template initialize<"initWithTarget:action:">(target, action);
  }
};

class UIGestureRecognizer : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"UIGestureRecognizer"};
  using NSObject::NSObject;

  void addTarget(const objc::Object& target, objc::Selector action) const {
    objc::send<"addTarget:action:">(*this, target, action);
  }
  UIView view() const { return objc::send<"view", UIView>(*this); }
  UIGestureRecognizerState state() const { return objc::send<"state", UIGestureRecognizerState>(*this); }
  bool isEnabled() const { return objc::send<"isEnabled", bool>(*this); }
  void setEnabled(bool enabled) const { objc::send<"setEnabled:">(*this, enabled); }
  CGPoint locationInView(const UIView& view) const {
    return objc::send<"locationInView:", CGPoint>(*this, view);
  }
};

class UITapGestureRecognizer : public UIGestureRecognizer {
 public:
  using Base = UIGestureRecognizer;
  static constexpr objc::FixedString kClass{"UITapGestureRecognizer"};
  using UIGestureRecognizer::UIGestureRecognizer;
  using Allocated = UIGestureRecognizerAllocated<UITapGestureRecognizer>;
  static Allocated alloc() { return Allocated(objc::allocate<UITapGestureRecognizer>()); }

  NSUInteger numberOfTapsRequired() const { return objc::send<"numberOfTapsRequired", NSUInteger>(*this); }
  void setNumberOfTapsRequired(NSUInteger taps) const { objc::send<"setNumberOfTapsRequired:">(*this, taps); }
};

inline void UIView::addGestureRecognizer(const UIGestureRecognizer& recognizer) const {
  objc::send<"addGestureRecognizer:">(*this, recognizer);
}
inline void UIView::removeGestureRecognizer(const UIGestureRecognizer& recognizer) const {
  objc::send<"removeGestureRecognizer:">(*this, recognizer);
}
