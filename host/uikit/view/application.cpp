// host/uikit/view/application.cpp: UIApplication: what all windows have in common.

#include "host/uikit/view/application.hpp"

#include <algorithm>

#include "host/foundation/arrays.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/view/session.hpp"
#include "host/uikit/view/views.hpp"
#include "host/uikit/view/window.hpp"

namespace wispen::uikit {

Application& Application::shared() {
  static const UIApplication application = objc::make<UIApplication>();
  return of(application);
}

std::vector<UIWindow> Application::windows() const {
  std::vector<UIWindow> alive;
  for (const auto& weak : windows_) {
    if (UIWindow window = weak.lock()) alive.push_back(std::move(window));
  }
  return alive;
}
NSArray Application::windows_array() const { return array_of(windows()); }

void Application::add_window(const UIWindow& window) {
  std::erase_if(windows_, [](const auto& weak) { return !weak.lock(); });
  windows_.emplace_back(window);
  sort_windows();
}

void Application::sort_windows() {
  std::ranges::stable_sort(windows_, {}, [](const auto& weak) {
    const UIWindow window = weak.lock();
    return window ? Window::of(window).windowLevel() : 0;
  });
}

void Application::lay_out_windows() const {
  for (const UIWindow& window : windows()) {
    if (!window.isHidden()) window.layoutIfNeeded();
  }
}

bool Application::sendAction(objc::Selector action, const NSObject& target, const NSObject& sender,
                             const NSObject& event) const {
  NSObject receiver = target;
  if (!receiver) {
    UIResponder responder = first_responder();
    if (!responder) responder = objc::cast_or_nil<UIResponder>(sender);
    while (responder && !objc::responds_to(responder, action)) responder = responder.nextResponder();
    receiver = responder;
  }
  if (!objc::responds_to(receiver, action)) return false;
  // An action takes nothing, its sender, or its sender and the event; the selector's colons tell.
  objc::perform(receiver, action, sender, event);
  return true;
}

UIUserInterfaceLayoutDirection Application::layout_direction() const {
  return display_settings().right_to_left ? UIUserInterfaceLayoutDirection::RightToLeft
                                          : UIUserInterfaceLayoutDirection::LeftToRight;
}

bool Application::openURL(const NSObject& url) {
  if (!url) return false;
  opened_urls_.push_back(url);
  return true;
}

void Application::open_with_options(const NSObject& url, const NSObject&,
                                    const objc::Block<void(bool)>& completion) {
  const bool opened = openURL(url);
  if (completion) main_loop().post([completion, opened] { completion(opened); });
}

namespace {

UIApplication shared_application(objc::ClassRef) { return Application::shared().self(); }
NSInteger active(const UIApplication&) { return 0; }
bool can_open_url(const UIApplication&, const NSObject& url) { return url ? true : false; }

}  // namespace

void define_application() {
  objc::Class<UIApplication>::implemented_by<Application>()
      .class_method<"sharedApplication", &shared_application>()
      .method<"windows", &Application::windows_array>()
      .method<"keyWindow", &Application::key_window>()
      .method<"delegate", &Application::delegate>()
      .method<"setDelegate:", &Application::setDelegate>()
      .method<"applicationState", &active>()
      .method<"userInterfaceLayoutDirection", &Application::layout_direction>()
      .method<"canOpenURL:", &can_open_url>()
      .method<"openURL:", &Application::openURL>()
      .method<"openURL:options:completionHandler:", &Application::open_with_options>()
      .method<"sendAction:to:from:forEvent:", &Application::sendAction>()
      .register_class();
}

}  // namespace wispen::uikit
