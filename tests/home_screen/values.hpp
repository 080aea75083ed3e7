// tests/home_screen/values.hpp: preference files written in a line.
#pragma once

#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "home_screen/settings.hpp"

namespace wispen::testing {

using Value = std::variant<bool, double, const char*>;
using Values = std::vector<std::pair<const char*, Value>>;

inline NSObject object_of(const Value& value) {
  if (const bool* flag = std::get_if<bool>(&value)) return NSNumber::numberWithBool(*flag);
  if (const double* number = std::get_if<double>(&value)) return NSNumber::numberWithDouble(*number);
  return NSString(std::get<const char*>(value));
}

inline NSMutableDictionary dictionary(const Values& values) {
  const auto all = NSMutableDictionary::dictionary();
  for (const auto& [key, value] : values) all.setObject(object_of(value), NSString(key));
  return all;
}

inline home_screen::Settings settings(const Values& values) {
  return home_screen::read_settings(dictionary(values));
}

}  // namespace wispen::testing
