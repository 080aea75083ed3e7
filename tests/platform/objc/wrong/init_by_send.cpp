// EXPECT: initialisers consume their receiver
#include "platform/Foundation.hpp"
void wrong(const NSObject& o) { objc::send<"init", NSObject>(o); }
