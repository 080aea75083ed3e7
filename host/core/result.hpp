// host/core/result.hpp: a value, or one sentence that says why there is none.
#pragma once

#include <string>
#include <utility>
#include <variant>

namespace wispen {

/// What went wrong, as one sentence for a person; no trailing full stop, no line break.
struct Error {
  std::string message;
};

/// Either a T or an Error. Our own code throws nothing; what can fail returns one of these.
template <class T>
class [[nodiscard]] Result {
 public:
  Result(T value) : state_(std::in_place_index<0>, std::move(value)) {}
  Result(Error error) : state_(std::in_place_index<1>, std::move(error)) {}

  bool ok() const { return state_.index() == 0; }
  explicit operator bool() const { return ok(); }

  /// Only where ok().
  const T& operator*() const& { return *std::get_if<0>(&state_); }
  T& operator*() & { return *std::get_if<0>(&state_); }
  T&& operator*() && { return std::move(*std::get_if<0>(&state_)); }
  const T* operator->() const { return std::get_if<0>(&state_); }
  T* operator->() { return std::get_if<0>(&state_); }

  /// Only where not ok().
  const Error& error() const { return *std::get_if<1>(&state_); }

 private:
  std::variant<T, Error> state_;
};

/// Done, or one sentence that says why not.
template <>
class [[nodiscard]] Result<void> {
 public:
  Result() = default;
  Result(Error error) : error_(std::move(error)), failed_(true) {}

  bool ok() const { return !failed_; }
  explicit operator bool() const { return ok(); }
  const Error& error() const { return error_; }

 private:
  Error error_;
  bool failed_ = false;
};

}  // namespace wispen
