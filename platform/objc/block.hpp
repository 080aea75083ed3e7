// platform/objc/block.hpp: blocks, from lambdas and from the other side.
#pragma once

#include <concepts>
#include <cstddef>
#include <type_traits>
#include <utility>

#include "platform/objc/abi.hpp"
#include "platform/objc/block_layout.hpp"
#include "platform/objc/class.hpp"
#include "platform/objc/marshal.hpp"

namespace objc {

template <class Signature>
class Block;

/// A block that takes A... and gives R: a strong reference, nil when default-constructed. Made from a
/// lambda it keeps the lambda, and so what that captures, alive. Calling nil gives R().
template <class R, class... A>
class Block<R(A...)> {
 public:
  Block() noexcept = default;
  Block(std::nullptr_t) noexcept {}  // NOLINT(google-explicit-constructor)
  Block(const Block& other) : raw_(other.raw_ != nullptr ? abi::_Block_copy(other.raw_) : nullptr) {}
  Block(Block&& other) noexcept : raw_(std::exchange(other.raw_, nullptr)) {}
  Block& operator=(Block other) noexcept {
    std::swap(raw_, other.raw_);
    return *this;
  }
  ~Block() {
    if (raw_ != nullptr) abi::_Block_release(raw_);
  }

  template <class F>
  requires(!std::same_as<std::remove_cvref_t<F>, Block> && std::is_invocable_r_v<R, F&, A...>)
      Block(F&& lambda) {  // NOLINT(google-explicit-constructor)
    using Lambda = std::remove_cvref_t<F>;
    static const detail::BlockDescriptor kDescriptor{
        0, sizeof(detail::BlockLayout),
        // The copy takes over the box: the literal below is never disposed of. (Foundation's copy also
        // writes the heap block back over the literal, which would destroy an inline lambda twice.)
        detail::signed_at_run_time(+[](detail::BlockLayout*, const detail::BlockLayout*) {}),
        detail::signed_at_run_time(
            +[](const detail::BlockLayout* block) { delete static_cast<Lambda*>(block->box); })};
    detail::BlockLayout literal{abi::_NSConcreteStackBlock,
                                detail::kBlockFlags,
                                0,
                                reinterpret_cast<void (*)()>(&invoke<Lambda>),
                                &kDescriptor,
                                new Lambda(std::forward<F>(lambda))};
    raw_ = abi::_Block_copy(&literal);
  }

  explicit operator bool() const noexcept { return raw_ != nullptr; }

  R operator()(A... arguments) const {
    if (raw_ == nullptr) return R();
    const auto invoke =
        reinterpret_cast<typename Marshal<R>::Raw (*)(const void*, typename Marshal<A>::Raw...)>(
            detail::function_of(*static_cast<const detail::BlockLayout*>(raw_)));
    if constexpr (std::is_void_v<R>) {
      invoke(raw_, Marshal<std::decay_t<A>>::out(arguments)...);
    } else {
      return detail::received<R, false>(invoke(raw_, Marshal<std::decay_t<A>>::out(arguments)...));
    }
  }

  /// +0, both ways.
  const void* borrow() const { return raw_; }
  static Block retain(const void* block) {
    Block handle;
    handle.raw_ = block != nullptr ? abi::_Block_copy(block) : nullptr;
    return handle;
  }

 private:
  template <class Lambda>
  static typename Marshal<R>::Raw invoke(const detail::BlockLayout* block,
                                         typename Marshal<std::decay_t<A>>::Raw... raw) {
    auto& lambda = *static_cast<Lambda*>(block->box);
    return detail::answer<R>([&]() -> R { return lambda(Incoming<std::decay_t<A>>(raw).get()...); });
  }

  const void* raw_ = nullptr;
};

template <class S>
struct Encoding<Block<S>> {
  static constexpr FixedString value{"@?"};
};

template <class S>
struct Marshal<Block<S>> {
  using Raw = const void*;
  static Raw out(const Block<S>& block) { return block.borrow(); }
  static Block<S> in(Raw raw) { return Block<S>::retain(raw); }
};

}  // namespace objc
