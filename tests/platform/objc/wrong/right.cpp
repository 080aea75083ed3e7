// EXPECT-OK
#include "platform/Foundation.hpp"
void right(const NSMutableDictionary& d) { objc::send<"setObject:forKey:">(d, d, "key"_ns); }
