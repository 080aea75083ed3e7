// host/uikit/events/gestures.cpp: taps, long presses and pans.

#include <cmath>

#include "host/uikit/events/gesture_recognizer.hpp"
#include "host/uikit/events/touch.hpp"
#include "host/uikit/session.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/views/application.hpp"

namespace wispen::uikit {

namespace {

// The platform's distances and times, as far as they are known from use.
constexpr double kTapDistance = 45;    // a finger that moves further is no tap
constexpr double kTapInterval = 0.35;  // seconds from one tap to the next of several
constexpr double kPanDistance = 10;    // before a pan begins
constexpr double kLongPressDistance = 10;
constexpr double kEdgeWidth = 20;

}  // namespace

struct TapState {
  NSUInteger taps_required = 1;
  NSUInteger touches_required = 1;
  NSUInteger taps = 0;
  double last_tap = -1;
};

struct LongPressState {
  double minimum_duration = 0.5;
  double movement = kLongPressDistance;
  TimerId timer{};
  bool waiting = false;
};

struct PanState {
  bool horizontal = true;
  bool vertical = true;
  bool from_edge = false;
  NSUInteger edges = 0;
  Point origin;  // where the translation is zero, in the window
  Point start;
  Point velocity;
  double last_time = 0;
};

TapState& TapGestureRecognizer::parts() const { return state<TapState>(); }
LongPressState& LongPressGestureRecognizer::parts() const { return state<LongPressState>(); }
PanState& PanGestureRecognizer::parts() const { return state<PanState>(); }

namespace {

double distance(Point one, Point other) { return std::hypot(one.x - other.x, one.y - other.y); }

struct TapMethods {
  using Self = TapGestureRecognizer;
  static TapState& parts(const Self& self) { return self.parts(); }
  static void began(const Self& self, const NSObject& touches, const NSObject&) {
    const double now = touch_of(touches).parts().timestamp;
    TapState& tap = parts(self);
    if (tap.taps > 0 && now - tap.last_tap > kTapInterval) tap.taps = 0;
  }
  static void moved(const Self& self, const NSObject& touches, const NSObject&) {
    const TouchState& touch = touch_of(touches).parts();
    if (distance(touch.location, touch.start) <= kTapDistance) return;
    parts(self).taps = 0;
    self.move_to(GestureState::Failed);
  }
  static void ended(const Self& self, const NSObject& touches, const NSObject&) {
    if (self.gesture_state() != GestureState::Possible) return;
    const View view = self.view();
    const Touch touch = touch_of(touches);
    const bool inside =
        view && objc::send<"pointInside:withEvent:", bool>(view, touch.locationInView(view), NSObject());
    if (!inside) {
      parts(self).taps = 0;
      return self.move_to(GestureState::Failed);
    }
    TapState& tap = parts(self);
    tap.last_tap = touch.parts().timestamp;
    if (++tap.taps < tap.taps_required) return;
    tap.taps = 0;
    self.move_to(GestureState::Ended);
  }
  static void cancelled(const Self& self, const NSObject&, const NSObject&) {
    parts(self).taps = 0;
    self.move_to(GestureState::Failed);
  }
  static NSUInteger required(const Self& self) { return parts(self).taps_required; }
  static void setRequired(const Self& self, NSUInteger taps) { parts(self).taps_required = taps; }
  static NSUInteger touches(const Self& self) { return parts(self).touches_required; }
  static void setTouches(const Self& self, NSUInteger count) { parts(self).touches_required = count; }
};

struct LongPressMethods {
  using Self = LongPressGestureRecognizer;
  static LongPressState& parts(const Self& self) { return self.parts(); }
  static void stop_waiting(const Self& self) {
    LongPressState& press = parts(self);
    if (press.waiting) main_loop().cancel(press.timer);
    press.waiting = false;
  }
  static void began(const Self& self, const NSObject&, const NSObject&) {
    LongPressState& press = parts(self);
    press.waiting = true;
    const objc::Weak<Self> weak(self);
    press.timer =
        main_loop().add_timer(Nanoseconds(static_cast<std::int64_t>(press.minimum_duration * 1e9)), [weak] {
          const Self alive = weak.lock();
          if (!alive) return;
          parts(alive).waiting = false;
          if (alive.gesture_state() == GestureState::Possible) alive.move_to(GestureState::Began);
        });
  }
  static void moved(const Self& self, const NSObject& touches, const NSObject&) {
    if (self.gesture_state() == GestureState::Possible) {
      const TouchState& touch = touch_of(touches).parts();
      if (distance(touch.location, touch.start) <= parts(self).movement) return;
      stop_waiting(self);
      return self.move_to(GestureState::Failed);
    }
    if (self.recognized()) self.move_to(GestureState::Changed);
  }
  static void ended(const Self& self, const NSObject&, const NSObject&) {
    stop_waiting(self);
    self.move_to(self.recognized() ? GestureState::Ended : GestureState::Failed);
  }
  static void cancelled(const Self& self, const NSObject&, const NSObject&) {
    stop_waiting(self);
    self.move_to(self.recognized() ? GestureState::Cancelled : GestureState::Failed);
  }
  static double duration(const Self& self) { return parts(self).minimum_duration; }
  static void setDuration(const Self& self, double seconds) { parts(self).minimum_duration = seconds; }
};

PanState& pan_state(const PanGestureRecognizer& self) { return self.parts(); }

struct PanMethods {
  using Self = PanGestureRecognizer;
  static bool starts_here(const Self& self, Point place) {
    const PanState& pan = pan_state(self);
    if (!pan.from_edge) return true;
    const double width = Screen::main().bounds().width();
    return display_settings().right_to_left ? place.x > width - kEdgeWidth : place.x < kEdgeWidth;
  }
  static void began(const Self& self, const NSObject& touches, const NSObject&) {
    const TouchState& touch = touch_of(touches).parts();
    PanState& pan = pan_state(self);
    pan.origin = pan.start = touch.location;
    pan.velocity = {};
    pan.last_time = touch.timestamp;
    if (!starts_here(self, touch.location)) self.move_to(GestureState::Failed);
  }
  static void moved(const Self& self, const NSObject& touches, const NSObject&) {
    const TouchState& touch = touch_of(touches).parts();
    PanState& pan = pan_state(self);
    const double elapsed = touch.timestamp - pan.last_time;
    if (elapsed > 0) {
      const Point now{(touch.location.x - touch.previous.x) / elapsed,
                      (touch.location.y - touch.previous.y) / elapsed};
      // Smoothed a little: the last event before a finger lifts is often a small one.
      pan.velocity = {0.3 * pan.velocity.x + 0.7 * now.x, 0.3 * pan.velocity.y + 0.7 * now.y};
      pan.last_time = touch.timestamp;
    }
    if (self.recognized()) return self.move_to(GestureState::Changed);
    if (self.gesture_state() != GestureState::Possible) return;
    const double dx = std::abs(touch.location.x - pan.start.x);
    const double dy = std::abs(touch.location.y - pan.start.y);
    if (std::max(dx, dy) < kPanDistance) return;
    const bool along = dx > dy ? pan.horizontal : pan.vertical;
    if (!along) return self.move_to(GestureState::Failed);
    pan.origin = touch.location;  // the way until here told what it is, and is not made up for
    const NSObject delegate = self.recognition().delegate.lock();
    if (objc::responds_to(delegate, objc::selector<"gestureRecognizerShouldBegin:">()) &&
        !objc::send<"gestureRecognizerShouldBegin:", bool>(delegate, self)) {
      return self.move_to(GestureState::Failed);
    }
    self.move_to(GestureState::Began);
  }
  static void ended(const Self& self, const NSObject& touches, const NSObject&) {
    constexpr double kStill = 0.1;  // seconds without movement before lifting: it was set down, not thrown
    PanState& pan = pan_state(self);
    if (touch_of(touches).parts().timestamp - pan.last_time > kStill) pan.velocity = {};
    self.move_to(self.recognized() ? GestureState::Ended : GestureState::Failed);
  }
  static void cancelled(const Self& self, const NSObject&, const NSObject&) {
    self.move_to(self.recognized() ? GestureState::Cancelled : GestureState::Failed);
  }
  static void setTranslation(const Self& self, const Point& translation, const View&) {
    const Point now = self.recognition().location;
    pan_state(self).origin = {now.x - translation.x, now.y - translation.y};
  }
};

struct EdgePanMethods {
  static ScreenEdgePanGestureRecognizer init(objc::Allocated<ScreenEdgePanGestureRecognizer> self,
                                             const NSObject& target, objc::Selector action) {
    auto pan = std::move(self).initialize_super<"initWithTarget:action:">(target, action);
    if (pan) pan_state(pan).from_edge = true;
    return pan;
  }
  static NSUInteger edges(const ScreenEdgePanGestureRecognizer& self) { return pan_state(self).edges; }
  static void setEdges(const ScreenEdgePanGestureRecognizer& self, NSUInteger edges) {
    pan_state(self).edges = edges;
  }
};

}  // namespace

void TapGestureRecognizer::define() {
  using M = TapMethods;
  objc::Class<TapGestureRecognizer>()
      .state<TapState>()
      .method<"touchesBegan:withEvent:", &M::began>()
      .method<"touchesMoved:withEvent:", &M::moved>()
      .method<"touchesEnded:withEvent:", &M::ended>()
      .method<"touchesCancelled:withEvent:", &M::cancelled>()
      .method<"numberOfTapsRequired", &M::required>()
      .method<"setNumberOfTapsRequired:", &M::setRequired>()
      .method<"numberOfTouchesRequired", &M::touches>()
      .method<"setNumberOfTouchesRequired:", &M::setTouches>()
      .register_class();
}

void LongPressGestureRecognizer::define() {
  using M = LongPressMethods;
  objc::Class<LongPressGestureRecognizer>()
      .state<LongPressState>()
      .method<"touchesBegan:withEvent:", &M::began>()
      .method<"touchesMoved:withEvent:", &M::moved>()
      .method<"touchesEnded:withEvent:", &M::ended>()
      .method<"touchesCancelled:withEvent:", &M::cancelled>()
      .method<"minimumPressDuration", &M::duration>()
      .method<"setMinimumPressDuration:", &M::setDuration>()
      .register_class();
}

PanGestureRecognizer PanGestureRecognizer::with_target(const NSObject& target, objc::Selector action) {
  return alloc().initialize<"initWithTarget:action:">(target, action);
}

Point PanGestureRecognizer::translationInView(const View&) const {
  const Point now = recognition().location;
  const Point origin = pan_state(*this).origin;
  return {now.x - origin.x, now.y - origin.y};
}

Point PanGestureRecognizer::velocityInView(const View&) const { return pan_state(*this).velocity; }

Point PanGestureRecognizer::way() const {
  const Point now = recognition().location;
  const Point start = pan_state(*this).start;
  return {now.x - start.x, now.y - start.y};
}

void PanGestureRecognizer::restrict_to(bool horizontal, bool vertical) const {
  pan_state(*this).horizontal = horizontal;
  pan_state(*this).vertical = vertical;
}

void PanGestureRecognizer::define() {
  using M = PanMethods;
  objc::Class<PanGestureRecognizer>()
      .state<PanState>()
      .method<"touchesBegan:withEvent:", &M::began>()
      .method<"touchesMoved:withEvent:", &M::moved>()
      .method<"touchesEnded:withEvent:", &M::ended>()
      .method<"touchesCancelled:withEvent:", &M::cancelled>()
      .method<"translationInView:", &PanGestureRecognizer::translationInView>()
      .method<"setTranslation:inView:", &M::setTranslation>()
      .method<"velocityInView:", &PanGestureRecognizer::velocityInView>()
      .register_class();
}

void ScreenEdgePanGestureRecognizer::define() {
  objc::Class<ScreenEdgePanGestureRecognizer>()
      .initializer<"initWithTarget:action:", &EdgePanMethods::init>()
      .method<"edges", &EdgePanMethods::edges>()
      .method<"setEdges:", &EdgePanMethods::setEdges>()
      .register_class();
}

}  // namespace wispen::uikit
