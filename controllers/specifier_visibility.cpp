// controllers/specifier_visibility.cpp: the settings that the rules ask, and the rules in words.

#include "controllers/specifier_visibility.hpp"

#include <string>

constinit objc::Unowned<NSUserDefaults> prefs;

namespace wispen {

NSDictionary in_words(HidingRule rule, const NSString& setting) {
  // Whatever a list holds there: it may not be text.
  const std::string named = "\"" + objc::cast_or_nil<NSString>(setting).utf8() + "\"";
  std::string hides;
  std::string shows;
  switch (rule) {
    case HidingRule::Depends:
      hides = R"("depends": the setting )" + named + " is off";
      shows = named + " on";
      break;
    case HidingRule::DependsNot:
      hides = R"("dependsNot": the setting )" + named + " is on";
      shows = named + " off";
      break;
    case HidingRule::BothLabelsHidden:
      hides = R"("labelDependant": the settings "hideLabels" and "dockHideLabels" are both on)";
      shows = R"("hideLabels" or "dockHideLabels" off)";
      break;
    case HidingRule::RegularMode:
      hides = R"(the setting "regularMode" is missing or "none")";
      shows = R"(another "regularMode" than "none")";
      break;
    case HidingRule::NotificationMode:
      hides = R"(the setting "notificationMode" is "none")";
      shows = R"(another "notificationMode" than "none")";
      break;
  }
  if (!prefs.get()) {
    hides += " (the rules have no settings to ask: all read as off and missing)";
    shows += ", in settings that the rules are given to ask (the variable prefs)";
  }
  const NSMutableDictionary words = NSMutableDictionary::dictionary();
  words.setObject(NSString(hides.c_str()), "rule"_ns);
  words.setObject(NSString(shows.c_str()), "remedy"_ns);
  return words;
}

}  // namespace wispen
