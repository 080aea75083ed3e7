#include "host/files/recycled_memory.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <memory>

namespace wispen::files {

namespace {

// AddressSanitizer sees a read past the end, or after the end of a life, only of blocks of their exact size
// that are really freed.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kRecycles = false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kRecycles = false;
#else
constexpr bool kRecycles = true;
#endif
#else
constexpr bool kRecycles = true;
#endif

constexpr std::size_t kSmallest = std::size_t{1} << 10;
constexpr std::size_t kLargest = std::size_t{1} << 20;
constexpr std::size_t kClasses = std::bit_width(kLargest / kSmallest);
constexpr std::size_t kPerClass = 2;  // a file and its index may be of the same size

bool is_kept(std::size_t size) { return kRecycles && size <= kLargest; }

/// All blocks of a class have the same size, a power of two, so that one is as good as another.
std::size_t block_size(std::size_t size) {
  return is_kept(size) ? std::bit_ceil(std::max(size, kSmallest)) : std::max(size, std::size_t{1});
}

std::size_t class_of(std::size_t size) {
  return static_cast<std::size_t>(std::bit_width(block_size(size) / kSmallest)) - 1;
}

void release(void* block, std::size_t size) noexcept {
  std::allocator<char>().deallocate(static_cast<char*>(block), block_size(size));
}

struct Shelf {
  std::array<void*, kPerClass> blocks = {};
  std::size_t count = 0;
};

// Outlives the shelves: a document that is destroyed after them must not be put there.
thread_local bool shelves_closed = false;

struct Shelves {
  std::array<Shelf, kClasses> shelves = {};

  ~Shelves() {
    clear();
    shelves_closed = true;
  }
  void clear() noexcept {
    for (std::size_t i = 0; i < kClasses; ++i) {
      Shelf& shelf = shelves[i];
      while (shelf.count > 0) release(shelf.blocks[--shelf.count], kSmallest << i);
    }
  }
};

Shelves& shelves() {
  thread_local Shelves own;
  return own;
}

}  // namespace

void* take_block(std::size_t size) {
  if (is_kept(size) && !shelves_closed) {
    Shelf& shelf = shelves().shelves[class_of(size)];
    if (shelf.count > 0) return shelf.blocks[--shelf.count];
  }
  return std::allocator<char>().allocate(block_size(size));
}

void give_block(void* block, std::size_t size) noexcept {
  if (block == nullptr) return;
  if (is_kept(size) && !shelves_closed) {
    Shelf& shelf = shelves().shelves[class_of(size)];
    if (shelf.count < kPerClass) {
      shelf.blocks[shelf.count++] = block;
      return;
    }
  }
  release(block, size);
}

void free_kept_blocks() noexcept {
  if (!shelves_closed) shelves().clear();
}

}  // namespace wispen::files
