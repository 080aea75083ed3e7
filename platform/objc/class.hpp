// platform/objc/class.hpp: classes authored in C++, as tables.
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
// Templates here only marshal; a class is one table, and the table is the whole class. A class whose state is
// C++ is written as in platform/objc/implementation.hpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <type_traits>
#include <utility>

#include "platform/objc/abi.hpp"
#include "platform/objc/authored.hpp"
#include "platform/objc/fixed_string.hpp"
#include "platform/objc/handle.hpp"
#include "platform/objc/implementation.hpp"
#include "platform/objc/instance_variable.hpp"
#include "platform/objc/marshal.hpp"
#include "platform/objc/selector.hpp"
#include "platform/objc/send.hpp"
#include "platform/objc/thunk.hpp"

namespace objc {

namespace detail {

// One per class: a runtime may refuse a variable that a base has under the same name.
template <class T>
inline constexpr auto kImplementationName = concatenate(FixedString{"_implementation_"}, T::kClass);

}  // namespace detail

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
  Class& variable(InstanceVariable<Name, V>) {
    static_assert(Handle<V> || std::is_arithmetic_v<V> || std::is_pointer_v<V>,
                  "variables hold handles or numbers");
    add_variable(Name.value, sizeof(V), alignof(V), Encoding<V>::value.value,
                 Handle<V> ? &destroy<V> : nullptr);
    return *this;
  }

  /// A class whose state and methods are those of `Self`; see Implementation.
  template <Implements Self>
  static Class implemented_by() {
    static_assert(std::is_same_v<typename Self::Receiver, T>, "it implements another class");
    using Slot = typename Self::Slot;
    Class made;
    made.note_implementation_ = [](abi::Class cls) {
      Self::offset_ = detail::offset_of(cls, detail::kImplementationName<T>.data());
    };
    made.add_variable(detail::kImplementationName<T>.data(), sizeof(Slot), alignof(Slot), "?",
                      &Self::destroy);
    return made;
  }

  /// C++ state behind one pointer; see Authored::state.
  template <class State>
  Class& state() {
    add_variable(detail::kStateName<T>.data(), sizeof(State*), alignof(State*), "^v", &destroy_state<State>);
    return *this;
  }

  template <FixedString Sel, auto Function>
  Class& method() {
    static_assert(detail::kAnswers<Function, T>,
                  "the method belongs to a class that this one does not derive from");
    if (building_ != nullptr) add<Sel, Function>(building_);
    return *this;
  }

  /// A member variable of the implementation, read and set by messages.
  template <FixedString Getter, FixedString Setter, auto Member>
  Class& property() {
    getter<Getter, Member>();
    static_assert(Setter.count(':') == 1, "a setter takes one argument");
    if (building_ != nullptr) {
      using Property = detail::Property<Member>;
      abi::class_addMethod(building_, selector<Setter>().borrow(), reinterpret_cast<abi::IMP>(&Property::set),
                           Property::kSetterEncoding.data());
    }
    return *this;
  }
  /// A member variable of the implementation, read by a message.
  template <FixedString Getter, auto Member>
  Class& getter() {
    static_assert(Getter.count(':') == 0, "a getter takes no arguments");
    if (building_ != nullptr) {
      using Property = detail::Property<Member>;
      abi::class_addMethod(building_, selector<Getter>().borrow(), reinterpret_cast<abi::IMP>(&Property::get),
                           Property::kGetterEncoding.data());
    }
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
    lifetime().on_dealloc = [](abi::id self) { ((*Borrowed<T>(self)).*Function)(); };
    return *this;
  }

  /// Makes the class known to the runtime. False where the base is missing.
  bool register_class() {
    if (building_ == nullptr) {
      const ClassRef known = class_for<T>();
      if (known && note_implementation_ != nullptr) note_implementation_(known.borrow());
      return known ? true : false;
    }
    if (lifetime().count > 0 || lifetime().on_dealloc != nullptr) {
      abi::class_addMethod(building_, selector<"dealloc">().borrow(), reinterpret_cast<abi::IMP>(&dealloc),
                           "v@:");
    }
    const abi::Class made = std::exchange(building_, nullptr);
    abi::objc_registerClassPair(made);
    Lifetime& table = lifetime();
    for (std::size_t i = 0; i < table.count; ++i)
      table.variables[i].offset = detail::offset_of(made, table.variables[i].name);
    if (note_implementation_ != nullptr) note_implementation_(made);
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
    void (*on_dealloc)(abi::id self);
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
    if (table.on_dealloc != nullptr) table.on_dealloc(self);
    for (std::size_t i = table.count; i-- > 0;)
      table.variables[i].destroy(detail::at<void*>(self, table.variables[i].offset));
    abi::call_super<void>({self, class_for<typename T::Base>().borrow()}, name);
  }

  abi::Class building_ = nullptr;
  void (*note_implementation_)(abi::Class cls) = nullptr;
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
