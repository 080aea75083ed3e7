// host/foundation/notification_center.cpp: CoreFoundation's Darwin centre over the kernel's notifications.

#include "host/foundation/notification_center.hpp"

#include <unordered_set>

#include "host/core/current_root.hpp"
#include "host/core/notification_poster.hpp"
#include "host/foundation/problems.hpp"
#include "platform/CoreFoundation.hpp"

struct __CFNotificationCenter {};

namespace {

// Enough to look back on any test or session; a page that posts for ever must not fill the memory.
constexpr std::size_t kMostRemembered = 1'000'000;

__CFNotificationCenter darwin_center;

std::deque<const std::string*>& posted() {
  static auto* const names = new std::deque<const std::string*>();
  return *names;
}

const std::string& kept(const std::string& name) {
  static auto* const names = new std::unordered_set<std::string>();
  return *names->insert(name).first;
}

}  // namespace

namespace wispen {

const std::deque<const std::string*>& posted_notifications() { return posted(); }
void clear_posted_notifications() { posted().clear(); }

}  // namespace wispen

extern "C" {

[[gnu::visibility("default")]] CFNotificationCenterRef CFNotificationCenterGetDarwinNotifyCenter() {
  return &darwin_center;
}

// The centre carries names only: the object and the user info are not sent, and delivery is always immediate.
[[gnu::visibility("default")]] void CFNotificationCenterPostNotification(CFNotificationCenterRef center,
                                                                         objc::abi::id name, const void*,
                                                                         objc::abi::id, unsigned char) {
  const auto text = objc::retain<NSString>(name);
  if (center != &darwin_center || !text || !wispen::current_root()) return;
  const std::string posted_name = text.utf8();
  if (posted().size() < kMostRemembered) posted().push_back(&kept(posted_name));
  if (const auto sent = wispen::post_notification(posted_name); !sent) {
    wispen::report_problem("the notification " + posted_name + " was not posted: " + sent.error().message);
  }
}

}  // extern "C"
