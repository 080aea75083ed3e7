// tests/device/loader/signed_blocks.cpp

#include "tests/device/loader/signed_blocks.hpp"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>
#include <mutex>
#include <vector>

#include "platform/objc/abi.hpp"
#include "platform/objc/block_layout.hpp"
#include "tests/device/loader/pointer_signing.hpp"

namespace wispen::loader {

namespace {

namespace abi = objc::abi;
using objc::detail::BlockDescriptor;
using objc::detail::BlockLayout;

constexpr macho::Signing kFieldSigning{macho::Key::IA, true, 0};
constexpr macho::Signing kIsaSigning{macho::Key::DA, true, 0x6AE1};

constexpr int kSmallDescriptor = 1 << 22;
constexpr int kHasHelpers = 1 << 25;
constexpr int kGlobal = 1 << 28;
constexpr int kCopiedByFoundation = 1 << 29;

template <class F>
F field(F const& value, const macho::Signing& signing, const char* what) {
  return reinterpret_cast<F>(authenticated(reinterpret_cast<std::uint64_t>(value), signing, &value, what));
}

template <class F>
void sign_field(F& value) {
  value = reinterpret_cast<F>(signed_pointer(reinterpret_cast<std::uint64_t>(value), kFieldSigning, &value));
}

/// What Foundation is told of a signed block: helpers that authenticate the block's own ones before they call
/// them.
struct Described {
  BlockDescriptor plain;
  const BlockDescriptor* own;
};

const BlockDescriptor& own_descriptor(const BlockLayout* block) {
  return *reinterpret_cast<const Described*>(block->descriptor)->own;
}

void copy_helper(BlockLayout* target, const BlockLayout* source) {
  field(own_descriptor(target).copy, kFieldSigning, "a block's copy helper")(target, source);
}

void dispose_helper(const BlockLayout* block) {
  field(own_descriptor(block).dispose, kFieldSigning, "a block's dispose helper")(block);
}

/// One for each descriptor, for the life of the process, as the descriptors have it.
const Described* described(const BlockDescriptor* own) {
  static std::mutex mutex;
  static auto* const known = new std::map<const BlockDescriptor*, Described>();
  const std::lock_guard lock(mutex);
  const auto [entry, fresh] = known->try_emplace(own);
  if (fresh) entry->second = {{own->reserved, own->size, &copy_helper, &dispose_helper}, own};
  return &entry->second;
}

bool is_ours(const BlockLayout& block) {
  return block.descriptor->copy == &copy_helper && block.descriptor->dispose == &dispose_helper;
}

}  // namespace

void* copy_signed_block(const void* pointer) {
  auto* const block = static_cast<BlockLayout*>(const_cast<void*>(pointer));
  if (block == nullptr || (block->flags & kGlobal) != 0) return block;
  if (block->reserved > 0) {  // on the heap, where Foundation counts references in this field
    const auto told = reinterpret_cast<std::uint64_t>(block->invoke);
    if (!is_ours(*block) && told == plain_pointer(told)) sign_field(block->invoke);
    field(block->invoke, kFieldSigning, "a heap block's function");
    return abi::_Block_copy(block);
  }
  const void* const isa = field(block->isa, kIsaSigning, "a block's isa");
  if (isa != abi::_NSConcreteStackBlock || (block->flags & kSmallDescriptor) != 0 ||
      (block->flags & kHasHelpers) == 0) {
    refuse("a block of an unknown kind");
  }
  const Described* const descriptor = described(block->descriptor);
  // Foundation copies a plain literal; its own would be written over by its copy.
  std::vector<std::max_align_t> memory(descriptor->plain.size / sizeof(std::max_align_t) + 1);
  auto* const literal = reinterpret_cast<BlockLayout*>(memory.data());
  std::memcpy(static_cast<void*>(literal), block, descriptor->plain.size);
  literal->isa = abi::_NSConcreteStackBlock;
  literal->flags |= kCopiedByFoundation;
  literal->invoke = field(block->invoke, kFieldSigning, "a block's function");
  literal->descriptor = &descriptor->plain;
  auto* const copied = static_cast<BlockLayout*>(abi::_Block_copy(literal));
  sign_field(copied->invoke);
  return copied;
}

}  // namespace wispen::loader
