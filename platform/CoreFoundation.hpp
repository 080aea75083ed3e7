// platform/CoreFoundation.hpp: the Darwin notification centre.
#pragma once

#include "platform/Foundation.hpp"

/// Opaque; the centre lives as long as the process.
struct __CFNotificationCenter;
using CFNotificationCenterRef = __CFNotificationCenter*;

namespace objc::abi {
extern "C" {
CFNotificationCenterRef CFNotificationCenterGetDarwinNotifyCenter();
void CFNotificationCenterPostNotification(CFNotificationCenterRef center, id name, const void* object,
                                          id user_info, unsigned char deliver_immediately);
}
}  // namespace objc::abi

using objc::abi::CFNotificationCenterGetDarwinNotifyCenter;

/// Posts a name to every process that listens for it. On the Darwin centre a notification carries
/// nothing else: object and user info are ignored there. Never blocks.
inline void CFNotificationCenterPostNotification(CFNotificationCenterRef center, const NSString& name,
                                                 const void* object, const NSDictionary& user_info,
                                                 bool deliver_immediately) {
  objc::abi::CFNotificationCenterPostNotification(center, objc::borrow(name), object, objc::borrow(user_info),
                                                  static_cast<unsigned char>(deliver_immediately));
}
