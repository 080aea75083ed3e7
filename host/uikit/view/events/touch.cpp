// host/uikit/view/events/touch.cpp: UITouch and UIEvent: a finger on the screen, and what it does now.

#include "host/uikit/view/events/touch.hpp"

namespace wispen::uikit {

Point Touch::in_view(const Point& point, const UIView& target) const {
  return target && window ? Point(window.convertPointToView(point, target)) : point;
}

namespace {

class Event : public objc::Implementation<Event, UIEvent> {
 public:
  NSObject allTouches() const { return touches_with(touch); }
  NSInteger type() const { return 0; }  // touches are the only events here
  double timestamp() const { return touch.timestamp(); }

  UITouch touch;
};

}  // namespace

NSObject touches_with(const UITouch& touch) {
  return objc::send<"setWithObject:", NSObject>(objc::class_named<"NSSet">(), touch);
}

UIEvent event_with(const UITouch& touch) {
  UIEvent event = objc::make<UIEvent>();
  Event::of(event).touch = touch;
  return event;
}

UITouch touch_of(const NSObject& touches) { return objc::send<"anyObject", UITouch>(touches); }

void define_touch() {
  objc::Class<UITouch>::implemented_by<Touch>()
      .method<"locationInView:", &Touch::locationInView>()
      .method<"previousLocationInView:", &Touch::previousLocationInView>()
      .getter<"view", &Touch::view>()
      .getter<"window", &Touch::window>()
      .getter<"phase", &Touch::phase>()
      .getter<"tapCount", &Touch::tap_count>()
      .getter<"timestamp", &Touch::timestamp>()
      .register_class();
  objc::Class<UIEvent>::implemented_by<Event>()
      .method<"allTouches", &Event::allTouches>()
      .method<"type", &Event::type>()
      .method<"timestamp", &Event::timestamp>()
      .register_class();
}

}  // namespace wispen::uikit
