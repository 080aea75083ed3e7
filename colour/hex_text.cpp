// colour/hex_text.cpp: colours as hexadecimal text, and how dark they are.

#include "colour/hex_text.hpp"

#include <array>
#include <cstdint>
#include <cstdio>
#include <limits>

#include "colour/truncation.hpp"
#include "platform/System.h"

namespace wispen::colour {

namespace {

/// The platform's white space and newlines.
bool is_space(char16_t unit) {
  return (unit >= 0x09 && unit <= 0x0D) || unit == 0x20 || unit == 0x85 || unit == 0xA0 || unit == 0x1680 ||
         (unit >= 0x2000 && unit <= 0x200B) || unit == 0x2028 || unit == 0x2029 || unit == 0x202F ||
         unit == 0x205F || unit == 0x3000;
}

std::u16string_view without_leading_space(std::u16string_view text) {
  while (!text.empty() && is_space(text.front())) text.remove_prefix(1);
  return text;
}

/// 16 for everything that is not a digit.
unsigned digit_value(char16_t unit) {
  if (unit >= u'0' && unit <= u'9') return unit - u'0';
  if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10U;
  if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10U;
  return 16;
}

std::uint32_t scan_hex(std::u16string_view text) {
  text = without_leading_space(text);
  if (text.starts_with(u"0x") || text.starts_with(u"0X")) text.remove_prefix(2);
  std::uint64_t value = 0;
  for (const char16_t unit : text) {
    const unsigned digit = digit_value(unit);
    if (digit == 16) break;
    value = value * 16 + digit;
    if (value > std::numeric_limits<std::uint32_t>::max()) return std::numeric_limits<std::uint32_t>::max();
  }
  return static_cast<std::uint32_t>(value);
}

/// The longest decimal number at the beginning, in single precision; 0 where there is none.
float scan_float(std::u16string_view text) {
  std::string number;
  for (const char16_t unit : without_leading_space(text)) {
    const bool part_of_number = (unit >= u'0' && unit <= u'9') || unit == u'.' || unit == u'e' ||
                                unit == u'E' || unit == u'+' || unit == u'-';
    if (!part_of_number) break;  // so neither words for infinity nor hexadecimal digits come through
    number.push_back(static_cast<char>(unit));
  }
  return platform_strtof_l(number.c_str(), nullptr, nullptr);
}

}  // namespace

Components components_from_hex(std::u16string_view text) {
  if (text.empty()) return {};
  Components result;
  if (const auto colon = text.find(u':'); colon != text.npos) {
    result.alpha = static_cast<double>(scan_float(text.substr(colon + 1)));
  }
  // A "#" anywhere else stops the scan before its first digit, also behind white space.
  const std::uint32_t value = scan_hex(text.starts_with(u'#') ? text.substr(1) : text);
  result.red = ((value >> 16) & 0xFF) / 255.0;
  result.green = ((value >> 8) & 0xFF) / 255.0;
  result.blue = (value & 0xFF) / 255.0;
  return result;
}

std::string hex_from_components(const Components& components) {
  const auto digits = [](double component) { return static_cast<unsigned>(truncated(component * 255.0)); };
  std::array<char, 32> text{};
  const int length = std::snprintf(text.data(), text.size(), "#%02X%02X%02X", digits(components.red),
                                   digits(components.green), digits(components.blue));
  return {text.data(), static_cast<std::size_t>(length)};
}

bool is_dark(const Components& c) { return (c.red * 299 + c.green * 587 + c.blue * 114) / 1000 < 0.5; }

}  // namespace wispen::colour
