// platform/objc/instance_variable.hpp: the variables that objects of a class hold, and where they stand.
#pragma once

#include <cstddef>
#include <new>

#include "platform/objc/abi.hpp"
#include "platform/objc/fixed_string.hpp"

namespace objc {

/// A variable by name and type. A class declares it once, and its table and its accessor both take that
/// constant, so that a misspelt name does not compile:
///
///     static constexpr objc::InstanceVariable<"_titleLabel", UILabel> kTitleLabel{};
template <FixedString Name, class V>
struct InstanceVariable {};

namespace detail {

template <class T>
inline T* at(abi::id object, std::ptrdiff_t offset) {
  return std::launder(reinterpret_cast<T*>(reinterpret_cast<std::byte*>(object) + offset));
}

/// Ends the process where the class has no such variable: at offset zero stands the object's class.
inline std::ptrdiff_t offset_of(abi::Class cls, const char* name) {
  const abi::Ivar variable = abi::class_getInstanceVariable(cls, name);
  if (variable == nullptr) __builtin_trap();
  return abi::ivar_getOffset(variable);
}

}  // namespace detail

}  // namespace objc
