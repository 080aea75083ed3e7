// host/files/buffer.hpp: bytes with room behind them, so that a scanner may read past the end.
#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

#include "host/files/recycled_memory.hpp"

namespace wispen::files {

/// A block of bytes followed by kPadding zeros. A scanner that takes 16 bytes at a time, or that stops at a
/// zero, needs no check for the end.
class Buffer {
 public:
  static constexpr std::size_t kPadding = 32;

  Buffer() : Buffer(0) {}
  /// Room for `capacity` bytes, none of them used yet. What they hold is undefined.
  explicit Buffer(std::size_t capacity)
      : bytes_(static_cast<char*>(take_block(capacity + kPadding)), Giver{capacity + kPadding}),
        capacity_(capacity) {
    resize(0);
  }
  explicit Buffer(std::string_view bytes) : Buffer(bytes.size()) {
    if (!bytes.empty()) std::memcpy(data(), bytes.data(), bytes.size());
    resize(bytes.size());
  }

  char* data() { return bytes_.get(); }
  const char* data() const { return bytes_.get(); }
  std::size_t size() const { return size_; }
  std::size_t capacity() const { return capacity_; }
  std::string_view view() const { return {data(), size_}; }

  /// Says how many bytes are in use, at most capacity(), and zeroes those behind them.
  void resize(std::size_t size) {
    size_ = size;
    std::memset(data() + size, 0, kPadding);
  }

 private:
  struct Giver {
    std::size_t size = 0;
    void operator()(char* block) const noexcept { give_block(block, size); }
  };

  std::unique_ptr<char[], Giver> bytes_;
  std::size_t size_ = 0;
  std::size_t capacity_;
};

}  // namespace wispen::files
