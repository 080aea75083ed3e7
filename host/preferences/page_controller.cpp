// host/preferences/page_controller.cpp: PSViewController: a page of Settings, whatever it shows.

#include "host/preferences/page_controller.hpp"

#include "platform/CoreFoundation.hpp"
#include "platform/Preferences.hpp"

namespace wispen::preferences {

namespace {

/// The phone's user keeps these below the home folder, which the host's current root stands for.
NSString domain_file(const PSSpecifier& specifier) {
  const auto domain = objc::cast_or_nil<NSString>(specifier.propertyForKey("defaults"_ns));
  if (!domain) return NSString();
  return ("/var/mobile/Library/Preferences/" + domain.utf8() + ".plist").c_str();
}

}  // namespace

/// The host's PSViewController: it knows the row that opened it, the page which that row is on, and the
/// default value store.
class PageController : public objc::Implementation<PageController, PSViewController> {
 public:
  /// The row's name becomes the page's title.
  void setSpecifier(const PSSpecifier& specifier) {
    specifier_ = specifier;
    if (specifier) self().setTitle(specifier.name());
  }
  void push_animated(const UIViewController& page) { self().pushController(page, true); }
  /// Opens another page on top of this one; without a navigation controller nothing happens.
  void push(const UIViewController& page, bool animated) {
    if (!page) return;
    const UINavigationController navigation = self().navigationController();
    if (objc::responds_to(page, objc::selector<"setParentController:">())) {
      const auto settings_page = page.as<PSViewController>();
      settings_page.setParentController(self());
      settings_page.setRootController(navigation);
    }
    if (navigation) navigation.pushViewController(page, animated);
  }
  /// The default store, for pages that bring none: the row's "key" in the file of its "defaults" below the
  /// device's own Library/Preferences, else its "default".
  NSObject readPreferenceValue(const PSSpecifier& specifier) {
    const NSObject key = specifier.propertyForKey("key"_ns);
    NSObject value;
    if (const NSString file = domain_file(specifier)) {
      value = NSDictionary::dictionaryWithContentsOfFile(file).objectForKey(key);
    }
    return value ? value : specifier.propertyForKey("default"_ns);
  }
  void setPreferenceValue(const NSObject& value, const PSSpecifier& specifier) {
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
  NSObject parent_page() { return parent_.lock(); }
  void set_parent_page(const NSObject& page) { parent_ = page; }
  NSObject root() { return root_.lock(); }
  void set_root(const NSObject& root) { root_ = root; }

 private:
  friend void define_page_controller();

  PSSpecifier specifier_;
  objc::Weak<NSObject> parent_;
  objc::Weak<NSObject> root_;  // the navigation controller that shows the pages
};

void define_page_controller() {
  objc::Class<PSViewController>::implemented_by<PageController>()
      .getter<"specifier", &PageController::specifier_>()
      .method<"setSpecifier:", &PageController::setSpecifier>()
      .method<"parentController", &PageController::parent_page>()
      .method<"setParentController:", &PageController::set_parent_page>()
      .method<"rootController", &PageController::root>()
      .method<"setRootController:", &PageController::set_root>()
      .method<"pushController:", &PageController::push_animated>()
      .method<"pushController:animate:", &PageController::push>()
      .method<"readPreferenceValue:", &PageController::readPreferenceValue>()
      .method<"setPreferenceValue:specifier:", &PageController::setPreferenceValue>()
      .register_class();
}

}  // namespace wispen::preferences
