// platform/objc/class_pair.hpp: a class that is made at run time, step by step.
#pragma once

#include "platform/objc/class.hpp"

namespace objc {

/// Sends a message to the receiver, with the method looked up from that class on.
template <class... Args>
void perform_super(const Object& receiver, ClassRef from, Selector selector, const Args&... arguments) {
  abi::call_super<void>({borrow(receiver), from.borrow()}, selector.borrow(),
                        Marshal<std::decay_t<const Args&>>::out(arguments)...);
}

/// A pair of class and metaclass under construction. Where the name is taken there is none, and every step
/// acts on no class.
class ClassPair {
 public:
  /// Without storage of its own.
  ClassPair(const char* name, ClassRef superclass)
      : superclass_(superclass), made_(abi::objc_allocateClassPair(superclass.borrow(), name, 0)) {}

  /// Adds a method with the types of the superclass's own. The function takes the receiver, the selector by
  /// which it is called, and an object.
  template <FixedString Sel, auto Function>
  void override_method() const {
    const abi::Method inherited =
        abi::class_getInstanceMethod(superclass_.borrow(), selector<Sel>().borrow());
    const char* const types = abi::method_getTypeEncoding(inherited);
    abi::class_addMethod(made_, selector<Sel>().borrow(),
                         reinterpret_cast<abi::IMP>(&Entry<decltype(Function), Function>::call), types);
  }
  void register_pair() const { abi::objc_registerClassPair(made_); }

 private:
  template <class F, auto Function>
  struct Entry;
  template <class Self, class Argument, auto Function>
  struct Entry<void (*)(const Self&, Selector, const Argument&), Function> {
    static void call(abi::id self, abi::SEL name, abi::id argument) {
      Function(*Borrowed<Self>(self), Selector(name), *Borrowed<Argument>(argument));
    }
  };

  ClassRef superclass_;
  abi::Class made_;
};

}  // namespace objc
