// host/uikit/view/events/gestures.cpp: taps, long presses and pans.

#include <algorithm>
#include <cmath>

#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/view/events/gesture_recognizer.hpp"
#include "host/uikit/view/events/touch.hpp"
#include "host/uikit/view/session.hpp"

namespace wispen::uikit {

using enum UIGestureRecognizerState;

namespace {

// The platform's distances and times, as far as they are known from use.
constexpr double kTapDistance = 45;    // a finger that moves further does not tap
constexpr double kTapInterval = 0.35;  // seconds from one tap to the next of several
constexpr double kPanDistance = 10;    // before a pan begins
constexpr double kLongPressDistance = 10;
constexpr double kEdgeWidth = 20;

double distance(const Point& one, const Point& other) { return std::hypot(one.x - other.x, one.y - other.y); }

/// Taps: as many as required, each short of way and following the last soon enough.
class TapGestureRecognizer : public objc::Implementation<TapGestureRecognizer, UITapGestureRecognizer> {
 public:
  void touchesBegan(const NSObject& touches, const NSObject&) {
    if (taps_ > 0 && touch_of(touches).timestamp() - last_tap_ > kTapInterval) taps_ = 0;
  }
  void touchesMoved(const NSObject& touches, const NSObject&) {
    const Touch& touch = Touch::of(touch_of(touches));
    if (distance(touch.location, touch.start) > kTapDistance) fail();
  }
  void touchesEnded(const NSObject& touches, const NSObject&) {
    if (!gesture().possible()) return;
    const UIView view = gesture().view();
    const UITouch touch = touch_of(touches);
    if (!view || !view.pointInside(touch.locationInView(view), NSObject())) return fail();
    last_tap_ = touch.timestamp();
    if (++taps_ < taps_required) return;
    taps_ = 0;
    gesture().setState(Ended);
  }
  void touchesCancelled(const NSObject&, const NSObject&) { fail(); }

  NSUInteger taps_required = 1;
  NSUInteger touches_required = 1;

 private:
  GestureRecognizer& gesture() const { return GestureRecognizer::of(self()); }
  void fail() {
    taps_ = 0;
    gesture().setState(Failed);
  }

  NSUInteger taps_ = 0;
  double last_tap_ = -1;
};

/// A finger that stays.
class LongPressGestureRecognizer
    : public objc::Implementation<LongPressGestureRecognizer, UILongPressGestureRecognizer> {
 public:
  void touchesBegan(const NSObject&, const NSObject&) {
    waiting_ = true;
    const objc::Weak<UILongPressGestureRecognizer> weak(self());
    timer_ = main_loop().add_timer(Nanoseconds(static_cast<std::int64_t>(minimum_duration * 1e9)), [weak] {
      const UILongPressGestureRecognizer alive = weak.lock();
      if (!alive) return;
      of(alive).waiting_ = false;
      GestureRecognizer& gesture = of(alive).gesture();
      if (gesture.possible()) gesture.setState(Began);
    });
  }
  void touchesMoved(const NSObject& touches, const NSObject&) {
    if (gesture().possible()) {
      const Touch& touch = Touch::of(touch_of(touches));
      if (distance(touch.location, touch.start) <= kLongPressDistance) return;
      stop_waiting();
      return gesture().setState(Failed);
    }
    if (gesture().recognized()) gesture().setState(Changed);
  }
  void touchesEnded(const NSObject&, const NSObject&) {
    stop_waiting();
    gesture().finish(Ended);
  }
  void touchesCancelled(const NSObject&, const NSObject&) {
    stop_waiting();
    gesture().finish(Cancelled);
  }

  double minimum_duration = 0.5;

 private:
  GestureRecognizer& gesture() const { return GestureRecognizer::of(self()); }
  void stop_waiting() {
    if (waiting_) main_loop().cancel(timer_);
    waiting_ = false;
  }

  TimerId timer_{};
  bool waiting_ = false;
};

class ScreenEdgePanGestureRecognizer
    : public objc::Implementation<ScreenEdgePanGestureRecognizer, UIScreenEdgePanGestureRecognizer> {
 public:
  static UIScreenEdgePanGestureRecognizer initWithTarget(
      objc::Allocated<UIScreenEdgePanGestureRecognizer> self, const NSObject& target, objc::Selector action) {
    auto pan = super_init<"initWithTarget:action:">(std::move(self), target, action);
    if (pan) PanGestureRecognizer::of(pan).begin_at_edge();
    return pan;
  }
  NSUInteger edges = 0;
};

}  // namespace

bool PanGestureRecognizer::starts_at(const Point& point) const {
  if (!from_edge_) return true;
  const double width = UIScreen::mainScreen().bounds().size.width;
  return display_settings().right_to_left ? point.x > width - kEdgeWidth : point.x < kEdgeWidth;
}

void PanGestureRecognizer::touchesBegan(const NSObject& touches, const NSObject&) {
  const Touch& touch = Touch::of(touch_of(touches));
  origin_ = start_ = touch.location;
  velocity_ = {};
  last_time_ = touch.timestamp;
  if (!starts_at(touch.location)) gesture().setState(Failed);
}

void PanGestureRecognizer::touchesMoved(const NSObject& touches, const NSObject&) {
  const Touch& touch = Touch::of(touch_of(touches));
  const double elapsed = touch.timestamp - last_time_;
  if (elapsed > 0) {
    const Point now{(touch.location.x - touch.previous.x) / elapsed,
                    (touch.location.y - touch.previous.y) / elapsed};
    // Smoothed a little: the last event before a finger lifts is often a small one.
    velocity_ = {0.3 * velocity_.x + 0.7 * now.x, 0.3 * velocity_.y + 0.7 * now.y};
    last_time_ = touch.timestamp;
  }
  GestureRecognizer& gesture = this->gesture();
  if (gesture.recognized()) return gesture.setState(Changed);
  if (!gesture.possible()) return;
  const double dx = std::abs(touch.location.x - start_.x);
  const double dy = std::abs(touch.location.y - start_.y);
  if (std::max(dx, dy) < kPanDistance) return;
  const bool along = dx > dy ? horizontal_ : vertical_;
  if (!along) return gesture.setState(Failed);
  origin_ = touch.location;  // the way until here told what it is, and is not made up for
  const NSObject delegate = gesture.delegate();
  if (objc::responds_to(delegate, objc::selector<"gestureRecognizerShouldBegin:">()) &&
      !objc::send<"gestureRecognizerShouldBegin:", bool>(delegate, self())) {
    return gesture.setState(Failed);
  }
  gesture.setState(Began);
}

void PanGestureRecognizer::touchesEnded(const NSObject& touches, const NSObject&) {
  constexpr double kStill = 0.1;  // seconds without movement before lifting: it was set down, not thrown
  if (touch_of(touches).timestamp() - last_time_ > kStill) velocity_ = {};
  gesture().finish(Ended);
}

void PanGestureRecognizer::touchesCancelled(const NSObject&, const NSObject&) { gesture().finish(Cancelled); }

Point PanGestureRecognizer::translationInView(const UIView&) const {
  const Point& now = gesture().location();
  return {now.x - origin_.x, now.y - origin_.y};
}
void PanGestureRecognizer::setTranslation(const Point& translation, const UIView&) {
  const Point& now = gesture().location();
  origin_ = {now.x - translation.x, now.y - translation.y};
}

Point PanGestureRecognizer::way() const {
  const Point& now = gesture().location();
  return {now.x - start_.x, now.y - start_.y};
}

void PanGestureRecognizer::restrict_to(bool horizontal, bool vertical) {
  horizontal_ = horizontal;
  vertical_ = vertical;
}

namespace {

/// The four messages by which a recogniser hears of a finger.
template <class Self>
auto listening() {
  return std::move(objc::Class<typename Self::Receiver>::template implemented_by<Self>()
                       .template method<"touchesBegan:withEvent:", &Self::touchesBegan>()
                       .template method<"touchesMoved:withEvent:", &Self::touchesMoved>()
                       .template method<"touchesEnded:withEvent:", &Self::touchesEnded>()
                       .template method<"touchesCancelled:withEvent:", &Self::touchesCancelled>());
}

}  // namespace

void define_gestures() {
  using Tap = TapGestureRecognizer;
  listening<Tap>()
      .property<"numberOfTapsRequired", "setNumberOfTapsRequired:", &Tap::taps_required>()
      .property<"numberOfTouchesRequired", "setNumberOfTouchesRequired:", &Tap::touches_required>()
      .register_class();
  using LongPress = LongPressGestureRecognizer;
  listening<LongPress>()
      .property<"minimumPressDuration", "setMinimumPressDuration:", &LongPress::minimum_duration>()
      .register_class();
  listening<PanGestureRecognizer>()
      .method<"translationInView:", &PanGestureRecognizer::translationInView>()
      .method<"setTranslation:inView:", &PanGestureRecognizer::setTranslation>()
      .method<"velocityInView:", &PanGestureRecognizer::velocityInView>()
      .register_class();
  using EdgePan = ScreenEdgePanGestureRecognizer;
  objc::Class<UIScreenEdgePanGestureRecognizer>::implemented_by<EdgePan>()
      .initializer<"initWithTarget:action:", &EdgePan::initWithTarget>()
      .property<"edges", "setEdges:", &EdgePan::edges>()
      .register_class();
}

}  // namespace wispen::uikit
