// EXPECT: authored as a function of an Allocated
#include "platform/Foundation.hpp"
struct Wrong : objc::Authored<Wrong, NSObject> {
  static constexpr objc::FixedString kClass{"Wrong"};
  Wrong init() { return *this; }
};
void wrong() { objc::Class<Wrong>().method<"init", &Wrong::init>(); }
