// host/uikit/view/events/touch.hpp: UITouch and UIEvent: a finger on the screen, and what it does now.
#pragma once

#include "host/geometry/geometry.hpp"
#include "host/uikit/view/geometry.hpp"
#include "platform/UIKit/UITouch.hpp"

namespace wispen::uikit {

class Touch : public objc::Implementation<Touch, UITouch> {
 public:
  Point locationInView(const UIView& target) const { return in_view(location, target); }
  Point previousLocationInView(const UIView& target) const { return in_view(previous, target); }

  // As the dispatcher sees it.
  Point location;  // in the window
  Point previous;
  Point start;
  UITouchPhase phase = UITouchPhase::Began;
  UIView view;
  UIWindow window;
  double timestamp = 0;
  NSUInteger tap_count = 1;

 private:
  Point in_view(const Point& point, const UIView& target) const;
};

void define_touch();

/// The set of this one touch, and the event that carries it.
NSObject touches_with(const UITouch& touch);
UIEvent event_with(const UITouch& touch);
/// The one touch of a set.
UITouch touch_of(const NSObject& touches);

}  // namespace wispen::uikit
