// platform/objc/authored.hpp: a handle that is also a class of the runtime, its state in named instance
// variables.
#pragma once

#include <cstddef>

#include "platform/objc/abi.hpp"
#include "platform/objc/fixed_string.hpp"
#include "platform/objc/handle.hpp"
#include "platform/objc/instance_variable.hpp"
#include "platform/objc/marshal.hpp"
#include "platform/objc/send.hpp"

namespace objc {

namespace detail {

// One per class: a runtime may refuse a variable that a base has under the same name.
template <class T>
inline constexpr auto kStateName = concatenate(FixedString{"_state_"}, T::kClass);

}  // namespace detail

/// An instance variable that class T declares, inside one of its objects, which is not nil.
template <class T, FixedString Name, class V>
V& variable_of(const T& object, InstanceVariable<Name, V>) {
  static const std::ptrdiff_t offset = detail::offset_of(class_for<T>().borrow(), Name.value);
  return *detail::at<V>(borrow(object), offset);
}

/// The base of a C++ class that is also a registered class of the runtime.
template <class Self, class BaseHandle>
class Authored : public BaseHandle {
 public:
  using Base = BaseHandle;
  using BaseHandle::BaseHandle;
  Authored() = default;

  static Allocated<Self> alloc() { return allocate<Self>(); }

 protected:
  /// The method of the registered base; known statically, so a subclass's instances end up here too.
  template <FixedString Sel, class R = void, class... Args>
  R super(const Args&... arguments) const {
    return send_super<Sel, R>(*this, class_for<BaseHandle>(), arguments...);
  }

  /// The instance variable, as a handle (or number) inside the object. Self is not nil.
  template <FixedString Name, class V>
  V& variable(InstanceVariable<Name, V>) const {
    return variable_of(static_cast<const Self&>(*this), InstanceVariable<Name, V>{});
  }

  /// The C++ state of the object (Class::state), made at the first use and destroyed with the object.
  template <class State>
  State& state() const {
    static const std::ptrdiff_t offset =
        detail::offset_of(class_for<Self>().borrow(), detail::kStateName<Self>.data());
    State*& slot = *detail::at<State*>(borrow(*this), offset);
    if (slot == nullptr) slot = new State();
    return *slot;
  }
};

}  // namespace objc
