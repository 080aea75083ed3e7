// platform/objc/handle.hpp: strong references to objects, and every way in and out of them.
#pragma once

#include <concepts>
#include <cstddef>
#include <new>
#include <type_traits>
#include <utility>

#include "platform/objc/abi.hpp"
#include "platform/objc/lifetime.hpp"

namespace objc {

/// A strong reference with the size of a pointer: copied it retains, destroyed it releases,
/// default-constructed it is nil. Every typed handle derives from it and adds no member. Calls on nil
/// do nothing and give zero. `==` compares identity; `isEqual` of the typed handles asks the object.
class Object {
 public:
  Object() noexcept = default;
  Object(std::nullptr_t) noexcept {}  // NOLINT(google-explicit-constructor)
  Object(const Object& other) : raw_(other.raw_ != nullptr ? abi::retain(other.raw_) : nullptr) {}
  Object(Object&& other) noexcept : raw_(std::exchange(other.raw_, nullptr)) {}
  ~Object() {
    if (raw_ != nullptr) abi::release(raw_);
  }

  Object& operator=(const Object& other) {
    Object copy(other);
    swap(copy);
    return *this;  // the old value goes last: its release can run anyone's code, this handle's reader too
  }
  Object& operator=(Object&& other) noexcept {
    Object taken(std::move(other));
    swap(taken);
    return *this;
  }

  explicit operator bool() const noexcept { return raw_ != nullptr; }
  friend bool operator==(const Object& a, const Object& b) noexcept { return a.raw_ == b.raw_; }

  void swap(Object& other) noexcept { std::swap(raw_, other.raw_); }

  /// The same object under another type; the caller knows that it is one, and a debug build checks it.
  template <class T>
  T as() const;

 private:
  friend abi::id borrow(const Object& handle) noexcept;
  friend abi::id leak(Object&& handle) noexcept;
  friend void adopt_into(Object& handle, abi::id owned) noexcept;

  abi::id raw_ = nullptr;
};

template <class T>
concept Handle = std::derived_from<std::remove_cvref_t<T>, Object> &&
                 sizeof(std::remove_cvref_t<T>) == sizeof(void*);

/// Out, +0: the object is valid as long as the handle.
inline abi::id borrow(const Object& handle) noexcept { return handle.raw_; }
/// Out, +1: the caller owes a release.
inline abi::id leak(Object&& handle) noexcept { return std::exchange(handle.raw_, nullptr); }
inline void adopt_into(Object& handle, abi::id owned) noexcept { handle.raw_ = owned; }

/// In, +1: takes over a reference that the caller owned.
template <Handle T>
inline T adopt(abi::id owned) {
  T handle;
  adopt_into(handle, owned);
  return handle;
}

/// In, +0: adds a reference.
template <Handle T>
inline T retain(abi::id object) {
  return adopt<T>(object != nullptr ? abi::retain(object) : nullptr);
}

/// A handle that does not own: for `self` and the arguments of the method that runs, which its caller
/// keeps alive. Never stored.
template <class T>
class Borrowed {
 public:
  explicit Borrowed(abi::id object) noexcept { adopt_into(*new (storage_) T(), object); }
  Borrowed(const Borrowed&) = delete;
  Borrowed& operator=(const Borrowed&) = delete;

  T& operator*() noexcept { return *std::launder(reinterpret_cast<T*>(storage_)); }

 private:
  alignas(T) std::byte storage_[sizeof(T)];  // no destructor runs, so no release
};

/// A reference that keeps nothing alive and has no destructor: for process-wide variables, which are set,
/// if ever, by code that owns the object.
template <class T>
class Unowned {
 public:
  constexpr Unowned() noexcept = default;
  explicit Unowned(const T& object) noexcept : raw_(borrow(object)) {}

  T get() const { return retain<T>(raw_); }
  /// Without touching the object, so that it may be dying.
  bool refers_to(const T& object) const { return raw_ == borrow(object); }
  explicit operator bool() const { return raw_ != nullptr; }

 private:
  abi::id raw_ = nullptr;
};

}  // namespace objc
