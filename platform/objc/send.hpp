// platform/objc/send.hpp: messages to objects, classes and super.
#pragma once

#include <atomic>
#if !defined(NDEBUG)
#include <cstdio>
#include <cstdlib>
#endif
#include <type_traits>
#include <utility>

#include "platform/objc/dispatch.hpp"
#include "platform/objc/fixed_string.hpp"
#include "platform/objc/handle.hpp"
#include "platform/objc/marshal.hpp"
#include "platform/objc/selector.hpp"

namespace objc {

namespace detail {

template <FixedString Name>
inline constinit std::atomic<abi::Class> class_cache{nullptr};

/// A raw result as the R that the caller asked for; a handle takes over or adds a reference as the
/// selector's family says.
template <class R, bool Owned, class Raw>
inline R received(Raw raw) {
  if constexpr (Handle<R>) {
    return Owned ? adopt<R>(raw) : retain<R>(raw);
  } else if constexpr (requires { Marshal<R>::in(raw); }) {
    return Marshal<R>::in(raw);
  } else {
    return raw;
  }
}

template <FixedString Sel, class... Args>
consteval void check_arity() {
  static_assert(Sel.count(':') == sizeof...(Args),
                "a selector takes exactly as many arguments as it has colons");
}

template <FixedString Sel, class R, class... Args>
inline R send_raw(abi::id receiver, const Args&... arguments) {
  check_arity<Sel, Args...>();
  using Raw = typename Marshal<R>::Raw;
  const abi::SEL name = selector<Sel>().borrow();
  if constexpr (std::is_void_v<R>) {
    abi::call<void>(receiver, name, Marshal<std::decay_t<const Args&>>::out(arguments)...);
  } else {
    return received<R, returns_owned_reference(Sel)>(
        abi::call<Raw>(receiver, name, Marshal<std::decay_t<const Args&>>::out(arguments)...));
  }
}

}  // namespace detail

/// The class of a literal name, nil while none is registered; found once, then remembered.
template <FixedString Name>
inline ClassRef class_named() {
  abi::Class cached = detail::class_cache<Name>.load(std::memory_order_relaxed);
  if (cached == nullptr) [[unlikely]] {
    cached = abi::objc_lookUpClass(Name.value);
    if (cached != nullptr) detail::class_cache<Name>.store(cached, std::memory_order_relaxed);
  }
  return ClassRef(cached);
}

/// The class that handle type T stands for.
template <Handle T>
inline ClassRef class_for() {
  return class_named<T::kClass>();
}

/// Sends a message. R is the result's type; nil receivers give R(). Arguments keep their C++ types: a
/// float parameter must be given a float. `init...` goes through Allocated instead.
template <FixedString Sel, class R = void, class... Args>
inline R send(const Object& receiver, const Args&... arguments) {
  static_assert(!is_initializer(Sel), "initialisers consume their receiver: call them on what alloc() gave");
  return detail::send_raw<Sel, R>(borrow(receiver), arguments...);
}

/// Sends a message to a class.
template <FixedString Sel, class R = void, class... Args>
inline R send(ClassRef receiver, const Args&... arguments) {
  return detail::send_raw<Sel, R>(reinterpret_cast<abi::id>(receiver.borrow()), arguments...);
}

/// Sends a message whose selector is known only at run time. The caller vouches for the types, and for
/// a result at +0.
template <class R = void, class... Args>
inline R perform(const Object& receiver, Selector selector, const Args&... arguments) {
  using Raw = typename Marshal<R>::Raw;
  if constexpr (std::is_void_v<R>) {
    abi::call<void>(borrow(receiver), selector.borrow(),
                    Marshal<std::decay_t<const Args&>>::out(arguments)...);
  } else {
    return detail::received<R, false>(abi::call<Raw>(borrow(receiver), selector.borrow(),
                                                     Marshal<std::decay_t<const Args&>>::out(arguments)...));
  }
}

/// Whether the object answers the selector.
inline bool responds_to(const Object& object, Selector selector) {
  return object && selector && detail::send_raw<"respondsToSelector:", bool>(borrow(object), selector);
}

namespace detail {
#if !defined(NDEBUG)
/// Ends the process where a cast lies: the object is not a T. Classes that nobody registered cannot be asked
/// for.
template <class T>
inline void check_cast(abi::id object) {
  if constexpr (requires { T::kClass; }) {
    const ClassRef wanted = class_for<T>();
    if (object == nullptr || !wanted || send_raw<"isKindOfClass:", bool>(object, wanted)) return;
    std::fprintf(stderr, "objc: a %s was cast to %s\n", ClassRef(abi::class_of(object)).name(),
                 T::kClass.value);
    std::abort();
  }
}
#else
template <class T>
inline void check_cast(abi::id) {}
#endif
}  // namespace detail

template <class T>
inline T Object::as() const {
  detail::check_cast<T>(raw_);
  return retain<T>(raw_);
}

/// The same object as a T, or nil where it is not one.
template <Handle T>
inline T cast_or_nil(const Object& object) {
  const ClassRef wanted = class_for<T>();
  if (!object || !wanted) return T();
  return detail::send_raw<"isKindOfClass:", bool>(borrow(object), wanted) ? object.as<T>() : T();
}

/// What alloc gives: an object that is not initialised yet, owned until an initialiser consumes it.
/// Typed handles derive theirs from it and name the initialisers.
template <class T>  // complete only where it is used: T's own alloc() names it
class Allocated {
 public:
  explicit Allocated(abi::id owned) noexcept : raw_(owned) {}
  Allocated(Allocated&& other) noexcept : raw_(std::exchange(other.raw_, nullptr)) {}
  Allocated& operator=(Allocated&&) = delete;
  ~Allocated() {
    if (raw_ != nullptr) abi::release(raw_);
  }

  /// Sends an initialiser; what comes back may be nil or another object.
  template <FixedString Sel, class... Args>
  T initialize(const Args&... arguments) && {
    static_assert(is_initializer(Sel), "only a method of the init family initialises");
    return detail::send_raw<Sel, T>(std::exchange(raw_, nullptr), arguments...);
  }

  /// The same with the look-up starting at T's base: for initialisers authored in C++.
  template <FixedString Sel, class... Args>
  T initialize_super(const Args&... arguments) && {
    static_assert(is_initializer(Sel), "only a method of the init family initialises");
    detail::check_arity<Sel, Args...>();
    const abi::SuperReceiver receiver{std::exchange(raw_, nullptr), class_for<typename T::Base>().borrow()};
    return adopt<T>(abi::call_super<abi::id>(receiver, selector<Sel>().borrow(),
                                             Marshal<std::decay_t<const Args&>>::out(arguments)...));
  }

  /// The object as it stands: for classes whose base has nothing to initialise.
  T as_initialized() && { return adopt<T>(std::exchange(raw_, nullptr)); }

  T init() && { return std::move(*this).template initialize<"init">(); }

 private:
  abi::id raw_;
};

/// An object of this class, which is T's or derives from it, to be initialised. Nil (and harmless) for no
/// class.
template <class T>
inline Allocated<T> allocate(ClassRef cls) {
  return Allocated<T>(
      abi::call<abi::id>(reinterpret_cast<abi::id>(cls.borrow()), selector<"alloc">().borrow()));
}
/// The same of T's own class.
template <class T>
inline Allocated<T> allocate() {
  return allocate<T>(class_for<T>());
}

/// `new`: allocated and plainly initialised.
template <Handle T>
inline T make() {
  return allocate<T>().init();
}

/// Sends a message to the receiver with the look-up starting at `base`.
template <FixedString Sel, class R = void, class... Args>
inline R send_super(const Object& receiver, ClassRef base, const Args&... arguments) {
  detail::check_arity<Sel, Args...>();
  using Raw = typename Marshal<R>::Raw;
  const abi::SuperReceiver target{borrow(receiver), base.borrow()};
  const abi::SEL name = selector<Sel>().borrow();
  if constexpr (std::is_void_v<R>) {
    abi::call_super<void>(target, name, Marshal<std::decay_t<const Args&>>::out(arguments)...);
  } else {
    return detail::received<R, returns_owned_reference(Sel)>(
        abi::call_super<Raw>(target, name, Marshal<std::decay_t<const Args&>>::out(arguments)...));
  }
}

}  // namespace objc
