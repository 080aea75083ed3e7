// wispen/macho/bytes.hpp: numbers out of bytes that nobody has checked yet.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>
#include <type_traits>

namespace wispen::macho {

static_assert(std::endian::native == std::endian::little,
              "Mach-O images for today's devices are little-endian");

/// A T at an offset, or nothing where the bytes end before.
template <class T>
std::optional<T> read_at(std::string_view bytes, std::uint64_t offset) {
  static_assert(std::is_trivially_copyable_v<T>);
  if (offset > bytes.size() || bytes.size() - offset < sizeof(T)) return std::nullopt;
  T value;
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

/// Whether [offset, offset + size) lies within `whole` bytes.
constexpr bool fits(std::uint64_t offset, std::uint64_t size, std::uint64_t whole) {
  return offset <= whole && size <= whole - offset;
}

/// The part of the bytes, empty where it does not fit.
inline std::string_view part(std::string_view bytes, std::uint64_t offset, std::uint64_t size) {
  return fits(offset, size, bytes.size()) ? bytes.substr(offset, size) : std::string_view();
}

/// The text up to a zero byte; nothing where none follows.
inline std::optional<std::string_view> text_at(std::string_view bytes, std::uint64_t offset) {
  if (offset >= bytes.size()) return std::nullopt;
  const std::size_t end = bytes.find('\0', offset);
  if (end == std::string_view::npos) return std::nullopt;
  return bytes.substr(offset, end - offset);
}

/// A fixed field that a zero ends, unless it fills the field.
template <std::size_t N>
std::string_view text_of(const char (&field)[N]) {
  return {field, ::strnlen(field, N)};
}

/// Reads one number after the other. After the first that is not there, all are 0 and ok() is false.
class Cursor {
 public:
  explicit Cursor(std::string_view bytes) : bytes_(bytes) {}

  bool ok() const { return ok_; }
  bool at_end() const { return at_ >= bytes_.size(); }
  std::size_t position() const { return at_; }

  std::uint8_t byte() {
    if (at_end()) return fail();
    return static_cast<std::uint8_t>(bytes_[at_++]);
  }
  /// Base 128, least first: https://en.wikipedia.org/wiki/LEB128
  std::uint64_t uleb() {
    std::uint64_t value = 0;
    for (unsigned shift = 0; shift < 64; shift += 7) {
      const std::uint8_t next = byte();
      const std::uint64_t bits = next & 0x7FU;
      if (shift == 63 && bits > 1) return fail();
      value |= bits << shift;
      if ((next & 0x80U) == 0) return ok_ ? value : 0;
    }
    return fail();
  }
  std::int64_t sleb() {
    std::uint64_t value = 0;
    for (unsigned shift = 0; shift < 64; shift += 7) {
      const std::uint8_t next = byte();
      value |= static_cast<std::uint64_t>(next & 0x7FU) << shift;
      if ((next & 0x80U) != 0) continue;
      if ((next & 0x40U) != 0 && shift + 7 < 64) value |= ~std::uint64_t{0} << (shift + 7);
      return ok_ ? static_cast<std::int64_t>(value) : 0;
    }
    return fail();
  }
  std::string_view text() {
    const auto found = text_at(bytes_, at_);
    if (!found) {
      fail();
      return {};
    }
    at_ += found->size() + 1;
    return *found;
  }

 private:
  std::uint8_t fail() {
    ok_ = false;
    at_ = bytes_.size();
    return 0;
  }

  std::string_view bytes_;
  std::size_t at_ = 0;
  bool ok_ = true;
};

}  // namespace wispen::macho
