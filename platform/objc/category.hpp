// platform/objc/category.hpp: methods for classes that exist.
#pragma once

#include <type_traits>

#include "platform/objc/abi.hpp"
#include "platform/objc/marshal.hpp"
#include "platform/objc/method_replacement.hpp"
#include "platform/objc/selector.hpp"
#include "platform/objc/send.hpp"
#include "platform/objc/thunk.hpp"

namespace objc {

/// The method that a category replaced, still callable; empty where there was none.
template <class Signature>
class Original;

template <class R, class... Args>
class Original<R(Args...)> {
 public:
  explicit operator bool() const { return implementation_ != nullptr; }

  template <class Receiver>
  R operator()(const Receiver& receiver, const Args&... arguments) const {
    if (implementation_ == nullptr) return R();
    const auto implementation =
        reinterpret_cast<typename Marshal<R>::Raw (*)(abi::id, abi::SEL, typename Marshal<Args>::Raw...)>(
            implementation_);
    if constexpr (std::is_void_v<R>) {
      implementation(Marshal<Receiver>::out(receiver), selector_.borrow(), Marshal<Args>::out(arguments)...);
    } else {
      return detail::received<R, false>(implementation(Marshal<Receiver>::out(receiver), selector_.borrow(),
                                                       Marshal<Args>::out(arguments)...));
    }
  }

 private:
  template <class T>
  friend class Category;
  abi::IMP implementation_ = nullptr;
  Selector selector_;
};

/// Adds methods to a class that exists, or replaces those of the same name.
template <class T>
class Category {
 public:
  /// The replaced method's implementation, own or inherited, goes to `original`.
  template <FixedString Sel, auto Function, class Signature>
  Category& class_method(Original<Signature>& original) {
    const abi::Class cls = class_for<T>().borrow();
    if (const abi::Method method = abi::class_getClassMethod(cls, selector<Sel>().borrow())) {
      original.implementation_ = abi::method_getImplementation(method);
      original.selector_ = selector<Sel>();
    }
    return class_method<Sel, Function>();
  }
  template <FixedString Sel, auto Function, class Signature>
  Category& method(Original<Signature>& original) {
    const abi::Class cls = class_for<T>().borrow();
    if (const abi::Method method = abi::class_getInstanceMethod(cls, selector<Sel>().borrow())) {
      original.implementation_ = abi::method_getImplementation(method);
      original.selector_ = selector<Sel>();
    }
    return this->template method<Sel, Function>();
  }

  template <FixedString Sel, auto Function>
  Category& method() {
    put<Sel, Function>(class_for<T>().borrow());
    return *this;
  }
  template <FixedString Sel, auto Function>
  Category& initializer() {
    return method<Sel, Function>();
  }
  template <FixedString Sel, auto Function>
  Category& class_method() {
    put<Sel, Function>(abi::class_of(reinterpret_cast<abi::id>(class_for<T>().borrow())));
    return *this;
  }

 private:
  template <FixedString Sel, auto Function>
  static void put(abi::Class target) {
    if (target == nullptr) return;
    abi::replace_method(target, selector<Sel>().borrow(), detail::implementation<Sel, Function>(),
                        detail::Thunk<Function>::kEncoding.data());
  }
};

}  // namespace objc
