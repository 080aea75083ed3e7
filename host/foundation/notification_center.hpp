// host/foundation/notification_center.hpp: CoreFoundation's Darwin centre over the kernel's notifications.
#pragma once

#include <deque>
#include <string>

namespace wispen {

/// The names that this process posted, in order, since they were cleared. Main thread.
const std::deque<std::string>& posted_notifications();
void clear_posted_notifications();

}  // namespace wispen
