// host/plist/byte_scan.hpp: the searches that a parser spends its time in, 16 bytes at a time.
#pragma once

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace wispen::plist {

/// The first byte that ends plain text in XML: '<', '&', one below space or above 0x7F. The bytes must end
/// in files::Buffer's padding, whose zeros stop the search.
inline const char* find_text_stop(const char* text) {
#if defined(__SSE2__)
  for (;; text += 16) {
    __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
    // As signed numbers the bytes above 0x7F are below space too.
    const __m128i special = _mm_or_si128(
        _mm_cmplt_epi8(block, _mm_set1_epi8(0x20)),
        _mm_or_si128(_mm_cmpeq_epi8(block, _mm_set1_epi8('<')), _mm_cmpeq_epi8(block, _mm_set1_epi8('&'))));
    const auto mask = static_cast<unsigned>(_mm_movemask_epi8(special));
    if (mask != 0) return text + __builtin_ctz(mask);
  }
#else
  while (static_cast<signed char>(*text) >= 0x20 && *text != '<' && *text != '&') ++text;
  return text;
#endif
}

/// Whether every byte is below 0x80.
inline bool is_ascii(std::string_view text) {
  const char* bytes = text.data();
  const std::size_t size = text.size();
  const auto word = [bytes](std::size_t offset) {
    std::uint64_t value = 0;
    std::memcpy(&value, bytes + offset, sizeof value);
    return value;
  };
  constexpr std::uint64_t kHighBits = 0x8080808080808080U;
  if (size >= 8) {
    // The last word overlaps the one before it, which is cheaper than single bytes.
    std::uint64_t seen = word(size - 8);
    for (std::size_t offset = 0; offset + 8 < size; offset += 8) seen |= word(offset);
    return (seen & kHighBits) == 0;
  }
  std::uint8_t seen = 0;
  for (const char c : text) seen |= static_cast<std::uint8_t>(c);
  return seen < 0x80;
}

}  // namespace wispen::plist
