// host/uikit/views/application.cpp: UIApplication, UIScreen and UIDevice: the things there is one of.

#include "host/uikit/views/application.hpp"

#include <algorithm>

#include "host/uikit/controllers/trait_collection.hpp"
#include "host/uikit/session.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/views/view_state.hpp"

namespace wispen::uikit {

struct ApplicationState {
  std::vector<objc::Weak<Window>> windows;
  objc::Weak<Window> key;
  objc::Weak<NSObject> delegate;
  std::vector<NSObject> opened_urls;
};

ApplicationState& Application::parts() const { return state<ApplicationState>(); }

Application Application::shared() {
  static const Application application = objc::make<Application>();
  return application;
}

std::vector<Window> Application::windows() const {
  std::vector<Window> alive;
  for (const auto& weak : parts().windows) {
    if (Window window = weak.lock()) alive.push_back(std::move(window));
  }
  return alive;
}

void Application::add_window(const Window& window) const {
  std::erase_if(parts().windows, [](const auto& weak) { return !weak.lock(); });
  parts().windows.emplace_back(window);
  sort_windows();
}

void Application::sort_windows() const {
  std::ranges::stable_sort(parts().windows, {}, [](const auto& weak) {
    const Window window = weak.lock();
    return window ? window.windowLevel() : 0;
  });
}

Window Application::key_window() const { return parts().key.lock(); }
void Application::set_key_window(const Window& window) const { parts().key = window; }

void Application::lay_out_windows() const {
  for (const Window& window : windows()) {
    if (!window.isHidden()) window.layoutIfNeeded();
  }
}

bool Application::sendAction(objc::Selector action, const NSObject& target, const NSObject& sender,
                             const NSObject& event) const {
  NSObject receiver = target;
  if (!receiver) {
    Responder responder = Responder::first();
    if (!responder) responder = objc::cast_or_nil<Responder>(sender);
    while (responder && !objc::responds_to(responder, action)) responder = responder.next();
    receiver = responder;
  }
  if (!objc::responds_to(receiver, action)) return false;
  // An action takes nothing, its sender, or its sender and the event; the selector's colons tell.
  objc::perform(receiver, action, sender, event);
  return true;
}

const std::vector<NSObject>& Application::opened_urls() const { return parts().opened_urls; }

struct ApplicationMethods {
  static Application sharedApplication(objc::ClassRef) { return Application::shared(); }
  static NSArray windows(const Application& self) {
    NSMutableArray all = NSMutableArray::array();
    for (const Window& window : self.windows()) all.addObject(window);
    return all;
  }
  static NSObject delegate(const Application& self) { return self.parts().delegate.lock(); }
  static void setDelegate(const Application& self, const NSObject& delegate) {
    self.parts().delegate = delegate;
  }
  static NSInteger applicationState(const Application&) { return 0; }  // active
  static NSInteger layoutDirection(const Application&) { return display_settings().right_to_left ? 1 : 0; }
  static bool canOpenURL(const Application&, const NSObject& url) { return url ? true : false; }
  static void open(const Application& self, const NSObject& url) {
    if (url) self.parts().opened_urls.push_back(url);
  }
  static bool openURL(const Application& self, const NSObject& url) {
    open(self, url);
    return url ? true : false;
  }
  static void openWithOptions(const Application& self, const NSObject& url, const NSObject&,
                              const objc::Block<void(bool)>& completion) {
    open(self, url);
    const bool opened = url ? true : false;
    if (completion) main_loop().post([completion, opened] { completion(opened); });
  }
};

void Application::define() {
  using M = ApplicationMethods;
  objc::Class<Application>()
      .state<ApplicationState>()
      .class_method<"sharedApplication", &M::sharedApplication>()
      .method<"windows", &M::windows>()
      .method<"keyWindow", &Application::key_window>()
      .method<"delegate", &M::delegate>()
      .method<"setDelegate:", &M::setDelegate>()
      .method<"applicationState", &M::applicationState>()
      .method<"userInterfaceLayoutDirection", &M::layoutDirection>()
      .method<"canOpenURL:", &M::canOpenURL>()
      .method<"openURL:", &M::openURL>()
      .method<"openURL:options:completionHandler:", &M::openWithOptions>()
      .method<"sendAction:to:from:forEvent:", &Application::sendAction>()
      .register_class();
}

Screen Screen::main() {
  static const Screen screen = objc::make<Screen>();
  return screen;
}

Rect Screen::bounds() const {
  const Session* const session = Session::current();
  return {{0, 0}, session != nullptr ? session->device().size() : Size{}};
}

namespace {

struct ScreenMethods {
  static Screen mainScreen(objc::ClassRef) { return Screen::main(); }
  static double scale(const Screen&) { return display_settings().scale; }
  static TraitCollection traitCollection(const Screen&) { return TraitCollection::current(); }
  static Rect nativeBounds(const Screen& self) {
    const Size size = self.bounds().size;
    const double pixels = display_settings().scale;
    return {{0, 0}, {size.width * pixels, size.height * pixels}};
  }
};

}  // namespace

void Screen::define() {
  using Methods = ScreenMethods;
  objc::Class<Screen>()
      .class_method<"mainScreen", &Methods::mainScreen>()
      .method<"bounds", &Screen::bounds>()
      .method<"nativeBounds", &Methods::nativeBounds>()
      .method<"scale", &Methods::scale>()
      .method<"nativeScale", &Methods::scale>()
      .method<"traitCollection", &Methods::traitCollection>()
      .register_class();
}

namespace {

struct DeviceMethods {
  static Device currentDevice(objc::ClassRef) {
    static const Device device = objc::make<Device>();
    return device;
  }
  static NSInteger idiom(const Device&) { return display_settings().idiom == graphics::Idiom::Pad ? 1 : 0; }
  static NSString systemVersion(const Device&) { return "16.0"_ns; }
  static NSString systemName(const Device&) { return "iOS"_ns; }
  static NSString model(const Device&) { return "Wispen desktop"_ns; }
};

}  // namespace

void Device::define() {
  using Methods = DeviceMethods;
  objc::Class<Device>()
      .class_method<"currentDevice", &Methods::currentDevice>()
      .method<"userInterfaceIdiom", &Methods::idiom>()
      .method<"systemVersion", &Methods::systemVersion>()
      .method<"systemName", &Methods::systemName>()
      .method<"name", &Methods::model>()
      .method<"model", &Methods::model>()
      .register_class();
}

}  // namespace wispen::uikit
