#include "host/plist/scalars.hpp"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

namespace wispen::plist {

namespace {

constexpr bool is_space(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }
constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && is_space(text.front())) text.remove_prefix(1);
  while (!text.empty() && is_space(text.back())) text.remove_suffix(1);
  return text;
}

bool equals_ignoring_case(std::string_view text, std::string_view lower) {
  if (text.size() != lower.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if ((text[i] | 0x20) != lower[i]) return false;
  }
  return true;
}

/// The parts of a decimal number that say whether it is one and how large it is.
struct Decimal {
  bool valid = false;
  bool zero = true;
  long magnitude = 0;  ///< power of ten of the first digit that counts
};

Decimal inspect_decimal(std::string_view text) {
  Decimal decimal;
  std::size_t i = 0;
  long digits = 0;
  long point = -1;
  long first = -1;
  for (; i < text.size() && (is_digit(text[i]) || (text[i] == '.' && point < 0)); ++i) {
    if (text[i] == '.') {
      point = digits;
      continue;
    }
    if (text[i] != '0' && first < 0) first = digits;
    ++digits;
  }
  if (digits == 0) return decimal;
  long exponent = 0;
  if (i < text.size() && (text[i] | 0x20) == 'e') {
    ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';
    if (i == text.size()) return decimal;
    for (; i < text.size() && is_digit(text[i]); ++i) {
      if (exponent < 1'000'000'000) exponent = exponent * 10 + (text[i] - '0');
    }
    if (negative) exponent = -exponent;
  }
  decimal.valid = i == text.size();
  decimal.zero = first < 0;
  decimal.magnitude = (point < 0 ? digits : point) - first + exponent;
  return decimal;
}

std::optional<double> named_real(std::string_view text) {
  if (equals_ignoring_case(text, "nan")) return std::numeric_limits<double>::quiet_NaN();
  if (equals_ignoring_case(text, "inf") || equals_ignoring_case(text, "infinity")) {
    return std::numeric_limits<double>::infinity();
  }
  return std::nullopt;
}

/// Takes an optional sign off the text.
bool take_sign(std::string_view& text) {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  return negative;
}

constexpr std::array<std::int8_t, 256> kBase64Values = [] {
  std::array<std::int8_t, 256> values{};
  values.fill(-1);
  std::int8_t value = 0;
  for (char c = 'A'; c <= 'Z'; ++c) values[static_cast<std::uint8_t>(c)] = value++;
  for (char c = 'a'; c <= 'z'; ++c) values[static_cast<std::uint8_t>(c)] = value++;
  for (char c = '0'; c <= '9'; ++c) values[static_cast<std::uint8_t>(c)] = value++;
  values['+'] = value++;
  values['/'] = value;
  return values;
}();

constexpr std::string_view kBase64Digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// Calls take(value) for each digit; false when the text is not Base64.
template <class Take>
bool each_base64_digit(std::string_view text, Take take) {
  std::size_t digits = 0;
  std::size_t padding = 0;
  for (const char c : text) {
    if (is_space(c)) continue;
    if (c == '=') {
      ++padding;
      continue;
    }
    const std::int8_t value = kBase64Values[static_cast<std::uint8_t>(c)];
    if (value < 0 || padding > 0) return false;
    ++digits;
    take(static_cast<std::uint32_t>(value));
  }
  return padding <= 2 && (digits + padding) % 4 == 0 && digits % 4 != 1;
}

// Civil days from the Gregorian rules: 400 years hold 146,097 days, and a year that begins in March has its
// leap day at its end.
std::int64_t days_from_civil(std::int64_t year, int month, int day) {
  year -= month <= 2 ? 1 : 0;
  const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
  const std::int64_t year_of_era = year - era * 400;
  const std::int64_t day_of_year = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  return era * 146097 + year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year;
}

constexpr std::int64_t kReferenceDay = 730791;  // days_from_civil(2001, 1, 1)

int days_of_month(std::int64_t year, int month) {
  constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
  return kDays[static_cast<std::size_t>(month - 1)] + (month == 2 && leap ? 1 : 0);
}

/// Reads exactly `count` digits and then `next`.
bool take_number(std::string_view& text, std::size_t count, char next, int& number) {
  if (text.size() < count + 1 || text[count] != next) return false;
  number = 0;
  for (std::size_t i = 0; i < count; ++i) {
    if (!is_digit(text[i])) return false;
    number = number * 10 + (text[i] - '0');
  }
  text.remove_prefix(count + 1);
  return true;
}

}  // namespace

std::optional<Integer> parse_integer(std::string_view text) {
  text = trimmed(text);
  const bool negative = take_sign(text);
  int base = 10;
  if (text.starts_with("0x") || text.starts_with("0X")) {
    base = 16;
    text.remove_prefix(2);
  }
  std::uint64_t magnitude = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), magnitude, base);
  if (text.empty() || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  if (!negative) return Integer::of_unsigned(magnitude);
  if (magnitude > std::uint64_t{1} << 63) return std::nullopt;
  return Integer{~magnitude + 1, false};
}

bool is_real(std::string_view text) {
  text = trimmed(text);
  take_sign(text);
  return inspect_decimal(text).valid || named_real(text).has_value();
}

std::optional<double> parse_real(std::string_view text) {
  text = trimmed(text);
  const bool negative = take_sign(text);
  std::optional<double> value = named_real(text);
  if (!value) {
    const Decimal decimal = inspect_decimal(text);
    if (!decimal.valid) return std::nullopt;
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc::result_out_of_range) {
      number = !decimal.zero && decimal.magnitude > 0 ? std::numeric_limits<double>::infinity() : 0.0;
    }
    value = number;
  }
  return negative && !std::isnan(*value) ? -*value : *value;
}

std::string format_real(double value) {
  if (std::isnan(value)) return "nan";
  if (std::isinf(value)) return value > 0 ? "+infinity" : "-infinity";
  char text[32];
  const auto [end, error] = std::to_chars(std::begin(text), std::end(text), value);
  return {text, end};
}

std::optional<double> parse_date(std::string_view text) {
  text = trimmed(text);
  const bool before_year_zero = text.starts_with('-');
  if (before_year_zero) text.remove_prefix(1);
  const std::size_t year_digits = text.find('-');
  if (year_digits == std::string_view::npos || year_digits < 4 || year_digits > 8) return std::nullopt;
  int year = 0;
  int month = 0;
  int day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
  if (!take_number(text, year_digits, '-', year) || !take_number(text, 2, '-', month) ||
      !take_number(text, 2, 'T', day) || !take_number(text, 2, ':', hour) ||
      !take_number(text, 2, ':', minute) || !take_number(text, 2, 'Z', second) || !text.empty()) {
    return std::nullopt;
  }
  if (before_year_zero) year = -year;
  if (month < 1 || month > 12 || day < 1 || day > days_of_month(year, month)) return std::nullopt;
  if (hour > 23 || minute > 59 || second > 59) return std::nullopt;
  const std::int64_t days = days_from_civil(year, month, day) - kReferenceDay;
  return static_cast<double>(days * 86400 + std::int64_t{hour} * 3600 + std::int64_t{minute} * 60 + second);
}

std::optional<std::string> format_date(double seconds) {
  constexpr double kAboutTenThousandYears = 3.2e11;
  if (!(std::fabs(seconds) < kAboutTenThousandYears)) return std::nullopt;
  const auto whole = static_cast<std::int64_t>(std::floor(seconds));
  std::int64_t days = whole / 86400;
  std::int64_t rest = whole % 86400;
  if (rest < 0) {
    rest += 86400;
    --days;
  }
  days += kReferenceDay;
  const std::int64_t era = (days >= 0 ? days : days - 146096) / 146097;
  const std::int64_t day_of_era = days - era * 146097;
  const std::int64_t year_of_era =
      (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
  const std::int64_t day_of_year = day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
  const std::int64_t shifted_month = (5 * day_of_year + 2) / 153;
  const auto day = static_cast<int>(day_of_year - (153 * shifted_month + 2) / 5 + 1);
  const auto month = static_cast<int>(shifted_month < 10 ? shifted_month + 3 : shifted_month - 9);
  const std::int64_t year = year_of_era + era * 400 + (month <= 2 ? 1 : 0);
  if (year < 0 || year > 9999) return std::nullopt;
  char text[64];
  const int length = std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02dZ",
                                   static_cast<int>(year), month, day, static_cast<int>(rest / 3600),
                                   static_cast<int>(rest / 60 % 60), static_cast<int>(rest % 60));
  return std::string(text, static_cast<std::size_t>(length));
}

bool is_base64(std::string_view text) {
  return each_base64_digit(text, [](std::uint32_t) {});
}

std::optional<std::vector<std::uint8_t>> parse_base64(std::string_view text) {
  std::vector<std::uint8_t> bytes;
  bytes.reserve(text.size() / 4 * 3);
  std::uint32_t bits = 0;
  int count = 0;
  const bool valid = each_base64_digit(text, [&](std::uint32_t value) {
    bits = bits << 6 | value;
    if (++count % 4 != 1) bytes.push_back(static_cast<std::uint8_t>(bits >> (8 - count % 4 * 2) % 8));
  });
  if (!valid) return std::nullopt;
  return bytes;
}

std::string format_base64(const std::vector<std::uint8_t>& bytes) {
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  std::uint32_t bits = 0;
  std::size_t count = 0;
  for (const std::uint8_t byte : bytes) {
    bits = bits << 8 | byte;
    if (++count % 3 != 0) continue;
    for (int shift = 18; shift >= 0; shift -= 6) text.push_back(kBase64Digits[bits >> shift & 0x3F]);
  }
  if (const std::size_t left = count % 3; left != 0) {
    bits <<= 8 * (3 - left);
    for (std::size_t i = 0; i <= left; ++i) text.push_back(kBase64Digits[bits >> (18 - 6 * i) & 0x3F]);
    text.append(3 - left, '=');
  }
  return text;
}

}  // namespace wispen::plist
