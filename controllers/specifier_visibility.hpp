// controllers/specifier_visibility.hpp: which rows a page shows.
#pragma once

#include "platform/Preferences.hpp"

/// The settings that the visibility rules ask. Shared by all pages, and nothing here ever assigns it: while
/// it is nil every Boolean reads NO and every value nil, which is how the rules run on a device.
extern "C" [[gnu::visibility("default")]] objc::Unowned<NSUserDefaults> prefs;

namespace wispen {

template <class Page>
struct SpecifierVisibility {
  /// Whether the row is to be shown. Five tests in a fixed order, none returning early; each can only hide.
  static bool isSpecifierVisible(const Page&, const PSSpecifier& specifier) {
    const NSUserDefaults settings = prefs.get();
    const NSDictionary properties = specifier.properties();
    const auto property = [&](const NSString& name) {
      return properties.template objectForKeyedSubscript<NSString>(name);
    };
    const auto keyIsOneOf = [&](const NSString& first, const NSString& second) {
      return property("key"_ns).isEqual(first) || property("key"_ns).isEqual(second);
    };
    bool visible = true;

    if (const NSString key = property("depends"_ns)) {
      if (!settings.boolForKey(key)) visible = false;
    }
    if (const NSString key = property("dependsNot"_ns)) {
      if (settings.boolForKey(key)) visible = false;
    }
    if (property("labelDependant"_ns)) {  // its presence counts, whatever it holds
      if (settings.boolForKey("hideLabels"_ns) && settings.boolForKey("dockHideLabels"_ns)) visible = false;
    }
    // The two modes differ on purpose: a missing "regularMode" counts as "none", a missing
    // "notificationMode" does not.
    if (!settings.valueForKey("regularMode"_ns) ||
        settings.valueForKey("regularMode"_ns).isEqual("none"_ns)) {
      if (keyIsOneOf("regularAutoColor"_ns, "regularColor"_ns)) visible = false;
    }
    if (settings.valueForKey("notificationMode"_ns).isEqual("none"_ns)) {
      if (keyIsOneOf("notificationAutoColor"_ns, "notificationColor"_ns)) visible = false;
    }
    return visible;
  }

  static void add_to(objc::Class<Page>& page) {
    page.template method<"isSpecifierVisible:", &isSpecifierVisible>();
  }
};

}  // namespace wispen
