// EXPECT: as many arguments as it has colons
#include "platform/Foundation.hpp"
struct Wrong : objc::Authored<Wrong, NSObject> {
  static constexpr objc::FixedString kClass{"Wrong"};
  void method(int) {}
};
void wrong() { objc::Class<Wrong>().method<"method", &Wrong::method>(); }
