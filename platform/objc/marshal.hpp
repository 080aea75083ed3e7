// platform/objc/marshal.hpp: how each C++ type crosses the border, and its type encoding.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "platform/objc/abi.hpp"
#include "platform/objc/fixed_string.hpp"
#include "platform/objc/handle.hpp"
#include "platform/objc/selector.hpp"

namespace objc {

/// A class object; nil when default-constructed. Classes are never released.
class ClassRef {
 public:
  constexpr ClassRef() = default;
  constexpr explicit ClassRef(abi::Class raw) : raw_(raw) {}

  /// The class registered under a name that is known only at run time, or nil.
  static ClassRef named(const char* name) {
    return ClassRef(name != nullptr ? abi::objc_lookUpClass(name) : nullptr);
  }

  explicit operator bool() const { return raw_ != nullptr; }
  bool operator==(const ClassRef&) const = default;

  const char* name() const { return raw_ != nullptr ? abi::class_getName(raw_) : ""; }
  ClassRef superclass() const { return ClassRef(raw_ != nullptr ? abi::class_getSuperclass(raw_) : nullptr); }
  bool is_subclass_of(ClassRef ancestor) const {
    for (ClassRef c = *this; c; c = c.superclass()) {
      if (c == ancestor) return true;
    }
    return false;
  }
  /// Whether instances answer the selector.
  bool instances_respond_to(Selector selector) const {
    return raw_ != nullptr && selector && abi::class_respondsToSelector(raw_, selector.borrow());
  }

  abi::Class borrow() const { return raw_; }

 private:
  abi::Class raw_ = nullptr;
};

/// The class of an object, nil for nil.
inline ClassRef class_of(const Object& object) { return ClassRef(abi::class_of(borrow(object))); }

/// The type encoding of T, as the runtime's own compiler would write it. Structures specialise it
/// beside their declaration.
template <class T>
struct Encoding;

namespace detail {

template <std::size_t... N>
consteval auto concatenate(const FixedString<N>&... parts) {
  constexpr std::size_t length = ((N - 1) + ... + 1);
  std::array<char, length> joined{};
  std::size_t at = 0;
  const auto append = [&](const auto& part) {
    for (std::size_t i = 0; i < part.size(); ++i) joined[at++] = part.value[i];
  };
  (append(parts), ...);
  return joined;
}

}  // namespace detail

template <>
struct Encoding<void> {
  static constexpr FixedString value{"v"};
};
template <>
struct Encoding<bool> {
  static constexpr FixedString value{abi::kBooleanEncoding};
};
template <>
struct Encoding<char> {
  static constexpr FixedString value{"c"};
};
template <>
struct Encoding<signed char> {
  static constexpr FixedString value{"c"};
};
template <>
struct Encoding<unsigned char> {
  static constexpr FixedString value{"C"};
};
template <>
struct Encoding<short> {
  static constexpr FixedString value{"s"};
};
template <>
struct Encoding<unsigned short> {
  static constexpr FixedString value{"S"};
};
template <>
struct Encoding<int> {
  static constexpr FixedString value{"i"};
};
template <>
struct Encoding<unsigned int> {
  static constexpr FixedString value{"I"};
};
template <>
struct Encoding<long> {
  static constexpr FixedString value{"q"};
};
template <>
struct Encoding<unsigned long> {
  static constexpr FixedString value{"Q"};
};
template <>
struct Encoding<long long> {
  static constexpr FixedString value{"q"};
};
template <>
struct Encoding<unsigned long long> {
  static constexpr FixedString value{"Q"};
};
template <>
struct Encoding<float> {
  static constexpr FixedString value{"f"};
};
template <>
struct Encoding<double> {
  static constexpr FixedString value{"d"};
};
template <>
struct Encoding<char*> {
  static constexpr FixedString value{"*"};
};
template <>
struct Encoding<const char*> {
  static constexpr FixedString value{"r*"};
};
template <>
struct Encoding<ClassRef> {
  static constexpr FixedString value{"#"};
};
template <>
struct Encoding<Selector> {
  static constexpr FixedString value{":"};
};
template <Handle T>
struct Encoding<T> {
  static constexpr FixedString value{"@"};
};
template <class T>
requires std::is_enum_v<T>
struct Encoding<T> : Encoding<std::underlying_type_t<T>> {
};
template <class T>
requires(!std::is_same_v<std::remove_cv_t<T>, char>) struct Encoding<T*> {
  static constexpr FixedString value{"^v"};
};

/// A method's encoding: result, receiver, selector, arguments.
template <class R, class... Args>
inline constexpr auto kMethodEncoding = detail::concatenate(Encoding<R>::value, FixedString{"@:"},
                                                            Encoding<std::remove_cvref_t<Args>>::value...);

/// How a T looks on the other side (`Raw`), and the two crossings. `out` borrows: it gives no reference.
template <class T>
struct Marshal {
  static_assert(
      std::is_void_v<T> || std::is_trivially_copyable_v<T>,
      "only handles, blocks, Booleans, numbers, enums, pointers and plain structures cross the border");
  using Raw = T;
  static Raw out(const T& value) { return value; }
};

template <>
struct Marshal<void> {
  using Raw = void;
};
template <>
struct Marshal<bool> {
  using Raw = abi::BOOL;
  static Raw out(bool value) { return static_cast<Raw>(value); }
  static bool in(Raw raw) { return raw != 0; }
};
template <>
struct Marshal<std::nullptr_t> {
  using Raw = abi::id;
  static Raw out(std::nullptr_t) { return nullptr; }
};
template <>
struct Marshal<Selector> {
  using Raw = abi::SEL;
  static Raw out(Selector value) { return value.borrow(); }
  static Selector in(Raw raw) { return Selector(raw); }
};
template <>
struct Marshal<ClassRef> {
  using Raw = abi::id;
  static Raw out(ClassRef value) { return reinterpret_cast<abi::id>(value.borrow()); }
  static ClassRef in(Raw raw) { return ClassRef(reinterpret_cast<abi::Class>(raw)); }
};
template <Handle T>
struct Marshal<T> {
  using Raw = abi::id;
  static Raw out(const T& value) { return borrow(value); }
};

/// An argument that came in from the other side, for the time of the call; handles are borrowed.
template <class T>
class Incoming {
 public:
  explicit Incoming(typename Marshal<T>::Raw raw) : raw_(raw) {}
  decltype(auto) get() const {
    if constexpr (requires { Marshal<T>::in(raw_); }) {
      return Marshal<T>::in(raw_);
    } else {
      return static_cast<const T&>(raw_);
    }
  }

 private:
  typename Marshal<T>::Raw raw_;
};

template <Handle T>
class Incoming<T> {
 public:
  explicit Incoming(abi::id raw) : borrowed_(raw) {}
  T& get() { return *borrowed_; }

 private:
  Borrowed<T> borrowed_;
};

}  // namespace objc
