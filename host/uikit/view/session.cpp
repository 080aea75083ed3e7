// host/uikit/view/session.cpp: what all views of one running host share.

#include "host/uikit/view/session.hpp"

#include <utility>

#include "host/foundation/bundle.hpp"
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

Session::Session(MainLoop& loop, Traits traits) : loop_(loop), animations_(loop) {
  current_session = this;
  AnimationEngine::set_current(&animations_);
  set_traits(std::move(traits));
}

Session::~Session() {
  touches_.cancel();
  AnimationEngine::set_current(nullptr);
  current_session = nullptr;
}

Session* Session::current() { return current_session; }

MainLoop& main_loop() { return current_session->loop(); }

void Session::set_traits(Traits traits) {
  traits_ = std::move(traits);
  set_preferred_languages(traits_.languages);
  set_display_settings(traits_.display_settings());
  set_device(traits_.device_model());
}

void Session::set_device(DeviceModel device) {
  const Size old_size = device_.size();
  device_ = std::move(device);
  for (const UIWindow& window : Application::shared().windows()) {
    if (View::of(window).bounds().size == old_size) window.setFrame(Rect{{0, 0}, device_.size()});
  }
  touches_.cancel();
  for (const UIWindow& window : Application::shared().windows()) {
    tell_traits_changed(window);
    Window::of(window).add_damage(window.bounds());
  }
}

}  // namespace wispen::uikit
