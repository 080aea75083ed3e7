// platform/objc/method_shape.hpp: what a method's type encoding says, for selectors that come from files.
#pragma once

#include <cstddef>
#include <cstring>
#include <optional>

#include "platform/objc/abi.hpp"
#include "platform/objc/marshal.hpp"
#include "platform/objc/selector.hpp"

namespace objc {

/// A method's result and its arguments besides the receiver and the selector.
struct MethodShape {
  char result = 'v';               ///< the encoding's letter: '@' an object, 'v' nothing
  std::size_t arguments = 0;       ///< how many there are
  bool takes_only_objects = true;  ///< whether each of them is an object
};

namespace detail {

/// The type at the front of an encoding without its qualifiers ("const", "in", "oneway").
inline const char* without_qualifiers(const char* type) {
  while (*type != '\0' && std::strchr("rnNoORVA", *type) != nullptr) ++type;
  return type;
}

/// What follows one type and its offset in the frame.
inline const char* after_type(const char* type) {
  type = without_qualifiers(type);
  while (*type == '^') type = without_qualifiers(type + 1);
  int depth = 0;
  do {
    const char letter = *type;
    if (letter == '\0') return type;
    ++type;
    if (letter == '{' || letter == '(' || letter == '[') ++depth;
    if (letter == '}' || letter == ')' || letter == ']') --depth;
    if (letter == '@' && *type == '?') ++type;
    if (*type == '"') {
      const char* const end = std::strchr(type + 1, '"');
      type = end != nullptr ? end + 1 : type + std::strlen(type);
    }
  } while (depth > 0);
  while ((*type >= '0' && *type <= '9') || *type == '+' || *type == '-') ++type;
  return type;
}

}  // namespace detail

/// The shape of a type encoding ("v@:@", with or without offsets).
inline MethodShape shape_of_encoding(const char* encoding) {
  MethodShape shape;
  shape.result = *detail::without_qualifiers(encoding);
  const char* rest = detail::after_type(detail::after_type(detail::after_type(encoding)));
  for (; *rest != '\0'; rest = detail::after_type(rest)) {
    const char* const type = detail::without_qualifiers(rest);
    shape.takes_only_objects = shape.takes_only_objects && type[0] == '@' && type[1] != '?';
    ++shape.arguments;
  }
  return shape;
}

/// The shape of the method that instances answer the selector with; nothing where there is none.
inline std::optional<MethodShape> shape_of_method(ClassRef cls, Selector selector) {
  if (!cls || !selector) return std::nullopt;
  const abi::Method method = abi::class_getInstanceMethod(cls.borrow(), selector.borrow());
  const char* const encoding = method != nullptr ? abi::method_getTypeEncoding(method) : nullptr;
  if (encoding == nullptr) return std::nullopt;
  return shape_of_encoding(encoding);
}

}  // namespace objc
