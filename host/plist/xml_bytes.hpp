// host/plist/xml_bytes.hpp: what the parts of the XML parser ask of single bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace wispen::plist {

inline bool is_digit(char c) { return c >= '0' && c <= '9'; }
inline bool is_space(char c) { return c == ' ' || c == '\n' || c == '\t' || c == '\r'; }

/// Compares a few bytes known when compiling, which becomes one or two comparisons of words. May look past
/// the text's end, into the padding.
template <std::size_t kSize>
inline bool matches(const char* at, const char (&literal)[kSize]) {
  return std::memcmp(at, literal, kSize - 1) == 0;
}

/// "0xE4"
inline std::string printable(char c) {
  const auto byte = static_cast<std::uint8_t>(c);
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  return {'0', 'x', kDigits[byte >> 4], kDigits[byte & 15]};
}

}  // namespace wispen::plist
