// host/uikit/view/events/gesture_recognizer.cpp: UIGestureRecognizer: what a finger's way means.

#include "host/uikit/view/events/gesture_recognizer.hpp"

#include <algorithm>

#include "host/uikit/view/events/touch.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

using enum UIGestureRecognizerState;

UIGestureRecognizer GestureRecognizer::init(objc::Allocated<UIGestureRecognizer> self) {
  return std::move(self).initialize<"initWithTarget:action:">(NSObject(), objc::Selector());
}

UIGestureRecognizer GestureRecognizer::initWithTarget(objc::Allocated<UIGestureRecognizer> self,
                                                      const NSObject& target, objc::Selector action) {
  UIGestureRecognizer recognizer = super_init<"init">(std::move(self));
  if (recognizer && target) recognizer.addTarget(target, action);
  return recognizer;
}

bool GestureRecognizer::recognized() const { return state_ == Began || state_ == Changed || state_ == Ended; }

void GestureRecognizer::setState(UIGestureRecognizerState state) {
  const UIGestureRecognizer kept = self();
  state_ = state;
  if (state == Possible || state == Failed) return;
  for (const Target& target : std::vector<Target>(targets_)) {
    const NSObject receiver = target.target.lock();
    if (receiver) objc::perform(receiver, target.action, kept);
  }
}

void GestureRecognizer::finish(UIGestureRecognizerState recognized_end) {
  setState(recognized() ? recognized_end : Failed);
}

void GestureRecognizer::setEnabled(bool enabled) {
  enabled_ = enabled;
  if (!enabled && recognized()) setState(Cancelled);
}

void GestureRecognizer::removeTarget(const NSObject& target, objc::Selector action) {
  std::erase_if(targets_, [&](const Target& known) {
    return (!target || known.target.lock() == target) && (!action || known.action == action);
  });
}

Point GestureRecognizer::locationInView(const UIView& view) const {
  const UIView own = this->view();
  const UIView window = own ? View::of(own).window() : UIView();
  return view && window ? Point(window.convertPointToView(location_, view)) : location_;
}

template <objc::FixedString Sel>
void GestureRecognizer::deliver(const UITouch& touch) {
  location_ = Touch::of(touch).location;
  objc::send<Sel>(UIGestureRecognizer(self()), touches_with(touch), event_with(touch));
}

void GestureRecognizer::touch_began(const UITouch& touch) { deliver<"touchesBegan:withEvent:">(touch); }
void GestureRecognizer::touch_moved(const UITouch& touch) { deliver<"touchesMoved:withEvent:">(touch); }
void GestureRecognizer::touch_ended(const UITouch& touch) { deliver<"touchesEnded:withEvent:">(touch); }
void GestureRecognizer::touch_cancelled(const UITouch& touch) {
  deliver<"touchesCancelled:withEvent:">(touch);
}

namespace {

void ignore_touches(const UIGestureRecognizer&, const NSObject&, const NSObject&) {}

}  // namespace

void define_gesture_recognizers() {
  objc::Class<UIGestureRecognizer>::implemented_by<GestureRecognizer>()
      .initializer<"init", &GestureRecognizer::init>()
      .initializer<"initWithTarget:action:", &GestureRecognizer::initWithTarget>()
      .method<"addTarget:action:", &GestureRecognizer::addTarget>()
      .method<"removeTarget:action:", &GestureRecognizer::removeTarget>()
      .method<"view", &GestureRecognizer::view>()
      .method<"state", &GestureRecognizer::state>()
      .method<"setState:", &GestureRecognizer::setState>()
      .method<"isEnabled", &GestureRecognizer::isEnabled>()
      .method<"setEnabled:", &GestureRecognizer::setEnabled>()
      .property<"cancelsTouchesInView", "setCancelsTouchesInView:", &GestureRecognizer::cancels_touches_>()
      .method<"delegate", &GestureRecognizer::delegate>()
      .method<"setDelegate:", &GestureRecognizer::setDelegate>()
      .method<"locationInView:", &GestureRecognizer::locationInView>()
      .method<"reset", &GestureRecognizer::reset>()
      .method<"touchesBegan:withEvent:", &ignore_touches>()
      .method<"touchesMoved:withEvent:", &ignore_touches>()
      .method<"touchesEnded:withEvent:", &ignore_touches>()
      .method<"touchesCancelled:withEvent:", &ignore_touches>()
      .register_class();
  define_gestures();
}

}  // namespace wispen::uikit
