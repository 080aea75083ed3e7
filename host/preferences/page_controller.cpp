// host/preferences/page_controller.cpp: PSViewController: a page of Settings, whatever it shows.

#include "host/preferences/page_controller.hpp"

#include "host/uikit/controllers/navigation_controller.hpp"
#include "platform/CoreFoundation.hpp"

namespace wispen::preferences {

namespace {

/// The phone's user keeps these below the home folder, which the host's current root stands for.
NSString domain_file(const PSSpecifier& specifier) {
  const auto domain = objc::cast_or_nil<NSString>(specifier.propertyForKey("defaults"_ns));
  if (!domain) return NSString();
  return ("/var/mobile/Library/Preferences/" + domain.utf8() + ".plist").c_str();
}

}  // namespace

void PageController::setSpecifier(const PSSpecifier& specifier) const {
  parts().specifier = specifier;
  if (specifier) objc::send<"setTitle:">(*this, specifier.name());
}

void PageController::push(const uikit::ViewController& page, bool animated) const {
  if (!page) return;
  const uikit::NavigationController navigation = navigationController();
  if (objc::responds_to(page, objc::selector<"setParentController:">())) {
    objc::send<"setParentController:">(page, *this);
    objc::send<"setRootController:">(page, navigation);
  }
  if (navigation) objc::send<"pushViewController:animated:">(navigation, page, animated);
}

NSObject PageController::readPreferenceValue(const PSSpecifier& specifier) const {
  const NSObject key = specifier.propertyForKey("key"_ns);
  NSObject value;
  if (const NSString file = domain_file(specifier)) {
    value = NSDictionary::dictionaryWithContentsOfFile(file).objectForKey(key);
  }
  return value ? value : specifier.propertyForKey("default"_ns);
}

void PageController::setPreferenceValue(const NSObject& value, const PSSpecifier& specifier) const {
  const NSObject key = specifier.propertyForKey("key"_ns);
  const NSString file = domain_file(specifier);
  if (!key || !file) return;  // documented: a row without both stores nothing
  NSMutableDictionary domain = NSMutableDictionary::dictionaryWithContentsOfFile(file);
  if (!domain) domain = NSMutableDictionary::dictionary();
  if (value) {
    domain.setObject(value, key);
  } else {
    domain.removeObjectForKey(key);
  }
  domain.writeToFile(file, true);
  if (const auto name = objc::cast_or_nil<NSString>(specifier.propertyForKey("PostNotification"_ns))) {
    CFNotificationCenterPostNotification(CFNotificationCenterGetDarwinNotifyCenter(), name, nullptr,
                                         NSDictionary(), true);
  }
}

namespace {

void push_animated(const PageController& self, const uikit::ViewController& page) { self.push(page, true); }

}  // namespace

void PageController::define() {
  objc::Class<PageController>()
      .state<PageControllerState>()
      .method<"specifier", &PageController::specifier>()
      .method<"setSpecifier:", &PageController::setSpecifier>()
      .method<"parentController", &PageController::parent_page>()
      .method<"setParentController:", &PageController::set_parent_page>()
      .method<"rootController", &PageController::root>()
      .method<"setRootController:", &PageController::set_root>()
      .method<"pushController:", &push_animated>()
      .method<"pushController:animate:", &PageController::push>()
      .method<"readPreferenceValue:", &PageController::readPreferenceValue>()
      .method<"setPreferenceValue:specifier:", &PageController::setPreferenceValue>()
      .register_class();
}

}  // namespace wispen::preferences
