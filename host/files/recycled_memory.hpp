// host/files/recycled_memory.hpp: memory for files and their indexes, used again and again.
#pragma once

#include <cstddef>

namespace wispen::files {

/// A block of at least `size` bytes, aligned for anything. Throws std::bad_alloc.
///
/// A page reads a whole file for each of its rows. An allocator that has just been handed thousands of small
/// objects sorts them all when it is asked for a large block, which can take longer than reading the file; so
/// each thread keeps a few blocks of every size up to a megabyte that it gave back.
void* take_block(std::size_t size);
/// Gives back what take_block(size) gave, on whichever thread.
void give_block(void* block, std::size_t size) noexcept;

/// Frees the blocks that the calling thread keeps.
void free_kept_blocks() noexcept;

/// Lets a standard container live in such blocks.
template <class T>
struct RecyclingAllocator {
  using value_type = T;

  RecyclingAllocator() = default;
  template <class U>
  RecyclingAllocator(const RecyclingAllocator<U>&) {}  // NOLINT(google-explicit-constructor)

  T* allocate(std::size_t count) { return static_cast<T*>(take_block(count * sizeof(T))); }
  void deallocate(T* block, std::size_t count) noexcept { give_block(block, count * sizeof(T)); }
  friend bool operator==(RecyclingAllocator, RecyclingAllocator) { return true; }
};

}  // namespace wispen::files
