// tests/support/kept.hpp: properties that keep what they are given.
#pragma once

#include <gtest/gtest.h>

#include "platform/UIKit.hpp"

namespace wispen::testing {

/// The getter gives what the setter took, and gave something else before.
template <objc::FixedString Getter, objc::FixedString Setter, class Value, class Object>
void expect_kept(const Object& object, const Value& value) {
  EXPECT_FALSE((objc::send<Getter, Value>(object) == value)) << Getter.value << " before";
  objc::send<Setter>(object, value);
  EXPECT_TRUE((objc::send<Getter, Value>(object) == value)) << Getter.value;
}

}  // namespace wispen::testing
