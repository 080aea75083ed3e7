// host/uikit/view/events/touch_dispatcher.cpp: brings what a finger does to the views and recognisers it is
// for.

#include "host/uikit/view/events/touch_dispatcher.hpp"

#include <cmath>

#include "host/uikit/view/application.hpp"
#include "host/uikit/view/events/focus.hpp"
#include "host/uikit/view/session.hpp"
#include "host/uikit/view/view.hpp"
#include "host/uikit/view/window.hpp"

namespace wispen::uikit {

namespace {

// The platform's, roughly: a second tap counts when it comes soon and close enough.
constexpr double kMultipleTapInterval = 0.35;
constexpr double kMultipleTapDistance = 40;

double now_in_seconds() { return static_cast<double>(main_loop().clock().now().count()) / 1e9; }

}  // namespace

template <objc::FixedString Sel>
void TouchDispatcher::tell_view() {
  const UIView view = touch_.view();
  if (view && !view_cancelled_) objc::send<Sel>(view, touches_with(touch_), event_with(touch_));
}

void TouchDispatcher::tell_recognizers(void (GestureRecognizer::*message)(const UITouch&)) {
  for (const UIGestureRecognizer& recognizer : std::vector<UIGestureRecognizer>(recognizers_)) {
    if (!touch_) return;  // a recogniser's target ended it all
    GestureRecognizer& gesture = GestureRecognizer::of(recognizer);
    if (!gesture.isEnabled() || gesture.state() == UIGestureRecognizerState::Failed) continue;
    if (winner_ && recognizer != winner_ && gesture.possible()) {
      const NSObject delegate = gesture.delegate();
      constexpr auto kTogether =
          objc::FixedString{"gestureRecognizer:shouldRecognizeSimultaneouslyWithGestureRecognizer:"};
      if (!objc::responds_to(delegate, objc::selector<kTogether>()) ||
          !objc::send<kTogether, bool>(delegate, recognizer, winner_)) {
        continue;
      }
    }
    (gesture.*message)(touch_);
    if (!winner_ && gesture.recognized()) winner_ = recognizer;
  }
}

void TouchDispatcher::settle_recognizers() {
  if (!winner_ || view_cancelled_ || !GestureRecognizer::of(winner_).cancels_touches()) return;
  Touch::of(touch_).phase = UITouchPhase::Cancelled;
  tell_view<"touchesCancelled:withEvent:">();
  view_cancelled_ = true;
}

void TouchDispatcher::began(Point point) {
  if (touch_) cancel();
  rest_focus();
  UIWindow window;
  UIView hit;
  const std::vector<UIWindow> windows = Application::shared().windows();
  for (auto candidate = windows.rbegin(); candidate != windows.rend() && !hit; ++candidate) {
    const Rect frame = candidate->frame();
    hit = candidate->hitTest(Point{point.x - frame.min_x(), point.y - frame.min_y()}, NSObject());
    if (hit) window = *candidate;
  }
  if (!hit) return;
  const double now = now_in_seconds();
  const bool again = now - last_end_ < kMultipleTapInterval &&
                     std::hypot(point.x - last_point_.x, point.y - last_point_.y) < kMultipleTapDistance;
  taps_ = again ? taps_ + 1 : 1;
  touch_ = objc::make<UITouch>();
  Touch& touch = Touch::of(touch_);
  touch.location = touch.previous = touch.start = point;
  touch.view = hit;
  touch.window = window;
  touch.timestamp = now;
  touch.tap_count = taps_;
  view_cancelled_ = false;
  winner_ = UIGestureRecognizer();
  recognizers_.clear();
  for (UIView view = hit; view; view = View::of(view).superview()) {
    for (const UIGestureRecognizer& recognizer : View::of(view).recognizers()) {
      const NSObject delegate = GestureRecognizer::of(recognizer).delegate();
      constexpr auto kReceives = objc::FixedString{"gestureRecognizer:shouldReceiveTouch:"};
      if (objc::responds_to(delegate, objc::selector<kReceives>()) &&
          !objc::send<kReceives, bool>(delegate, recognizer, touch_)) {
        continue;
      }
      GestureRecognizer::of(recognizer).reset();
      recognizers_.push_back(recognizer);
    }
  }
  tell_recognizers(&GestureRecognizer::touch_began);
  if (touch_) tell_view<"touchesBegan:withEvent:">();
}

void TouchDispatcher::advance(Point point, UITouchPhase phase) {
  Touch& touch = Touch::of(touch_);
  touch.previous = touch.location;
  touch.location = point;
  touch.timestamp = now_in_seconds();
  touch.phase = phase;
}

void TouchDispatcher::moved(Point point) {
  if (!touch_ || point == Touch::of(touch_).location) return;
  advance(point, UITouchPhase::Moved);
  tell_recognizers(&GestureRecognizer::touch_moved);
  if (!touch_) return;
  settle_recognizers();
  tell_view<"touchesMoved:withEvent:">();
}

void TouchDispatcher::ended(Point point) {
  if (!touch_) return;
  advance(point, UITouchPhase::Ended);
  tell_recognizers(&GestureRecognizer::touch_ended);
  if (!touch_) return;
  settle_recognizers();
  if (!touch_) return;
  Touch::of(touch_).phase = UITouchPhase::Ended;
  tell_view<"touchesEnded:withEvent:">();
  last_end_ = now_in_seconds();
  last_point_ = point;
  finish();
}

void TouchDispatcher::cancel() {
  if (!touch_) return;
  advance(Touch::of(touch_).location, UITouchPhase::Cancelled);
  const std::vector<UIGestureRecognizer> recognizers = recognizers_;
  for (const UIGestureRecognizer& recognizer : recognizers)
    GestureRecognizer::of(recognizer).touch_cancelled(touch_);
  tell_view<"touchesCancelled:withEvent:">();
  finish();
}

void TouchDispatcher::finish() {
  touch_ = UITouch();
  recognizers_.clear();
  winner_ = UIGestureRecognizer();
}

}  // namespace wispen::uikit
