// tests/controllers/decided_page.hpp: a page of which a test says what is shown.
#pragma once

#include <functional>

#include "platform/Preferences.hpp"

namespace wispen::testing {

/// The bundle's class, as a handle that can be derived from.
class WispBaseController : public PSListController {
 public:
  static constexpr objc::FixedString kClass{"WispBaseController"};
  using PSListController::PSListController;
};

/// Shows of Root.plist what `is_visible` says. Defined once the bundle, and with it its base, is there.
class DecidedPage : public objc::Authored<DecidedPage, WispBaseController> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestDecidedPage"};
  using Authored::Authored;
  static inline std::function<bool(const PSSpecifier&)> is_visible;

  bool visible(const PSSpecifier& specifier) const { return is_visible(specifier); }
  // A page's bundle is the one that its class came from, which for this is the test program.
  NSBundle bundle_under_test() const {
    return NSBundle::bundleForClass(objc::class_for<WispBaseController>());
  }
  NSMutableArray specifiers() const {
    NSMutableArray& shown = specifiers_variable();
    if (!shown) shown = objc::send<"dynamicSpecifiersFromPlist:", NSMutableArray>(*this, "Root"_ns);
    return shown;
  }
  static void define() {
    objc::Class<DecidedPage>()
        .method<"isSpecifierVisible:", &DecidedPage::visible>()
        .method<"bundle", &DecidedPage::bundle_under_test>()
        .method<"specifiers", &DecidedPage::specifiers>()
        .register_class();
  }
};

}  // namespace wispen::testing
