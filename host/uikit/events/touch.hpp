// host/uikit/events/touch.hpp: UITouch and UIEvent: a finger on the screen, and what it does now.
#pragma once

#include "host/core/clock.hpp"
#include "host/uikit/views/view.hpp"

namespace wispen::uikit {

/// The platform's values.
enum class TouchPhase : NSInteger { Began = 0, Moved = 1, Stationary = 2, Ended = 3, Cancelled = 4 };

struct TouchState {
  Point location;  // in the window
  Point previous;
  Point start;
  TouchPhase phase = TouchPhase::Began;
  View view;  // the one that was hit; it gets all that this finger does
  View window;
  double timestamp = 0;  // seconds
  NSUInteger tap_count = 1;
};

class Touch : public objc::Authored<Touch, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"UITouch"};
  using Authored::Authored;

  static void define();
  TouchState& parts() const { return state<TouchState>(); }

  /// In the view's coordinates; in the window's for nil.
  Point locationInView(const View& view) const;
  Point previousLocationInView(const View& view) const;
};

class Event : public objc::Authored<Event, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"UIEvent"};
  using Authored::Authored;

  static void define();
  static Event with(const Touch& touch);
  Touch touch() const;
};

/// The one touch of a set.
Touch touch_of(const NSObject& touches);

}  // namespace wispen::uikit
