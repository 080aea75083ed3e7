// host/uikit/events/gesture_recognizer.cpp: UIGestureRecognizer: what a finger's way means.

#include "host/uikit/events/gesture_recognizer.hpp"

#include <algorithm>

#include "host/uikit/events/touch.hpp"

namespace wispen::uikit {

View GestureRecognizer::view() const { return recognition().view.get(); }
void GestureRecognizer::set_view(const View& view) const { recognition().view = objc::Unowned<View>(view); }

bool GestureRecognizer::recognized() const {
  const GestureState now = recognition().state;
  return now == GestureState::Began || now == GestureState::Changed || now == GestureState::Ended;
}

void GestureRecognizer::move_to(GestureState state) const {
  const GestureRecognizer kept = *this;
  kept.recognition().state = state;
  if (state == GestureState::Possible || state == GestureState::Failed) return;
  for (const GestureTarget& target : std::vector<GestureTarget>(kept.recognition().targets)) {
    const NSObject receiver = target.target.lock();
    if (receiver) objc::perform(receiver, target.action, kept);
  }
}

void GestureRecognizer::reset() const { recognition().state = GestureState::Possible; }

void GestureRecognizer::addTarget(const NSObject& target, objc::Selector action) const {
  recognition().targets.push_back({target, action});
}

void GestureRecognizer::removeTarget(const NSObject& target, objc::Selector action) const {
  std::erase_if(recognition().targets, [&](const GestureTarget& known) {
    return (!target || known.target.lock() == target) && (!action || known.action == action);
  });
}

Point GestureRecognizer::locationInView(const View& view) const {
  const View own = this->view();
  const View window = own ? objc::send<"window", View>(own) : View();
  const Point place = recognition().location;
  return view && window ? window.convertPointToView(place, view) : place;
}

namespace {

template <objc::FixedString Sel>
void deliver(const GestureRecognizer& self, const Touch& touch) {
  self.recognition().location = touch.parts().location;
  const NSObject touches = objc::send<"setWithObject:", NSObject>(objc::class_named<"NSSet">(), touch);
  objc::send<Sel>(self, touches, Event::with(touch));
}

void ignore_touches(const GestureRecognizer&, const NSObject&, const NSObject&) {}

GestureRecognizer with_target(objc::Allocated<GestureRecognizer> self, const NSObject& target,
                              objc::Selector action) {
  GestureRecognizer recognizer = std::move(self).initialize_super<"init">();
  if (recognizer && target) recognizer.addTarget(target, action);
  return recognizer;
}

GestureRecognizer plain(objc::Allocated<GestureRecognizer> self) {
  return std::move(self).initialize<"initWithTarget:action:">(NSObject(), objc::Selector());
}

struct Methods {
  static NSInteger state(const GestureRecognizer& self) {
    return static_cast<NSInteger>(self.gesture_state());
  }
  static void setState(const GestureRecognizer& self, NSInteger state) {
    self.move_to(static_cast<GestureState>(state));
  }
  static void setEnabled(const GestureRecognizer& self, bool enabled) {
    self.recognition().enabled = enabled;
    if (!enabled && self.recognized()) self.move_to(GestureState::Cancelled);
  }
  static bool cancelsTouches(const GestureRecognizer& self) { return self.recognition().cancels_touches; }
  static void setCancelsTouches(const GestureRecognizer& self, bool cancels) {
    self.recognition().cancels_touches = cancels;
  }
  static NSObject delegate(const GestureRecognizer& self) { return self.recognition().delegate.lock(); }
  static void setDelegate(const GestureRecognizer& self, const NSObject& delegate) {
    self.recognition().delegate = delegate;
  }
};

}  // namespace

void GestureRecognizer::touch_began(const Touch& touch) const {
  deliver<"touchesBegan:withEvent:">(*this, touch);
}
void GestureRecognizer::touch_moved(const Touch& touch) const {
  deliver<"touchesMoved:withEvent:">(*this, touch);
}
void GestureRecognizer::touch_ended(const Touch& touch) const {
  deliver<"touchesEnded:withEvent:">(*this, touch);
}
void GestureRecognizer::touch_cancelled(const Touch& touch) const {
  deliver<"touchesCancelled:withEvent:">(*this, touch);
}

void GestureRecognizer::define() {
  objc::Class<GestureRecognizer>()
      .state<GestureRecognizerState>()
      .initializer<"init", &plain>()
      .initializer<"initWithTarget:action:", &with_target>()
      .method<"addTarget:action:", &GestureRecognizer::addTarget>()
      .method<"removeTarget:action:", &GestureRecognizer::removeTarget>()
      .method<"view", &GestureRecognizer::view>()
      .method<"state", &Methods::state>()
      .method<"setState:", &Methods::setState>()
      .method<"isEnabled", &GestureRecognizer::isEnabled>()
      .method<"setEnabled:", &Methods::setEnabled>()
      .method<"cancelsTouchesInView", &Methods::cancelsTouches>()
      .method<"setCancelsTouchesInView:", &Methods::setCancelsTouches>()
      .method<"delegate", &Methods::delegate>()
      .method<"setDelegate:", &Methods::setDelegate>()
      .method<"locationInView:", &GestureRecognizer::locationInView>()
      .method<"reset", &GestureRecognizer::reset>()
      .method<"touchesBegan:withEvent:", &ignore_touches>()
      .method<"touchesMoved:withEvent:", &ignore_touches>()
      .method<"touchesEnded:withEvent:", &ignore_touches>()
      .method<"touchesCancelled:withEvent:", &ignore_touches>()
      .register_class();
  TapGestureRecognizer::define();
  LongPressGestureRecognizer::define();
  PanGestureRecognizer::define();
  ScreenEdgePanGestureRecognizer::define();
}

}  // namespace wispen::uikit
