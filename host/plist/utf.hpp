// host/plist/utf.hpp: UTF-8 and UTF-16, checked and converted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace wispen::plist {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;

enum class ByteOrder : std::uint8_t { Little, Big };

/// The length of the well-formed UTF-8 sequence at `text`, whose first byte is above 0x7F; 0 when there is
/// none. Reads no further than the first byte that does not belong, so a zero is end enough.
std::size_t utf8_sequence_length(const char* text);

/// Whether all of `text` is well-formed UTF-8.
bool is_utf8(std::string_view text);

/// The first byte of `text` that is no well-formed UTF-8, or its size.
std::size_t utf8_error_offset(std::string_view text);

/// The character at `offset`, which is moved past it. `text` must be well-formed.
char32_t next_character(std::string_view text, std::size_t& offset);

/// Appends a character, which must not be a surrogate.
void append_utf8(std::string& text, char32_t character);

/// UTF-16 bytes (without a mark) as UTF-8; nothing when a surrogate stands alone or half a unit is left.
std::optional<std::string> utf8_from_utf16_strict(std::string_view bytes, ByteOrder order);

/// The same, with U+FFFD in the place of each lone surrogate.
std::string utf8_from_utf16(std::string_view bytes, ByteOrder order);

/// Appends well-formed UTF-8 as UTF-16 bytes without a mark.
void append_utf16(std::string& bytes, std::string_view text, ByteOrder order);

}  // namespace wispen::plist
