// host/foundation/notification_center.hpp: CoreFoundation's Darwin centre over the kernel's notifications.
#pragma once

#include <deque>
#include <string>

namespace wispen {

/// The names that this process posted, in order, since they were cleared; each name is kept once, for the
/// life of the process. Main thread.
const std::deque<const std::string*>& posted_notifications();
void clear_posted_notifications();

}  // namespace wispen
