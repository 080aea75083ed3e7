// host/uikit/view/events/touch_dispatcher.hpp: brings what a finger does to the views and recognisers it is
// for.
#pragma once

#include <vector>

#include "host/uikit/view/events/gesture_recognizer.hpp"
#include "host/uikit/view/events/touch.hpp"

namespace wispen::uikit {

/// One finger, as a mouse has. Positions are in points of the screen.
class TouchDispatcher {
 public:
  void began(Point point);
  void moved(Point point);
  void ended(Point point);
  /// The system takes the finger away: nothing is tapped.
  void cancel();
  bool down() const { return static_cast<bool>(touch_); }

 private:
  void advance(Point point, UITouchPhase phase);
  void tell_recognizers(void (GestureRecognizer::*message)(const UITouch&));
  void settle_recognizers();
  template <objc::FixedString Sel>
  void tell_view();
  void finish();

  UITouch touch_;
  std::vector<UIGestureRecognizer> recognizers_;  // innermost view's first
  bool view_cancelled_ = false;
  UIGestureRecognizer winner_;
  double last_end_ = -1;
  Point last_point_;
  NSUInteger taps_ = 0;
};

}  // namespace wispen::uikit
