// host/uikit/views/window.cpp: UIWindow: the root of what is on the screen.

#include "host/uikit/views/window.hpp"

#include "host/uikit/controllers/view_controller.hpp"
#include "host/uikit/painting/focus_ring.hpp"
#include "host/uikit/session.hpp"
#include "host/uikit/views/application.hpp"
#include "host/uikit/views/view_state.hpp"

namespace wispen::uikit {

namespace {

constexpr std::size_t kMostRectangles = 64;

}  // namespace

struct WindowState {
  ViewController root;
  double level = 0;
  std::vector<Rect> damage;
};

WindowState& Window::parts() const { return state<WindowState>(); }

Window Window::make() { return alloc().initialize<"init">(); }

ViewController Window::rootViewController() const { return parts().root; }

void Window::setRootViewController(const ViewController& controller) const {
  if (parts().root == controller) return;
  const Window kept = *this;
  if (const ViewController old = kept.parts().root) {
    old.will_disappear(false);
    old.view().removeFromSuperview();
    old.did_disappear(false);
  }
  kept.parts().root = controller;
  if (!controller) return;
  const View view = controller.view();
  view.setFrame(kept.bounds());
  view.setAutoresizingMask(18);
  if (!kept.isHidden()) controller.will_appear(false);
  kept.insertSubviewAtIndex(view, 0);
  if (!kept.isHidden()) {
    kept.layoutIfNeeded();
    controller.did_appear(false);
  }
}

double Window::windowLevel() const { return parts().level; }
void Window::setWindowLevel(double level) const {
  parts().level = level;
  Application::shared().sort_windows();
}

bool Window::isKeyWindow() const { return Application::shared().key_window() == *this; }
void Window::makeKeyWindow() const { Application::shared().set_key_window(*this); }

void Window::makeKeyAndVisible() const {
  const Window kept = *this;
  kept.makeKeyWindow();
  if (!kept.isHidden()) return;
  const ViewController controller = kept.rootViewController();
  if (controller) controller.will_appear(false);
  objc::send<"setHidden:">(kept, false);
  kept.layoutIfNeeded();
  if (controller) controller.did_appear(false);
}

EdgeInsets Window::device_insets() const {
  const Session* const session = Session::current();
  return session != nullptr ? session->device().safe_area() : EdgeInsets{};
}

void Window::add_damage(const Rect& rect) const {
  const Rect part = rect.intersection(bounds());
  const Rect frame = this->frame();
  if (!part.empty()) uncovered(part.offset(frame.min_x(), frame.min_y()));
}

void Window::uncovered(const Rect& rect) const {
  auto& damage = parts().damage;
  if (rect.empty()) return;
  damage.push_back(rect);
  if (damage.size() <= kMostRectangles) return;
  // Nobody may ever paint: what is noted must not grow for ever.
  Rect all;
  for (const Rect& one : damage) all = all.united(one);
  damage = {all};
}

std::vector<Rect> Window::take_damage() const { return std::exchange(parts().damage, {}); }
bool Window::damaged() const { return !parts().damage.empty(); }

/// Its pages go while it has its state: what they present leaves it, and marks where it was.
void Window::farewell() {
  ViewController root;
  root.swap(parts().root);
}

struct WindowMethods {
  static Window init(objc::Allocated<Window> self) {
    const Session* const session = Session::current();
    const Size size = session != nullptr ? session->device().size() : Size{};
    return std::move(self).initialize<"initWithFrame:">(Rect{{0, 0}, size});
  }
  static Window initWithFrame(objc::Allocated<Window> self, const Rect& frame) {
    Window window = std::move(self).initialize_super<"initWithFrame:">(frame);
    if (!window) return window;
    window.View::parts().hidden = true;  // until it is made visible, as on the platform
    Application::shared().add_window(window);
    return window;
  }
  static Window window(const Window& self) { return self; }
  static NSObject nextResponder(const Window&) { return Application::shared(); }
  static void setHidden(const Window& self, bool hidden) {
    objc::send_super<"setHidden:">(self, objc::class_for<View>(), hidden);
    if (!hidden) self.add_damage(self.bounds());
    if (hidden && self.isKeyWindow()) Application::shared().set_key_window(Window());
  }
  static void sendEvent(const Window&, const NSObject&) {}  // the dispatcher knows the way
};

void Window::define() {
  using M = WindowMethods;
  objc::Class<Window>()
      .state<WindowState>()
      .on_dealloc<&Window::farewell>()
      .initializer<"init", &M::init>()
      .initializer<"initWithFrame:", &M::initWithFrame>()
      .method<"rootViewController", &Window::rootViewController>()
      .method<"setRootViewController:", &Window::setRootViewController>()
      .method<"windowLevel", &Window::windowLevel>()
      .method<"setWindowLevel:", &Window::setWindowLevel>()
      .method<"isKeyWindow", &Window::isKeyWindow>()
      .method<"makeKeyWindow", &Window::makeKeyWindow>()
      .method<"makeKeyAndVisible", &Window::makeKeyAndVisible>()
      .method<"window", &M::window>()
      .method<"nextResponder", &M::nextResponder>()
      .method<"setHidden:", &M::setHidden>()
      .method<"sendEvent:", &M::sendEvent>()
      .register_class();
  set_overlay_painter(objc::class_for<Window>(), &paint_focus_ring);
}

}  // namespace wispen::uikit
