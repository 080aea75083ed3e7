// host/uikit/events/touch.cpp: UITouch and UIEvent: a finger on the screen, and what it does now.

#include "host/uikit/events/touch.hpp"

namespace wispen::uikit {

namespace {

struct EventState {
  Touch touch;
};

NSObject set_of(const Touch& touch) {
  return objc::send<"setWithObject:", NSObject>(objc::class_named<"NSSet">(), touch);
}

Point in_view(const Touch& touch, const Point& place, const View& view) {
  const View window = touch.parts().window;
  return view && window ? window.convertPointToView(place, view) : place;
}

struct TouchMethods {
  static View view(const Touch& self) { return self.parts().view; }
  static View window(const Touch& self) { return self.parts().window; }
  static NSInteger phase(const Touch& self) { return static_cast<NSInteger>(self.parts().phase); }
  static NSUInteger tapCount(const Touch& self) { return self.parts().tap_count; }
  static double timestamp(const Touch& self) { return self.parts().timestamp; }
};

}  // namespace

Point Touch::locationInView(const View& view) const { return in_view(*this, parts().location, view); }
Point Touch::previousLocationInView(const View& view) const { return in_view(*this, parts().previous, view); }

Touch touch_of(const NSObject& touches) { return objc::send<"anyObject", Touch>(touches); }

void Touch::define() {
  objc::Class<Touch>()
      .state<TouchState>()
      .method<"locationInView:", &Touch::locationInView>()
      .method<"previousLocationInView:", &Touch::previousLocationInView>()
      .method<"view", &TouchMethods::view>()
      .method<"window", &TouchMethods::window>()
      .method<"phase", &TouchMethods::phase>()
      .method<"tapCount", &TouchMethods::tapCount>()
      .method<"timestamp", &TouchMethods::timestamp>()
      .register_class();
}

Event Event::with(const Touch& touch) {
  Event event = objc::make<Event>();
  event.state<EventState>().touch = touch;
  return event;
}

Touch Event::touch() const { return state<EventState>().touch; }

namespace {

struct EventMethods {
  static NSObject allTouches(const Event& self) { return set_of(self.touch()); }
  static NSInteger type(const Event&) { return 0; }  // touches are the only events here
  static double timestamp(const Event& self) { return self.touch().parts().timestamp; }
};

}  // namespace

void Event::define() {
  objc::Class<Event>()
      .state<EventState>()
      .method<"allTouches", &EventMethods::allTouches>()
      .method<"type", &EventMethods::type>()
      .method<"timestamp", &EventMethods::timestamp>()
      .register_class();
}

}  // namespace wispen::uikit
