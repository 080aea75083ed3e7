// EXPECT: kTitel
#include "platform/Foundation.hpp"
struct Wrong : objc::Authored<Wrong, NSObject> {
  static constexpr objc::FixedString kClass{"Wrong"};
  static constexpr objc::InstanceVariable<"_title", NSString> kTitle{};
  NSString& title() const { return variable(kTitel); }
};
