// platform/objc/implementation.hpp: a class of the runtime whose state and methods are a C++ class inside the
// object.
//
//   class Switch : public objc::Implementation<Switch, UISwitch> {
//    public:
//     bool isOn() const { return on_; }
//     void setFrame(const CGRect& frame) { super<"setFrame:">(fixed(frame)); }
//    private:
//     bool on_ = false;
//   };
//
//   objc::Class<UISwitch>::implemented_by<Switch>().method<"isOn", &Switch::isOn>()...register_class();
//
// Everybody else speaks the handle, UISwitch, by messages. tests/platform/objc/implementation_test.cpp holds
// this.
#pragma once

#include <cstddef>
#include <new>
#include <utility>

#include "platform/objc/abi.hpp"
#include "platform/objc/handle.hpp"
#include "platform/objc/instance_variable.hpp"
#include "platform/objc/marshal.hpp"
#include "platform/objc/send.hpp"

namespace objc {

/// The base of a C++ class `Self` that implements the class which `HandleType` stands for. It is made when
/// the object is first asked for it, and destroyed first when the object dies, while the object still answers
/// messages.
template <class Self, class HandleType>
class Implementation {
 public:
  using Receiver = HandleType;

  Implementation(const Implementation&) = delete;
  Implementation& operator=(const Implementation&) = delete;

  /// What is inside an object, which is not nil and of this class.
  static Self& of(const HandleType& object) { return in(borrow(object)); }
  static Self& in(abi::id object) {
    Slot& slot = *detail::at<Slot>(object, offset_);
    if (!slot.made) [[unlikely]] {
      slot.made = true;  // first: what is made may ask for itself
      new (slot.bytes) Self();
    }
    return *std::launder(reinterpret_cast<Self*>(slot.bytes));
  }

  /// The object itself, for as long as the method runs; copy it to keep it longer.
  const HandleType& self() const { return *self_; }

 protected:
  Implementation() : self_(around(this)) {}
  ~Implementation() = default;

  /// The method that the class's base has.
  template <FixedString Sel, class R = void, class... Args>
  R super(const Args&... arguments) const {
    return send_super<Sel, R>(self(), class_for<typename HandleType::Base>(), arguments...);
  }
  /// The same for an initialiser, which consumes its receiver.
  template <FixedString Sel, class... Args>
  static HandleType super_init(Allocated<HandleType> self, const Args&... arguments) {
    return std::move(self).template initialize_super<Sel>(arguments...);
  }

 private:
  template <class T>
  friend class Class;

  struct Slot {
    alignas(Self) std::byte bytes[sizeof(Self)];
    bool made;  // objects begin as zeros
  };

  static abi::id around(Implementation* implementation) {
    return reinterpret_cast<abi::id>(reinterpret_cast<std::byte*>(static_cast<Self*>(implementation)) -
                                     offset_);
  }
  static void destroy(void* place) {
    Slot& slot = *static_cast<Slot*>(place);
    if (!slot.made) return;
    std::launder(reinterpret_cast<Self*>(slot.bytes))->~Self();
    slot.made = false;
  }

  static inline constinit std::ptrdiff_t offset_ = 0;  // known when the class is registered
  mutable Borrowed<HandleType> self_;
};

/// Whether T is a C++ class that lives inside objects.
template <class T>
concept Implements = requires {
  typename T::Receiver;
}
&&std::derived_from<T, Implementation<T, typename T::Receiver>>;

}  // namespace objc
