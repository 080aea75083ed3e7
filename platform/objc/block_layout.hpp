// platform/objc/block_layout.hpp: a block as it lies in memory, and which of its pointers are signed.
//
// On arm64e a block's pointers are signed with the address of the field that holds them, so that a block is
// copied field by field and by nobody but the runtime. The compiler signs what is assigned to such a field
// and authenticates what is read from it.
#pragma once

#include <cstdint>

namespace objc::detail {

struct BlockLayout;

#if defined(__arm64e__)
// Key IA (0) for functions, DA (2) for data; with the field's address; and the field's constant.
using BlockFunction = void (*__ptrauth(0, 1, 0))();
using BlockCopyHelper = void (*__ptrauth(0, 1, 0))(BlockLayout* target, const BlockLayout* source);
using BlockDisposeHelper = void (*__ptrauth(0, 1, 0))(const BlockLayout* block);
using BlockIsa = void* __ptrauth(2, 1, 0x6AE1);
#else
using BlockFunction = void (*)();
using BlockCopyHelper = void (*)(BlockLayout* target, const BlockLayout* source);
using BlockDisposeHelper = void (*)(const BlockLayout* block);
using BlockIsa = void*;
#endif

struct BlockDescriptor {
  unsigned long reserved;
  unsigned long size;
  BlockCopyHelper copy;
  BlockDisposeHelper dispose;
};

/// The public layout of a block: https://clang.llvm.org/docs/Block-ABI-Apple.html
struct BlockLayout {
  BlockIsa isa;
  int flags;
  int reserved;
  BlockFunction invoke;
  const BlockDescriptor* descriptor;  // plain; only descriptors of the small kind are signed
  void* box;                          // the lambda, on the heap
};

#if defined(__APPLE__)
inline constexpr int kBlockFlags = 1 << 25;
#else
inline constexpr int kBlockFlags = (1 << 25) | (1 << 29);  // Foundation copies only what has bit 29
#endif

/// The same function, hidden from the optimiser where functions are signed: a signed pointer in constant data
/// is the loader's work, and a linker's that can ask for it. This way it is signed when the program runs.
template <class F>
constexpr F* signed_at_run_time(F* function) {
#if defined(__arm64e__)
  asm("" : "+r"(function));
#endif
  return function;
}

/// The block's function, to be called.
inline auto function_of(const BlockLayout& block) -> void (*)() {
#if defined(__aarch64__) && !defined(__APPLE__)
  // A test may have loaded the phone's signed code into this process, whose blocks are signed as the phone's
  // are; unsigned code never gives a function with anything in the high bits.
  constexpr std::uint64_t kAddressBits = (std::uint64_t{1} << 48) - 1;
  const auto told = reinterpret_cast<std::uint64_t>(block.invoke);
  if ((told & ~kAddressBits) != 0) {
    register std::uint64_t function asm("x17") = told & kAddressBits;
    register std::uint64_t address asm("x16") = reinterpret_cast<std::uint64_t>(&block.invoke) & kAddressBits;
    asm("hint #8" : "+r"(function) : "r"(address));  // pacia1716: signs x17 with key IA for x16
    if (function != told) __builtin_trap();
    return reinterpret_cast<void (*)()>(told & kAddressBits);
  }
#endif
  return block.invoke;
}

}  // namespace objc::detail
