// host/uikit/view/screen.cpp: UIScreen and UIDevice.

#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/view/session.hpp"
#include "host/uikit/view/trait_collection.hpp"
#include "host/uikit/view/views.hpp"
#include "platform/UIKit/UIApplication.hpp"

namespace wispen::uikit {

namespace {

struct Screen {
  static UIScreen main(objc::ClassRef) {
    static const UIScreen screen = objc::make<UIScreen>();
    return screen;
  }
  static Rect bounds(const UIScreen&) {
    const Session* const session = Session::current();
    return {{0, 0}, session != nullptr ? session->device().size() : Size{}};
  }
  static Rect native_bounds(const UIScreen& self) {
    const Size size = bounds(self).size;
    const double pixels = display_settings().scale;
    return {{0, 0}, {size.width * pixels, size.height * pixels}};
  }
  static double scale(const UIScreen&) { return display_settings().scale; }
  static UITraitCollection traits(const UIScreen&) { return current_trait_collection(); }
};

struct Device {
  static UIDevice current(objc::ClassRef) {
    static const UIDevice device = objc::make<UIDevice>();
    return device;
  }
  static UIUserInterfaceIdiom idiom(const UIDevice&) {
    return display_settings().idiom == graphics::Idiom::Pad ? UIUserInterfaceIdiom::Pad
                                                            : UIUserInterfaceIdiom::Phone;
  }
  static NSString system_version(const UIDevice&) { return "16.0"_ns; }
  static NSString system_name(const UIDevice&) { return "iOS"_ns; }
  static NSString model(const UIDevice&) { return "Wispen desktop"_ns; }
};

}  // namespace

void define_screen() {
  objc::Class<UIScreen>()
      .class_method<"mainScreen", &Screen::main>()
      .method<"bounds", &Screen::bounds>()
      .method<"nativeBounds", &Screen::native_bounds>()
      .method<"scale", &Screen::scale>()
      .method<"nativeScale", &Screen::scale>()
      .method<"traitCollection", &Screen::traits>()
      .register_class();
  objc::Class<UIDevice>()
      .class_method<"currentDevice", &Device::current>()
      .method<"userInterfaceIdiom", &Device::idiom>()
      .method<"systemVersion", &Device::system_version>()
      .method<"systemName", &Device::system_name>()
      .method<"name", &Device::model>()
      .method<"model", &Device::model>()
      .register_class();
}

}  // namespace wispen::uikit
