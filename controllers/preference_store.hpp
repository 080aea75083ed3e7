// controllers/preference_store.hpp: the values of the pages, in one property-list file.
//
// Each page controller answers the two messages with a copy of its own: the pages share no base class
// to inherit them from, and one template keeps the copies alike.
#pragma once

#include "platform/CoreFoundation.hpp"
#include "platform/Preferences.hpp"

namespace wispen {

/// The path of the domain file on this installation. Resolved anew at every call, as the file is read
/// anew: nothing about the domain is cached.
NSString preference_domain_path();

template <class Page>
struct PreferenceStore {
  /// The stored value of the row's "key", else the row's "default", else nil; as it was stored, whatever
  /// its type.
  static NSObject readPreferenceValue(const Page&, const PSSpecifier& specifier) {
    const NSDictionary domain = NSDictionary::dictionaryWithContentsOfFile(preference_domain_path());
    const NSDictionary properties = specifier.properties();
    NSObject value = domain.objectForKey(properties.objectForKey("key"_ns));
    if (!value) value = properties.objectForKey("default"_ns);
    return value;
  }

  /// Stores the value under the row's "key", keeps everything else in the file, and posts the row's
  /// notification. A file that cannot be read counts as empty; a failed write is not reported. A nil
  /// value or key raises the dictionary's exception.
  static void setPreferenceValue(const Page&, const NSObject& value, const PSSpecifier& specifier) {
    NSMutableDictionary domain = NSMutableDictionary::dictionaryWithContentsOfFile(preference_domain_path());
    if (!domain) domain = NSMutableDictionary::dictionary();
    domain.setObject(value, specifier.properties().objectForKeyedSubscript("key"_ns));
    domain.writeToFile(preference_domain_path(), true);

    const NSString notification =
        specifier.properties().template objectForKeyedSubscript<NSString>("PostNotification"_ns);
    if (notification) {
      CFNotificationCenterPostNotification(CFNotificationCenterGetDarwinNotifyCenter(), notification, nullptr,
                                           NSDictionary(), true);
    }
  }

  static void add_to(objc::Class<Page>& page) {
    page.template method<"readPreferenceValue:", &readPreferenceValue>()
        .template method<"setPreferenceValue:specifier:", &setPreferenceValue>();
  }
};

}  // namespace wispen
