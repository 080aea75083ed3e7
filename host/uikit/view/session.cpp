// host/uikit/view/session.cpp: what all views of one running host share.

#include "host/uikit/view/session.hpp"

#include <utility>

#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/view/application.hpp"
#include "host/uikit/view/view.hpp"
#include "host/uikit/view/window.hpp"

namespace wispen::uikit {

namespace {

Session* current_session = nullptr;

void tell_traits_changed(const UIView& view) {
  objc::send<"traitCollectionDidChange:">(view, NSObject());
  if (const UIViewController controller = View::of(view).controller()) {
    objc::send<"traitCollectionDidChange:">(controller, NSObject());
  }
  view.invalidateIntrinsicContentSize();
  view.setNeedsLayout();
  for (const UIView& subview : std::vector<UIView>(View::of(view).subviews())) tell_traits_changed(subview);
}

}  // namespace

Session::Session(MainLoop& loop, DeviceModel device) : loop_(loop), animations_(loop) {
  current_session = this;
  AnimationEngine::set_current(&animations_);
  set_device(std::move(device));
}

Session::~Session() {
  touches_.cancel();
  AnimationEngine::set_current(nullptr);
  current_session = nullptr;
}

Session* Session::current() { return current_session; }

MainLoop& main_loop() { return current_session->loop(); }

void Session::set_device(DeviceModel device) {
  const Size old_size = device_.size();
  device_ = std::move(device);
  DisplaySettings settings = display_settings();
  settings.scale = static_cast<float>(device_.scale);
  settings.idiom = device_.idiom;
  set_display_settings(settings);
  for (const UIWindow& window : Application::shared().windows()) {
    if (View::of(window).bounds().size == old_size) window.setFrame(Rect{{0, 0}, device_.size()});
  }
  traits_changed();
}

void Session::traits_changed() {
  touches_.cancel();
  for (const UIWindow& window : Application::shared().windows()) {
    tell_traits_changed(window);
    Window::of(window).add_damage(window.bounds());
  }
}

}  // namespace wispen::uikit
