// platform/objc/class.hpp: classes and categories authored in C++.
//
//   class WispToggle : public objc::Authored<WispToggle, PSSwitchTableCell> {
//    public:
//     static constexpr objc::FixedString kClass{"WispToggle"};
//     static void define() {
//       objc::Class<WispToggle>()
//           .initializer<"initWithStyle:reuseIdentifier:specifier:", &WispToggle::initWithStyle>()
//           .register_class();
//     }
//   };
//
// Templates here only marshal; a class is one table, and the table is the whole class.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <type_traits>
#include <utility>

#include "platform/objc/abi.hpp"
#include "platform/objc/dispatch.hpp"
#include "platform/objc/fixed_string.hpp"
#include "platform/objc/handle.hpp"
#include "platform/objc/marshal.hpp"
#include "platform/objc/method_replacement.hpp"
#include "platform/objc/selector.hpp"
#include "platform/objc/send.hpp"

namespace objc {

namespace detail {

template <class T>
inline T* at(abi::id object, std::ptrdiff_t offset) {
  return std::launder(reinterpret_cast<T*>(reinterpret_cast<std::byte*>(object) + offset));
}

inline std::ptrdiff_t offset_of(abi::Class cls, const char* name) {
  return abi::ivar_getOffset(abi::class_getInstanceVariable(cls, name));
}

// Of each class its own: a runtime may refuse a variable that a base has under the same name.
template <class T>
inline constexpr auto kStateName = concatenate(FixedString{"_state_"}, T::kClass);

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
    return Answer<R>::pack(call());
  }
}

// What a function's type says about it. A free function's or static member's first parameter is the
// receiver: a handle for a method, a ClassRef for a class method, an Allocated for an initialiser.
template <auto Function, class Type = decltype(Function)>
struct Thunk;

template <auto Function, class R, class Self, class... Args>
struct MemberThunk {
  static typename Marshal<R>::Raw entry(abi::id self, abi::SEL,
                                        typename Marshal<std::remove_cvref_t<Args>>::Raw... raw) {
    return answer<R>([&] {
      return ((*Borrowed<Self>(self)).*Function)(Incoming<std::remove_cvref_t<Args>>(raw).get()...);
    });
  }
  static constexpr const auto& kEncoding = kMethodEncoding<R, Args...>;
  static constexpr std::size_t kArguments = sizeof...(Args);
  static constexpr bool kIsInitializer = false;
};

template <auto Function, class R, class Self, class... Args>
struct Thunk<Function, R (Self::*)(Args...)> : MemberThunk<Function, R, Self, Args...> {};
template <auto Function, class R, class Self, class... Args>
struct Thunk<Function, R (Self::*)(Args...) const> : MemberThunk<Function, R, Self, Args...> {};

template <auto Function, class R, class Receiver, class... Args>
struct Thunk<Function, R (*)(Receiver, Args...)> {
  static typename Marshal<R>::Raw entry(abi::id self, abi::SEL,
                                        typename Marshal<std::remove_cvref_t<Args>>::Raw... raw) {
    return answer<R>([&] {
      return Function(Incoming<std::remove_cvref_t<Receiver>>(self).get(),
                      Incoming<std::remove_cvref_t<Args>>(raw).get()...);
    });
  }
  static constexpr const auto& kEncoding = kMethodEncoding<R, Args...>;
  static constexpr std::size_t kArguments = sizeof...(Args);
  static constexpr bool kIsInitializer = false;
};

template <auto Function, class R, class T, class... Args>
struct Thunk<Function, R (*)(Allocated<T>, Args...)> {
  static abi::id entry(abi::id self, abi::SEL, typename Marshal<std::remove_cvref_t<Args>>::Raw... raw) {
    return leak(Function(Allocated<T>(self), Incoming<std::remove_cvref_t<Args>>(raw).get()...));
  }
  static constexpr const auto& kEncoding = kMethodEncoding<R, Args...>;
  static constexpr std::size_t kArguments = sizeof...(Args);
  static constexpr bool kIsInitializer = true;
};

template <class Self, auto Function>
inline abi::id copy_entry(abi::id self, abi::SEL, void* /*zone*/) {
  return leak(((*Borrowed<Self>(self)).*Function)());
}

template <class Self, auto Function>
inline abi::id creating_entry(abi::id self, abi::SEL) {
  return leak(Function(*Borrowed<Self>(self)));
}

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

  /// The instance variable of that name, as a handle (or number) inside the object. Self is not nil.
  template <class V, FixedString Name>
  V& variable() const {
    static const std::ptrdiff_t offset = detail::offset_of(class_for<Self>().borrow(), Name.value);
    return *detail::at<V>(borrow(*this), offset);
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

/// Builds and registers the class that T describes. Where a class of that name is registered already,
/// every step does nothing, so a host that starts again in the same process finds its classes in place.
template <class T>
class Class {
 public:
  Class() {
    if (abi::objc_lookUpClass(T::kClass.value) != nullptr) return;
    const ClassRef base = class_for<typename T::Base>();
    if (base) building_ = abi::objc_allocateClassPair(base.borrow(), T::kClass.value, 0);
  }

  /// An instance variable: a handle that starts as nil and is released, in reverse order of
  /// declaration, when the object dies; or a plain number.
  template <FixedString Name, class V>
  Class& variable() {
    static_assert(Handle<V> || std::is_arithmetic_v<V> || std::is_pointer_v<V>,
                  "variables hold handles or numbers");
    add_variable(Name.value, sizeof(V), alignof(V), Encoding<V>::value.value,
                 Handle<V> ? &destroy<V> : nullptr);
    return *this;
  }

  /// C++ state behind one pointer; see Authored::state.
  template <class State>
  Class& state() {
    add_variable(detail::kStateName<T>.data(), sizeof(State*), alignof(State*), "^v", &destroy_state<State>);
    return *this;
  }

  template <FixedString Sel, auto Function>
  Class& method() {
    if (building_ != nullptr) add<Sel, Function>(building_);
    return *this;
  }

  /// A function `T f(Allocated<T> self, arguments...)` that consumes self and gives the object or nil.
  template <FixedString Sel, auto Function>
  Class& initializer() {
    return method<Sel, Function>();
  }

  /// A function whose first parameter is the receiving class.
  template <FixedString Sel, auto Function>
  Class& class_method() {
    if (building_ != nullptr) add<Sel, Function>(abi::class_of(reinterpret_cast<abi::id>(building_)));
    return *this;
  }

  /// `copyWithZone:`, or with a selector `mutableCopyWithZone:`; the caller owns what it gives.
  template <auto Function, FixedString Sel = "copyWithZone:">
  Class& copying() {
    static_assert(returns_owned_reference(Sel) && Sel.count(':') == 1, "only copies of a zone are made so");
    if (building_ != nullptr) {
      abi::class_addMethod(building_, selector<Sel>().borrow(),
                           reinterpret_cast<abi::IMP>(&detail::copy_entry<T, Function>), "@@:^v");
    }
    return *this;
  }

  /// A method without arguments whose name begins with "new": the caller owns what it gives. The function
  /// takes the receiver.
  template <FixedString Sel, auto Function>
  Class& creating() {
    static_assert(returns_owned_reference(Sel) && Sel.count(':') == 0, "only methods named new create");
    if (building_ != nullptr) {
      abi::class_addMethod(building_, selector<Sel>().borrow(),
                           reinterpret_cast<abi::IMP>(&detail::creating_entry<T, Function>), "@@:");
    }
    return *this;
  }

  /// Runs first when an object dies, while its variables still hold.
  template <void (T::*Function)()>
  Class& on_dealloc() {
    lifetime().last_words = [](abi::id self) { ((*Borrowed<T>(self)).*Function)(); };
    return *this;
  }

  /// Makes the class known to the runtime. False where the base is missing.
  bool register_class() {
    if (building_ == nullptr) return class_for<T>() ? true : false;
    if (lifetime().count > 0 || lifetime().last_words != nullptr) {
      abi::class_addMethod(building_, selector<"dealloc">().borrow(), reinterpret_cast<abi::IMP>(&dealloc),
                           "v@:");
    }
    const abi::Class made = std::exchange(building_, nullptr);
    abi::objc_registerClassPair(made);
    Lifetime& table = lifetime();
    for (std::size_t i = 0; i < table.count; ++i)
      table.variables[i].offset = detail::offset_of(made, table.variables[i].name);
    return true;
  }

 private:
  static constexpr std::size_t kMostVariables = 24;
  using Destroy = void (*)(void* slot);
  struct Variable {
    const char* name;
    Destroy destroy;
    std::ptrdiff_t offset;  // known when the class is registered
  };
  struct Lifetime {
    Variable variables[kMostVariables];
    std::size_t count;
    void (*last_words)(abi::id self);
  };
  static Lifetime& lifetime() {
    static constinit Lifetime table{};
    return table;
  }

  template <class V>
  static void destroy(void* slot) {
    *static_cast<V*>(slot) = V();
  }
  template <class State>
  static void destroy_state(void* slot) {
    delete std::exchange(*static_cast<State**>(slot), nullptr);
  }

  void add_variable(const char* name, std::size_t size, std::size_t alignment, const char* types,
                    Destroy destroyer) {
    if (building_ == nullptr) return;
    std::uint8_t log2 = 0;
    while ((std::size_t{1} << log2) < alignment) ++log2;
    abi::class_addIvar(building_, name, size, log2, types);
    if (destroyer == nullptr) return;
    Lifetime& table = lifetime();
    if (table.count == kMostVariables) __builtin_trap();  // a table's length is known when it is written
    table.variables[table.count++] = {name, destroyer, 0};
  }

  template <FixedString Sel, auto Function>
  static void add(abi::Class target) {
    abi::class_addMethod(target, selector<Sel>().borrow(), detail::implementation<Sel, Function>(),
                         detail::Thunk<Function>::kEncoding.data());
  }

  static void dealloc(abi::id self, abi::SEL name) {
    abi::clear_weak_references(self);
    const Lifetime& table = lifetime();
    if (table.last_words != nullptr) table.last_words(self);
    for (std::size_t i = table.count; i-- > 0;)
      table.variables[i].destroy(detail::at<void*>(self, table.variables[i].offset));
    abi::call_super<void>({self, class_for<typename T::Base>().borrow()}, name);
  }

  abi::Class building_ = nullptr;
};

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

/// The address of one of the class's own methods, for finding the image that the class came from; null for
/// a class without any.
inline const void* code_address(ClassRef cls) {
  unsigned int count = 0;
  abi::Method* const methods = cls ? abi::class_copyMethodList(cls.borrow(), &count) : nullptr;
  const void* address =
      count > 0 ? reinterpret_cast<const void*>(abi::method_getImplementation(methods[0])) : nullptr;
  std::free(methods);
  return address;
}

}  // namespace objc
