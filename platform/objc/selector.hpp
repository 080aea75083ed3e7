// platform/objc/selector.hpp: selectors, looked up once a literal.
#pragma once

#include <atomic>
#include <string_view>

#include "platform/objc/abi.hpp"
#include "platform/objc/fixed_string.hpp"

namespace objc {

/// The name of a message; nil when default-constructed. Selectors live as long as the process.
class Selector {
 public:
  constexpr Selector() = default;
  constexpr explicit Selector(abi::SEL raw) : raw_(raw) {}

  /// The selector of a name known only at run time (a specifier list's "action", say); nil for "".
  static Selector named(const char* name) {
    return name != nullptr && *name != '\0' ? Selector(abi::sel_registerName(name)) : Selector();
  }

  explicit operator bool() const { return raw_ != nullptr; }
  /// The runtime keeps one selector object a name and type, so selectors are equal by name.
  bool operator==(const Selector& other) const {
    return raw_ == other.raw_ || (raw_ != nullptr && other.raw_ != nullptr && name() == other.name());
  }
  std::string_view name() const { return raw_ != nullptr ? abi::sel_getName(raw_) : std::string_view(); }

  abi::SEL borrow() const { return raw_; }

 private:
  abi::SEL raw_ = nullptr;
};

namespace detail {
// Constant-initialised, so that no code runs before main; filled at the first use. Two threads may
// both fill it, with the same value.
template <FixedString Name>
inline constinit std::atomic<abi::SEL> selector_cache{nullptr};
}  // namespace detail

/// The selector of a literal: one look-up by name in the life of the process.
template <FixedString Name>
inline Selector selector() {
  abi::SEL cached = detail::selector_cache<Name>.load(std::memory_order_relaxed);
  if (cached == nullptr) [[unlikely]] {
    cached = abi::sel_registerName(Name.value);
    detail::selector_cache<Name>.store(cached, std::memory_order_relaxed);
  }
  return Selector(cached);
}

}  // namespace objc
