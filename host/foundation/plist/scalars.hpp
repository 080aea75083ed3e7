// host/foundation/plist/scalars.hpp: numbers, dates and data as the text that XML property lists hold.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/foundation/plist/types.hpp"

namespace wispen::plist {

/// Decimal or, after "0x", hexadecimal digits with an optional sign and white space around; nothing when
/// there is anything else or the number does not fit.
std::optional<Integer> parseInteger(std::string_view text);

/// A decimal number, "nan", or "inf" or "infinity" with an optional sign, in any case. A number too large
/// for a double is infinite, one too small is zero, as the platform's own reader has it.
std::optional<double> parseReal(std::string_view text);
/// Whether parseReal() would give a number, for less.
bool isReal(std::string_view text);

/// The shortest text that reads back as the same double; "nan", "+infinity", "-infinity".
std::string formatReal(double value);

/// "2001-01-01T00:00:00Z" as seconds since that moment; years of four or more digits.
std::optional<double> parseDate(std::string_view text);
/// The date's whole second; nothing outside the years 0 to 9999.
std::optional<std::string> formatDate(double seconds);

/// Base64 with white space anywhere, padded.
std::optional<std::vector<std::uint8_t>> parseBase64(std::string_view text);
bool isBase64(std::string_view text);
std::string formatBase64(const std::vector<std::uint8_t>& bytes);

}  // namespace wispen::plist
