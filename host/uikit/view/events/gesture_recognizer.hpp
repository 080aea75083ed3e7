// host/uikit/view/events/gesture_recognizer.hpp: UIGestureRecognizer: what a finger's way means.
#pragma once

#include <vector>

#include "host/geometry/geometry.hpp"
#include "host/uikit/view/geometry.hpp"
#include "platform/UIKit/UIGestureRecognizer.hpp"
#include "platform/UIKit/UITouch.hpp"

namespace wispen::uikit {

/// The host's UIGestureRecognizer. Its kinds read the touches that their view and all below it get.
class GestureRecognizer : public objc::Implementation<GestureRecognizer, UIGestureRecognizer> {
 public:
  static UIGestureRecognizer init(objc::Allocated<UIGestureRecognizer> self);
  static UIGestureRecognizer initWithTarget(objc::Allocated<UIGestureRecognizer> self, const NSObject& target,
                                            objc::Selector action);

  UIView view() const { return view_.get(); }
  void set_view(const UIView& view) { view_ = objc::Unowned<UIView>(view); }
  UIGestureRecognizerState state() const { return state_; }
  bool recognized() const;
  bool possible() const { return state_ == UIGestureRecognizerState::Possible; }
  /// Tells the targets, in order of registration, unless the state only came to nothing.
  void setState(UIGestureRecognizerState state);
  /// What a finger that left means: the end of what was recognised, else nothing.
  void finish(UIGestureRecognizerState recognized_end);
  void addTarget(const NSObject& target, objc::Selector action) { targets_.push_back({target, action}); }
  void removeTarget(const NSObject& target, objc::Selector action);
  Point locationInView(const UIView& view) const;
  /// In the window.
  const Point& location() const { return location_; }
  /// Back to possible, for the next finger.
  void reset() { state_ = UIGestureRecognizerState::Possible; }
  bool isEnabled() const { return enabled_; }
  void setEnabled(bool enabled);
  bool cancels_touches() const { return cancels_touches_; }
  NSObject delegate() const { return delegate_.lock(); }
  void setDelegate(const NSObject& delegate) { delegate_ = delegate; }

  /// Hands the touch in by one of the four messages of responders.
  template <objc::FixedString Sel>
  void deliver(const UITouch& touch);
  void touch_began(const UITouch& touch);
  void touch_moved(const UITouch& touch);
  void touch_ended(const UITouch& touch);
  void touch_cancelled(const UITouch& touch);

 private:
  friend void define_gesture_recognizers();

  struct Target {
    objc::Weak<NSObject> target;
    objc::Selector action;
  };
  objc::Unowned<UIView> view_;  // it owns the recogniser, and clears this when it dies
  std::vector<Target> targets_;
  objc::Weak<NSObject> delegate_;
  UIGestureRecognizerState state_ = UIGestureRecognizerState::Possible;
  bool enabled_ = true;
  bool cancels_touches_ = true;
  Point location_;
};

/// A finger that moves away from where it came down.
class PanGestureRecognizer : public objc::Implementation<PanGestureRecognizer, UIPanGestureRecognizer> {
 public:
  Point translationInView(const UIView& view) const;
  void setTranslation(const Point& translation, const UIView& view);
  /// Points a second.
  Point velocityInView(const UIView&) const { return velocity_; }
  /// Which ways start it; both when none is set.
  void restrict_to(bool horizontal, bool vertical);
  /// Only a finger that comes from the edge of the screen starts it.
  void begin_at_edge() { from_edge_ = true; }
  /// How far the finger moved in the window since it began, the first steps included.
  Point way() const;

  void touchesBegan(const NSObject& touches, const NSObject& event);
  void touchesMoved(const NSObject& touches, const NSObject& event);
  void touchesEnded(const NSObject& touches, const NSObject& event);
  void touchesCancelled(const NSObject& touches, const NSObject& event);

 private:
  GestureRecognizer& gesture() const { return GestureRecognizer::of(self()); }
  bool starts_at(const Point& point) const;

  bool horizontal_ = true;
  bool vertical_ = true;
  bool from_edge_ = false;
  Point origin_;  // where the translation is zero, in the window
  Point start_;
  Point velocity_;
  double last_time_ = 0;
};

/// The base first, then taps, long presses, pans and pans from the edge of the screen: the platform's way
/// back.
void define_gesture_recognizers();
void define_gestures();

}  // namespace wispen::uikit
