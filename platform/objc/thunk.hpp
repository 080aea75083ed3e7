// platform/objc/thunk.hpp: how a function written in C++ answers a message.
#pragma once

#include <concepts>
#include <cstddef>
#include <type_traits>
#include <utility>

#include "platform/objc/abi.hpp"
#include "platform/objc/fixed_string.hpp"
#include "platform/objc/handle.hpp"
#include "platform/objc/implementation.hpp"
#include "platform/objc/lifetime.hpp"
#include "platform/objc/marshal.hpp"
#include "platform/objc/send.hpp"

namespace objc {

namespace detail {

/// How a function written in C++ answers a message: unpack, call, pack.
template <class R>
struct Answer {
  using Raw = typename Marshal<R>::Raw;
  static Raw pack(const R& value) { return Marshal<R>::out(value); }
};
template <Handle R>
struct Answer<R> {
  using Raw = abi::id;
  static Raw pack(R&& value) { return abi::autorelease(leak(std::move(value))); }
};

template <class R, class Call>
inline typename Marshal<R>::Raw answer(Call&& call) {
  if constexpr (std::is_void_v<R>) {
    call();
  } else {
    return Answer<R>::pack(R(call()));
  }
}

// What a function's type says about it. A free function's or static member's first parameter is the
// receiver: a handle for a method, a ClassRef for a class method, an Allocated for an initialiser.
template <auto Function, class Type = decltype(Function)>
struct Thunk;

template <auto Function, class R, class Self, class... Args>
struct MemberThunk {
  using Result = std::remove_cvref_t<R>;
  static typename Marshal<Result>::Raw entry(abi::id self, abi::SEL,
                                             typename Marshal<std::remove_cvref_t<Args>>::Raw... raw) {
    return answer<Result>([&]() -> Result {
      if constexpr (Handle<Self>) {
        return ((*Borrowed<Self>(self)).*Function)(Incoming<std::remove_cvref_t<Args>>(raw).get()...);
      } else {
        return (Self::in(self).*Function)(Incoming<std::remove_cvref_t<Args>>(raw).get()...);
      }
    });
  }
  using Receiver = Self;
  static constexpr const auto& kEncoding = kMethodEncoding<Result, Args...>;
  static constexpr std::size_t kArguments = sizeof...(Args);
  static constexpr bool kIsInitializer = false;
};

template <auto Function, class R, class Self, class... Args>
struct Thunk<Function, R (Self::*)(Args...)> : MemberThunk<Function, R, Self, Args...> {};
template <auto Function, class R, class Self, class... Args>
struct Thunk<Function, R (Self::*)(Args...) const> : MemberThunk<Function, R, Self, Args...> {};

template <auto Function, class R, class First, class... Args>
struct Thunk<Function, R (*)(First, Args...)> {
  using Receiver = std::remove_cvref_t<First>;
  static typename Marshal<R>::Raw entry(abi::id self, abi::SEL,
                                        typename Marshal<std::remove_cvref_t<Args>>::Raw... raw) {
    return answer<R>([&] {
      return Function(Incoming<Receiver>(self).get(), Incoming<std::remove_cvref_t<Args>>(raw).get()...);
    });
  }
  static constexpr const auto& kEncoding = kMethodEncoding<R, Args...>;
  static constexpr std::size_t kArguments = sizeof...(Args);
  static constexpr bool kIsInitializer = false;
};

template <auto Function, class R, class T, class... Args>
struct Thunk<Function, R (*)(Allocated<T>, Args...)> {
  using Receiver = T;
  static abi::id entry(abi::id self, abi::SEL, typename Marshal<std::remove_cvref_t<Args>>::Raw... raw) {
    return leak(Function(Allocated<T>(self), Incoming<std::remove_cvref_t<Args>>(raw).get()...));
  }
  static constexpr const auto& kEncoding = kMethodEncoding<R, Args...>;
  static constexpr std::size_t kArguments = sizeof...(Args);
  static constexpr bool kIsInitializer = true;
};

template <class Self, auto Function>
inline abi::id copy_entry(abi::id self, abi::SEL, void* /*zone*/) {
  if constexpr (requires { ((*Borrowed<Self>(self)).*Function)(); }) {
    return leak(((*Borrowed<Self>(self)).*Function)());
  } else {
    return leak((Thunk<Function>::Receiver::in(self).*Function)());
  }
}

template <class Self, auto Function>
inline abi::id creating_entry(abi::id self, abi::SEL) {
  if constexpr (requires { Function(*Borrowed<Self>(self)); }) {
    return leak(Function(*Borrowed<Self>(self)));
  } else {
    return leak((Thunk<Function>::Receiver::in(self).*Function)());
  }
}

/// Whether objects of class T can be what the function is called on.
template <class Receiver, class T>
consteval bool answers() {
  if constexpr (Implements<Receiver>) {
    return std::derived_from<T, typename Receiver::Receiver>;
  } else {
    return std::derived_from<T, Receiver>;
  }
}
template <auto Function, class T>
inline constexpr bool kAnswers = answers<typename Thunk<Function>::Receiver, T>();

/// A member variable of an implementation as two methods.
template <auto Member, class Type = decltype(Member)>
struct Property;
template <auto Member, class V, class Self>
struct Property<Member, V Self::*> {
  static typename Marshal<V>::Raw get(abi::id self, abi::SEL) {
    return answer<V>([&]() -> V { return Self::in(self).*Member; });
  }
  static void set(abi::id self, abi::SEL, typename Marshal<V>::Raw raw) {
    Self::in(self).*Member = Incoming<V>(raw).get();
  }
  static constexpr const auto& kGetterEncoding = kMethodEncoding<V>;
  static constexpr const auto& kSetterEncoding = kMethodEncoding<void, V>;
};

template <FixedString Sel, class T>
consteval void check_method() {
  static_assert(Sel.count(':') == T::kArguments,
                "a selector takes exactly as many arguments as it has colons");
  static_assert(is_initializer(Sel) == T::kIsInitializer,
                "a method of the init family, and no other, is authored as a function of an Allocated");
  static_assert(T::kIsInitializer || T::kEncoding[0] != '@' || !returns_owned_reference(Sel),
                "authored methods give autoreleased results; a copy or new method would leak them");
}

template <FixedString Sel, auto Function>
inline abi::IMP implementation() {
  check_method<Sel, Thunk<Function>>();
  return reinterpret_cast<abi::IMP>(&Thunk<Function>::entry);
}

}  // namespace detail

}  // namespace objc
