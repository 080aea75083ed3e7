// host/uikit/view/window.cpp: UIWindow: the root of what is on the screen.

#include "host/uikit/view/window.hpp"

#include "host/uikit/view/application.hpp"
#include "host/uikit/view/painting/focus_ring.hpp"
#include "host/uikit/view/painting/painter.hpp"
#include "host/uikit/view/session.hpp"
#include "host/uikit/view/view.hpp"
#include "host/uikit/view/views.hpp"

namespace wispen::uikit {

namespace {

constexpr std::size_t kMostRectangles = 64;
constexpr UIViewAutoresizing kFlexibleSize =
    UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight;

void ignore_event(const UIWindow&, const NSObject&) {}  // the dispatcher knows the way

}  // namespace

Window::~Window() {
  // Its pages go while it has its state: what they present leaves it, and marks where it was.
  UIViewController root;
  root.swap(root_);
}

UIWindow Window::init(objc::Allocated<UIWindow> self) {
  const Session* const session = Session::current();
  const Size size = session != nullptr ? session->device().size() : Size{};
  return std::move(self).initialize<"initWithFrame:">(Rect{{0, 0}, size});
}

UIWindow Window::initWithFrame(objc::Allocated<UIWindow> self, const Rect& frame) {
  UIWindow window = super_init<"initWithFrame:">(std::move(self), frame);
  if (!window) return window;
  View::of(window).begin_hidden();  // until it is made visible, as on the platform
  Application::shared().add_window(window);
  return window;
}

void Window::setRootViewController(const UIViewController& controller) {
  if (root_ == controller) return;
  const UIWindow kept = self();
  if (const UIViewController old = root_) {
    old.beginAppearanceTransition(false, false);
    old.view().removeFromSuperview();
    old.endAppearanceTransition();
  }
  root_ = controller;
  if (!controller) return;
  const UIView view = controller.view();
  view.setFrame(kept.bounds());
  view.setAutoresizingMask(kFlexibleSize);
  if (!kept.isHidden()) controller.beginAppearanceTransition(true, false);
  kept.insertSubview(view, 0);
  if (!kept.isHidden()) {
    kept.layoutIfNeeded();
    controller.endAppearanceTransition();
  }
}

void Window::setWindowLevel(double level) {
  level_ = level;
  Application::shared().sort_windows();
}

bool Window::isKeyWindow() const { return Application::shared().key_window() == self(); }
void Window::makeKeyWindow() { Application::shared().set_key_window(self()); }

void Window::makeKeyAndVisible() {
  const UIWindow kept = self();
  makeKeyWindow();
  if (!kept.isHidden()) return;
  const UIViewController controller = root_;
  controller.beginAppearanceTransition(true, false);
  kept.setHidden(false);
  kept.layoutIfNeeded();
  controller.endAppearanceTransition();
}

UIResponder Window::nextResponder() const { return Application::shared().self(); }

void Window::setHidden(bool hidden) {
  super<"setHidden:">(hidden);
  if (!hidden) add_damage(self().bounds());
  if (hidden && isKeyWindow()) Application::shared().set_key_window(UIWindow());
}

EdgeInsets Window::safeAreaInsets() const {
  const Session* const session = Session::current();
  return session != nullptr ? session->device().safe_area() : EdgeInsets{};
}

void Window::add_damage(const Rect& rect) {
  const View& view = View::of(self());
  const Rect part = rect.intersection(view.bounds());
  const Rect frame = view.frame();
  if (!part.empty()) uncovered(part.offset(frame.min_x(), frame.min_y()));
}

void Window::uncovered(const Rect& rect) {
  if (rect.empty()) return;
  damage_.push_back(rect);
  if (damage_.size() <= kMostRectangles) return;
  // Nobody may ever paint: what is noted must not grow for ever.
  Rect all;
  for (const Rect& one : damage_) all = all.united(one);
  damage_ = {all};
}

void define_window() {
  objc::Class<UIWindow>::implemented_by<Window>()
      .initializer<"init", &Window::init>()
      .initializer<"initWithFrame:", &Window::initWithFrame>()
      .method<"rootViewController", &Window::rootViewController>()
      .method<"setRootViewController:", &Window::setRootViewController>()
      .method<"windowLevel", &Window::windowLevel>()
      .method<"setWindowLevel:", &Window::setWindowLevel>()
      .method<"isKeyWindow", &Window::isKeyWindow>()
      .method<"makeKeyWindow", &Window::makeKeyWindow>()
      .method<"makeKeyAndVisible", &Window::makeKeyAndVisible>()
      .method<"window", &Window::window>()
      .method<"nextResponder", &Window::nextResponder>()
      .method<"setHidden:", &Window::setHidden>()
      .method<"safeAreaInsets", &Window::safeAreaInsets>()
      .method<"sendEvent:", &ignore_event>()
      .register_class();
  set_overlay_painter(objc::class_for<UIWindow>(), &paint_focus_ring);
}

}  // namespace wispen::uikit
