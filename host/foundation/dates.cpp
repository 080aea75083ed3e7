// host/foundation/dates.cpp

#include "host/foundation/dates.hpp"

#include <string>

#include "host/plist/scalars.hpp"
#include "platform/Foundation.hpp"

namespace wispen {

namespace {

NSString description(const NSDate& date) {
  const double seconds = date.timeIntervalSinceReferenceDate();
  auto text = plist::format_date(seconds);
  if (!text) return NSString((plist::format_real(seconds) + " s since 2001-01-01 00:00:00 +0000").c_str());
  text->replace(text->find('T'), 1, " ");
  text->replace(text->find('Z'), 1, " +0000");
  return NSString(text->c_str());
}

NSString description_with_locale(const NSDate& date, const NSObject& /*locale*/) { return description(date); }

}  // namespace

void install_dates() {
  objc::Category<NSDate>()
      .method<"description", &description>()
      .method<"descriptionWithLocale:", &description_with_locale>();
}

}  // namespace wispen
