// controllers/specifier_visibility.hpp: which rows a page shows.
#pragma once

#include "platform/Preferences.hpp"

/// The settings that the visibility rules ask. Shared by all pages, and nothing here ever assigns it: while
/// it is nil every Boolean reads NO and every value nil, which is how the rules run on a device.
extern "C" [[gnu::visibility("default")]] objc::Unowned<NSUserDefaults> prefs;

namespace wispen {

enum class HidingRule { Depends, DependsNot, BothLabelsHidden, RegularMode, NotificationMode };

/// For people: which "rule" hides a row, and the "remedy" that would show it. The setting is the one that the
/// row names for the first two rules.
NSDictionary in_words(HidingRule rule, const NSString& setting);

/// Calls `hide` for each rule that hides the row. Five tests in a fixed order, none returning early.
template <class Hide>
void ask_rules(const PSSpecifier& specifier, Hide hide) {
  const NSUserDefaults settings = prefs.get();
  const NSDictionary properties = specifier.properties();
  const auto property = [&](const NSString& name) {
    return properties.objectForKeyedSubscript<NSString>(name);
  };
  const auto keyIsOneOf = [&](const NSString& first, const NSString& second) {
    return property("key"_ns).isEqual(first) || property("key"_ns).isEqual(second);
  };

  if (const NSString key = property("depends"_ns)) {
    if (!settings.boolForKey(key)) hide(HidingRule::Depends, key);
  }
  if (const NSString key = property("dependsNot"_ns)) {
    if (settings.boolForKey(key)) hide(HidingRule::DependsNot, key);
  }
  if (property("labelDependant"_ns)) {  // its presence counts, whatever it holds
    if (settings.boolForKey("hideLabels"_ns) && settings.boolForKey("dockHideLabels"_ns)) {
      hide(HidingRule::BothLabelsHidden, NSString());
    }
  }
  // The two modes differ on purpose: a missing "regularMode" counts as "none", a missing "notificationMode"
  // does not.
  if (!settings.valueForKey("regularMode"_ns) || settings.valueForKey("regularMode"_ns).isEqual("none"_ns)) {
    if (keyIsOneOf("regularAutoColor"_ns, "regularColor"_ns)) hide(HidingRule::RegularMode, NSString());
  }
  if (settings.valueForKey("notificationMode"_ns).isEqual("none"_ns)) {
    if (keyIsOneOf("notificationAutoColor"_ns, "notificationColor"_ns)) {
      hide(HidingRule::NotificationMode, NSString());
    }
  }
}

template <class Page>
struct SpecifierVisibility {
  /// Whether the row is to be shown: each rule can only hide.
  static bool isSpecifierVisible(const Page&, const PSSpecifier& specifier) {
    bool visible = true;
    ask_rules(specifier, [&](HidingRule, const NSString&) { visible = false; });
    return visible;
  }

  /// The rules that hide the row, in words; empty for a row that is to be shown.
  static NSArray rulesHidingSpecifier(const Page&, const PSSpecifier& specifier) {
    const NSMutableArray rules = NSMutableArray::array();
    ask_rules(specifier,
              [&](HidingRule rule, const NSString& setting) { rules.addObject(in_words(rule, setting)); });
    return rules;
  }

  static void add_to(objc::Class<Page>& page) {
    page.template method<"isSpecifierVisible:", &isSpecifierVisible>()
        .template method<"rulesHidingSpecifier:", &rulesHidingSpecifier>();
  }
};

}  // namespace wispen
