// platform/objc/fixed_string.hpp: a string literal that can be a template argument.
#pragma once

#include <cstddef>

namespace objc {

/// The literal's characters and its terminating zero.
template <std::size_t N>
struct FixedString {
  char value[N]{};

  consteval FixedString(const char (&literal)[N]) {  // NOLINT(google-explicit-constructor)
    for (std::size_t i = 0; i < N; ++i) value[i] = literal[i];
  }

  static constexpr std::size_t size() { return N - 1; }

  constexpr std::size_t count(char wanted) const {
    std::size_t found = 0;
    for (std::size_t i = 0; i + 1 < N; ++i) found += value[i] == wanted ? 1U : 0U;
    return found;
  }
};

namespace detail {

/// Whether a selector belongs to a method family by the language's naming rule: leading underscores
/// are skipped, and the family's word must not run on in lower case (`copy:` belongs, `copying` does not).
template <std::size_t N, std::size_t M>
constexpr bool belongs_to_family(const FixedString<N>& selector, const char (&family)[M]) {
  std::size_t at = 0;
  while (selector.value[at] == '_') ++at;
  for (std::size_t i = 0; i + 1 < M; ++i, ++at) {
    if (selector.value[at] != family[i]) return false;
  }
  const char next = selector.value[at];
  return next < 'a' || next > 'z';
}

}  // namespace detail

/// Whether the method gives its caller a reference of its own (alloc, new, copy, mutableCopy, init).
template <std::size_t N>
constexpr bool returns_owned_reference(const FixedString<N>& selector) {
  return detail::belongs_to_family(selector, "alloc") || detail::belongs_to_family(selector, "new") ||
         detail::belongs_to_family(selector, "copy") || detail::belongs_to_family(selector, "mutableCopy") ||
         detail::belongs_to_family(selector, "init");
}

/// Whether the method consumes the reference of its receiver.
template <std::size_t N>
constexpr bool is_initializer(const FixedString<N>& selector) {
  return detail::belongs_to_family(selector, "init");
}

}  // namespace objc
