// tests/support/class_variables.hpp: a class's own instance variables, as the runtime lists them.
#pragma once

#include <cstdlib>
#include <string>
#include <vector>

#include "platform/objc/objc.hpp"

extern "C" {
void** class_copyIvarList(objc::abi::Class cls, unsigned* count);
const char* ivar_getName(void* variable);
}

namespace wispen::testing {

/// Their names, in the order of declaration; none for a class that there is not.
inline std::vector<std::string> variables_of(const char* cls) {
  unsigned count = 0;
  void** const list = ::class_copyIvarList(objc::ClassRef::named(cls).borrow(), &count);
  std::vector<std::string> names;
  for (unsigned i = 0; i < count; ++i) names.emplace_back(::ivar_getName(list[i]));
  std::free(list);
  return names;
}

}  // namespace wispen::testing
