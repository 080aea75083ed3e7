// tests/support/raised.hpp: which of the platform's exceptions a call ends with.
#pragma once

#include <string>

#include "platform/Foundation.hpp"

namespace wispen::testing {

namespace detail {

inline std::string& last_raised() {
  static std::string name;
  return name;
}
inline objc::Original<void()>& original_raise() {
  static objc::Original<void()> original;
  return original;
}
inline void note_and_raise(const NSException& exception) {
  last_raised() = objc::send<"name", NSString>(exception).utf8();
  original_raise()(exception);
}

}  // namespace detail

/// The name of the exception that the work ends with; "" where it ends well. C++ can catch the platform's
/// exceptions but not look at them, so the name is taken when one is raised.
template <class Work>
std::string raised_by(const Work& work) {
  if (!detail::original_raise()) {
    objc::Category<NSException>().method<"raise", &detail::note_and_raise>(detail::original_raise());
  }
  detail::last_raised().clear();
  try {
    work();
  } catch (...) {
    return detail::last_raised().empty() ? "an exception of another kind" : detail::last_raised();
  }
  return "";
}

}  // namespace wispen::testing
