// host/plist/scalars.hpp: numbers, dates and data as the text that XML property lists hold.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/plist/types.hpp"

namespace wispen::plist {

/// Decimal or, after "0x", hexadecimal digits with an optional sign and white space around; nothing when
/// there is anything else or the number does not fit.
std::optional<Integer> parse_integer(std::string_view text);

/// A decimal number, "nan", or "inf" or "infinity" with an optional sign, in any case. A number too large
/// for a double is infinite, one too small is zero, as the platform's own reader has it.
std::optional<double> parse_real(std::string_view text);
/// Whether parse_real() would give a number, for less.
bool is_real(std::string_view text);

/// The shortest text that reads back as the same double; "nan", "+infinity", "-infinity".
std::string format_real(double value);

/// "2001-01-01T00:00:00Z" as seconds since that moment; years of four or more digits.
std::optional<double> parse_date(std::string_view text);
/// The date's whole second; nothing outside the years 0 to 9999.
std::optional<std::string> format_date(double seconds);

/// Base64 with white space anywhere, padded.
std::optional<std::vector<std::uint8_t>> parse_base64(std::string_view text);
bool is_base64(std::string_view text);
std::string format_base64(const std::vector<std::uint8_t>& bytes);

}  // namespace wispen::plist
