// platform/objc/weak.hpp: references that do not keep their object alive and become nil when it dies.
#pragma once

#include "platform/objc/abi.hpp"
#include "platform/objc/handle.hpp"

namespace objc {

namespace abi {
// The phone's runtime has these; on the desktop the host provides them under the same names.
extern "C" {
id objc_initWeak(id* location, id object);
id objc_storeWeak(id* location, id object);
id objc_loadWeakRetained(id* location);
void objc_destroyWeak(id* location);
}
}  // namespace abi

/// For a parent, a delegate or a target.
template <class T>
class Weak {
 public:
  Weak() noexcept = default;
  Weak(const T& object) {
    abi::objc_initWeak(&slot_, borrow(object));
  }  // NOLINT(google-explicit-constructor)
  Weak(const Weak& other) : Weak(other.lock()) {}
  Weak& operator=(const Weak& other) { return *this = other.lock(); }
  Weak& operator=(const T& object) {
    abi::objc_storeWeak(&slot_, borrow(object));
    return *this;
  }
  ~Weak() { abi::objc_destroyWeak(&slot_); }

  /// The object, kept alive by the handle; nil when it has died.
  T lock() const { return adopt<T>(abi::objc_loadWeakRetained(&slot_)); }

 private:
  mutable abi::id slot_ = nullptr;
};

}  // namespace objc
