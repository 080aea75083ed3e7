// EXPECT: as many arguments as it has colons
#include "platform/Foundation.hpp"
void wrong(const NSMutableDictionary& d) { objc::send<"setObject:forKey:">(d, d); }
