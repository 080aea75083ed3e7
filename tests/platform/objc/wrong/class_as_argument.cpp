// EXPECT: cross the border
#include <string>

#include "platform/Foundation.hpp"
void wrong(const NSObject& o) { objc::send<"setValue:">(o, std::string("no string object")); }
