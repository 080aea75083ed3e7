// host/uikit/values/counted.hpp: C objects that callers retain and release.
#pragma once

#include <atomic>
#include <memory>
#include <utility>

namespace wispen::uikit {

/// The count of a C object; it begins at 1, which is its maker's. From any thread.
class Counted {
 public:
  Counted() = default;
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

  template <class T>
  static T* retain(T* object) {
    if (object != nullptr) object->count_.fetch_add(1, std::memory_order_relaxed);
    return object;
  }
  template <class T>
  static void release(T* object) {
    if (object != nullptr && object->count_.fetch_sub(1, std::memory_order_acq_rel) == 1) {
      const std::unique_ptr<T> last(object);
    }
  }
  /// The caller owns the one reference.
  template <class T, class... A>
  static T* make(A&&... arguments) {
    return std::make_unique<T>(std::forward<A>(arguments)...).release();
  }

 private:
  std::atomic<long> count_{1};
};

/// A strong reference to one, null when default-constructed.
template <class T>
class CountedRef {
 public:
  CountedRef() = default;
  /// Takes over a reference that the caller owned.
  static CountedRef adopt(T* owned) {
    CountedRef reference;
    reference.object_ = owned;
    return reference;
  }
  CountedRef(const CountedRef& other) : object_(Counted::retain(other.object_)) {}
  CountedRef(CountedRef&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  CountedRef& operator=(CountedRef other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~CountedRef() { Counted::release(object_); }

  T* get() const { return object_; }

 private:
  T* object_ = nullptr;
};

}  // namespace wispen::uikit
