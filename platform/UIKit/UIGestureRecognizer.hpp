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
  void removeTarget(const objc::Object& target, objc::Selector action) const {
    objc::send<"removeTarget:action:">(*this, target, action);
  }
  /// Not kept alive.
  NSObject delegate() const { return objc::send<"delegate", NSObject>(*this); }
  void setDelegate(const objc::Object& delegate) const { objc::send<"setDelegate:">(*this, delegate); }
  void setCancelsTouchesInView(bool cancels) const { objc::send<"setCancelsTouchesInView:">(*this, cancels); }
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

class UILongPressGestureRecognizer : public UIGestureRecognizer {
 public:
  using Base = UIGestureRecognizer;
  static constexpr objc::FixedString kClass{"UILongPressGestureRecognizer"};
  using UIGestureRecognizer::UIGestureRecognizer;
  using Allocated = UIGestureRecognizerAllocated<UILongPressGestureRecognizer>;
  static Allocated alloc() { return Allocated(objc::allocate<UILongPressGestureRecognizer>()); }
};

class UIPanGestureRecognizer : public UIGestureRecognizer {
 public:
  using Base = UIGestureRecognizer;
  static constexpr objc::FixedString kClass{"UIPanGestureRecognizer"};
  using UIGestureRecognizer::UIGestureRecognizer;
  using Allocated = UIGestureRecognizerAllocated<UIPanGestureRecognizer>;
  static Allocated alloc() { return Allocated(objc::allocate<UIPanGestureRecognizer>()); }

  CGPoint translationInView(const UIView& view) const {
    return objc::send<"translationInView:", CGPoint>(*this, view);
  }
  void setTranslation(CGPoint translation, const UIView& view) const {
    objc::send<"setTranslation:inView:">(*this, translation, view);
  }
  /// Points a second.
  CGPoint velocityInView(const UIView& view) const {
    return objc::send<"velocityInView:", CGPoint>(*this, view);
  }
};

class UIScreenEdgePanGestureRecognizer : public UIPanGestureRecognizer {
 public:
  using Base = UIPanGestureRecognizer;
  static constexpr objc::FixedString kClass{"UIScreenEdgePanGestureRecognizer"};
  using UIPanGestureRecognizer::UIPanGestureRecognizer;
  using Allocated = UIGestureRecognizerAllocated<UIScreenEdgePanGestureRecognizer>;
  static Allocated alloc() { return Allocated(objc::allocate<UIScreenEdgePanGestureRecognizer>()); }
};

inline void UIView::addGestureRecognizer(const UIGestureRecognizer& recognizer) const {
  objc::send<"addGestureRecognizer:">(*this, recognizer);
}
inline void UIView::removeGestureRecognizer(const UIGestureRecognizer& recognizer) const {
  objc::send<"removeGestureRecognizer:">(*this, recognizer);
}
