// host/plist/big_endian.hpp: numbers as binary property lists store them.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

namespace wispen::plist {

/// `size` bytes, 1 to 8, the most significant first.
inline std::uint64_t read_big_endian(const char* bytes, std::size_t size) {
  switch (size) {
    case 1:
      return static_cast<std::uint8_t>(*bytes);
    case 2: {
      std::uint16_t number = 0;
      std::memcpy(&number, bytes, sizeof number);
      return std::endian::native == std::endian::little ? __builtin_bswap16(number) : number;
    }
    case 3:  // the offsets of most files between 64 KB and 16 MB
      return std::uint64_t{static_cast<std::uint8_t>(bytes[0])} << 16 |
             std::uint64_t{static_cast<std::uint8_t>(bytes[1])} << 8 | static_cast<std::uint8_t>(bytes[2]);
    case 4: {
      std::uint32_t number = 0;
      std::memcpy(&number, bytes, sizeof number);
      return std::endian::native == std::endian::little ? __builtin_bswap32(number) : number;
    }
    default: {
      std::uint64_t number = 0;
      for (std::size_t i = 0; i < size; ++i) number = number << 8 | static_cast<std::uint8_t>(bytes[i]);
      return number;
    }
  }
}

/// Writes `size` bytes, 1 to 8.
inline void write_big_endian(char* bytes, std::uint64_t number, std::size_t size) {
  for (std::size_t i = size; i-- > 0; number >>= 8) bytes[i] = static_cast<char>(number & 0xFF);
}

inline void append_big_endian(std::string& bytes, std::uint64_t number, std::size_t size) {
  char buffer[8];
  write_big_endian(buffer, number, size);
  bytes.append(buffer, size);
}

/// Calls `work` with the size, which is a constant to the compiler where it is one of the usual ones: a
/// number is then a load or two, or a store or two.
template <class Work>
void with_known_size(std::size_t size, Work work) {
  switch (size) {
    case 1:
      return work(std::integral_constant<std::size_t, 1>());
    case 2:
      return work(std::integral_constant<std::size_t, 2>());
    case 3:
      return work(std::integral_constant<std::size_t, 3>());
    default:
      return work(size);
  }
}

/// Appends `count` numbers that stand one after the other.
inline void read_all_big_endian(std::vector<std::uint32_t>& numbers, const char* bytes, std::size_t count,
                                std::size_t size) {
  const std::size_t start = numbers.size();
  numbers.resize(start + count);
  with_known_size(size, [&](auto width) {
    for (std::size_t i = 0; i < count; ++i)
      numbers[start + i] = static_cast<std::uint32_t>(read_big_endian(bytes + i * width, width));
  });
}

/// Appends each of many numbers.
template <class Numbers, class Convert>
void append_all_big_endian(std::string& bytes, const Numbers& numbers, std::size_t size, Convert convert) {
  const std::size_t start = bytes.size();
  bytes.resize(start + numbers.size() * size);
  with_known_size(size, [&, at = bytes.data() + start](auto width) mutable {
    for (const auto number : numbers) {
      write_big_endian(at, convert(number), width);
      at += width;
    }
  });
}

/// How many bytes a number needs, 1 to 8.
inline std::uint8_t bytes_for(std::uint64_t number) {
  std::uint8_t size = 1;
  while (size < 8 && number >> (8 * size) != 0) ++size;
  return size;
}

}  // namespace wispen::plist
