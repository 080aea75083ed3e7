// EXPECT: the method belongs to a class that this one does not derive from
#include "platform/Foundation.hpp"
struct Wrong : objc::Authored<Wrong, NSObject> {
  static constexpr objc::FixedString kClass{"Wrong"};
};
NSUInteger length(const NSString& text) { return text.length(); }
void wrong() { objc::Class<Wrong>().method<"length", &length>(); }
