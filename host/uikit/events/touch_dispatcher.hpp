// host/uikit/events/touch_dispatcher.hpp: brings what a finger does to the views and recognisers it is for.
#pragma once

#include <vector>

#include "host/uikit/events/gesture_recognizer.hpp"
#include "host/uikit/events/touch.hpp"

namespace wispen::uikit {

/// One finger, as a mouse has. Places are in points of the screen.
class TouchDispatcher {
 public:
  void began(Point place);
  void moved(Point place);
  void ended(Point place);
  /// The system takes the finger away: nothing is tapped.
  void cancel();
  bool down() const { return static_cast<bool>(touch_); }

 private:
  void advance(Point place, TouchPhase phase);
  void tell_recognizers(void (GestureRecognizer::*message)(const Touch&) const);
  void settle_recognizers();
  template <objc::FixedString Sel>
  void tell_view();
  void finish();

  Touch touch_;
  std::vector<GestureRecognizer> recognizers_;  // innermost view's first
  bool view_cancelled_ = false;
  GestureRecognizer winner_;
  double last_end_ = -1;
  Point last_place_;
  NSUInteger taps_ = 0;
};

}  // namespace wispen::uikit
