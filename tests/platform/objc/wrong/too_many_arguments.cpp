// EXPECT: as many arguments as it has colons
#include "platform/Foundation.hpp"
void wrong(const NSArray& a) { objc::send<"count", NSUInteger>(a, 1); }
