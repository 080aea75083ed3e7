// host/uikit/events/touch_dispatcher.cpp: brings what a finger does to the views and recognisers it is for.

#include "host/uikit/events/touch_dispatcher.hpp"

#include <cmath>

#include "host/uikit/events/focus.hpp"
#include "host/uikit/session.hpp"
#include "host/uikit/views/application.hpp"
#include "host/uikit/views/view_state.hpp"
#include "host/uikit/views/window.hpp"

namespace wispen::uikit {

namespace {

// The platform's, roughly: a second tap counts when it comes soon and close enough.
constexpr double kMultipleTapInterval = 0.35;
constexpr double kMultipleTapDistance = 40;

double now_in_seconds() { return static_cast<double>(main_loop().clock().now().count()) / 1e9; }

NSObject set_of(const Touch& touch) {
  return objc::send<"setWithObject:", NSObject>(objc::class_named<"NSSet">(), touch);
}

}  // namespace

template <objc::FixedString Sel>
void TouchDispatcher::tell_view() {
  const View view = touch_.parts().view;
  if (view && !view_cancelled_) objc::send<Sel>(view, set_of(touch_), Event::with(touch_));
}

void TouchDispatcher::tell_recognizers(void (GestureRecognizer::*message)(const Touch&) const) {
  for (const GestureRecognizer& recognizer : std::vector<GestureRecognizer>(recognizers_)) {
    if (!touch_) return;  // a recogniser's target ended it all
    if (!recognizer.isEnabled() || recognizer.gesture_state() == GestureState::Failed) continue;
    if (winner_ && recognizer != winner_ && recognizer.gesture_state() == GestureState::Possible) {
      const NSObject delegate = recognizer.recognition().delegate.lock();
      constexpr auto kTogether =
          objc::FixedString{"gestureRecognizer:shouldRecognizeSimultaneouslyWithGestureRecognizer:"};
      if (!objc::responds_to(delegate, objc::selector<kTogether>()) ||
          !objc::send<kTogether, bool>(delegate, recognizer, winner_)) {
        continue;
      }
    }
    (recognizer.*message)(touch_);
    if (!winner_ && recognizer.recognized()) winner_ = recognizer;
  }
}

void TouchDispatcher::settle_recognizers() {
  if (!winner_ || view_cancelled_ || !winner_.recognition().cancels_touches) return;
  touch_.parts().phase = TouchPhase::Cancelled;
  tell_view<"touchesCancelled:withEvent:">();
  view_cancelled_ = true;
}

void TouchDispatcher::began(Point place) {
  if (touch_) cancel();
  rest_focus();
  const Application application = Application::shared();
  Window window;
  View hit;
  const std::vector<Window> windows = application.windows();
  for (auto candidate = windows.rbegin(); candidate != windows.rend() && !hit; ++candidate) {
    const Rect frame = candidate->frame();
    hit = objc::send<"hitTest:withEvent:", View>(
        *candidate, Point{place.x - frame.min_x(), place.y - frame.min_y()}, NSObject());
    if (hit) window = *candidate;
  }
  if (!hit) return;
  const double now = now_in_seconds();
  const bool again = now - last_end_ < kMultipleTapInterval &&
                     std::hypot(place.x - last_place_.x, place.y - last_place_.y) < kMultipleTapDistance;
  taps_ = again ? taps_ + 1 : 1;
  touch_ = objc::make<Touch>();
  TouchState& state = touch_.parts();
  state.location = state.previous = state.start = place;
  state.view = hit;
  state.window = window;
  state.timestamp = now;
  state.tap_count = taps_;
  view_cancelled_ = false;
  winner_ = GestureRecognizer();
  recognizers_.clear();
  for (View view = hit; view; view = view.superview()) {
    for (const GestureRecognizer& recognizer : view.parts().recognizers) {
      const NSObject delegate = recognizer.recognition().delegate.lock();
      constexpr auto kReceives = objc::FixedString{"gestureRecognizer:shouldReceiveTouch:"};
      if (objc::responds_to(delegate, objc::selector<kReceives>()) &&
          !objc::send<kReceives, bool>(delegate, recognizer, touch_)) {
        continue;
      }
      recognizer.reset();
      recognizers_.push_back(recognizer);
    }
  }
  tell_recognizers(&GestureRecognizer::touch_began);
  if (touch_) tell_view<"touchesBegan:withEvent:">();
}

void TouchDispatcher::advance(Point place, TouchPhase phase) {
  TouchState& state = touch_.parts();
  state.previous = state.location;
  state.location = place;
  state.timestamp = now_in_seconds();
  state.phase = phase;
}

void TouchDispatcher::moved(Point place) {
  if (!touch_ || place == touch_.parts().location) return;
  advance(place, TouchPhase::Moved);
  tell_recognizers(&GestureRecognizer::touch_moved);
  if (!touch_) return;
  settle_recognizers();
  tell_view<"touchesMoved:withEvent:">();
}

void TouchDispatcher::ended(Point place) {
  if (!touch_) return;
  advance(place, TouchPhase::Ended);
  tell_recognizers(&GestureRecognizer::touch_ended);
  if (!touch_) return;
  settle_recognizers();
  if (!touch_) return;
  touch_.parts().phase = TouchPhase::Ended;
  tell_view<"touchesEnded:withEvent:">();
  last_end_ = now_in_seconds();
  last_place_ = place;
  finish();
}

void TouchDispatcher::cancel() {
  if (!touch_) return;
  advance(touch_.parts().location, TouchPhase::Cancelled);
  const std::vector<GestureRecognizer> recognizers = recognizers_;
  for (const GestureRecognizer& recognizer : recognizers) recognizer.touch_cancelled(touch_);
  tell_view<"touchesCancelled:withEvent:">();
  finish();
}

void TouchDispatcher::finish() {
  touch_ = Touch();
  recognizers_.clear();
  winner_ = GestureRecognizer();
}

}  // namespace wispen::uikit
