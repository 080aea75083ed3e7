// host/plist/types.hpp: the kinds of value that a property list holds.
#pragma once

#include <cstdint>
#include <limits>

namespace wispen::plist {

/// A file's format; what it says about text encodings inside XML is kept elsewhere.
enum class Format : std::uint8_t { Xml, Binary };

enum class Type : std::uint8_t { Boolean, Integer, Real, String, Data, Date, Array, Dictionary, Uid };

/// "a string", "an array": for messages.
const char* name_of(Type type);

/// A whole number from -2^63 to 2^64-1.
struct Integer {
  /// Two's complement; when `unsigned64` is set, a value above 2^63-1.
  std::uint64_t bits = 0;
  bool unsigned64 = false;

  static constexpr Integer of(std::int64_t value) { return {static_cast<std::uint64_t>(value), false}; }
  static constexpr Integer of_unsigned(std::uint64_t value) {
    return {value, value > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())};
  }

  /// The value; a number above 2^63-1 wraps round, as a cast would.
  constexpr std::int64_t signed_value() const { return static_cast<std::int64_t>(bits); }
  constexpr bool negative() const { return !unsigned64 && signed_value() < 0; }

  friend constexpr bool operator==(Integer, Integer) = default;
};

}  // namespace wispen::plist
