// EXPECT: give autoreleased results
#include "platform/Foundation.hpp"
struct Wrong : objc::Authored<Wrong, NSObject> {
  static constexpr objc::FixedString kClass{"Wrong"};
  Wrong copy() { return *this; }
};
void wrong() { objc::Class<Wrong>().method<"copy", &Wrong::copy>(); }
