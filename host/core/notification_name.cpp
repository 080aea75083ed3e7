// host/core/notification_name.cpp: how a notification's name becomes a file's name.

#include "host/core/notification_name.hpp"

#include <array>
#include <charconv>
#include <cstdint>

namespace wispen {
namespace {

constexpr std::size_t kLongest = 200;
constexpr std::size_t kKeptOfALongName = 120;
constexpr std::string_view kDigits = "0123456789abcdef";

bool stands_for_itself(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_' ||
         c == '.';
}

void append_hex(std::string& text, std::uint64_t value, int digits) {
  for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4) text += kDigits[(value >> shift) & 15];
}

/// FNV-1a, http://www.isthe.com/chongo/tech/comp/fnv/
std::uint64_t fnv1a(std::string_view text, std::uint64_t start) {
  std::uint64_t hash = start;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
  return hash;
}

}  // namespace

std::string notification_file_name(std::string_view name) {
  std::string file;
  file.reserve(name.size());
  for (const char c : name) {
    if (stands_for_itself(c) && !(c == '.' && file.empty())) {
      file += c;
    } else {
      file += '%';
      append_hex(file, static_cast<unsigned char>(c), 2);
    }
    if (file.size() > kLongest) break;
  }
  if (file.empty()) return "%";
  if (file.size() <= kLongest) return file;
  file.resize(kKeptOfALongName);
  file += "%%";
  append_hex(file, fnv1a(name, 0xcbf29ce484222325), 16);
  append_hex(file, fnv1a(name, 0x84222325cbf29ce4), 16);
  return file;
}

std::string notification_name_of_file(std::string_view file_name) {
  if (file_name == "%") return {};
  if (file_name.find("%%") != std::string_view::npos) return std::string(file_name);
  std::string name;
  for (std::size_t i = 0; i < file_name.size(); ++i) {
    unsigned value = 0;
    const char* digits = file_name.data() + i + 1;
    if (file_name[i] == '%' && i + 2 < file_name.size() &&
        std::from_chars(digits, digits + 2, value, 16).ptr == digits + 2) {
      name += static_cast<char>(value);
      i += 2;
    } else {
      name += file_name[i];
    }
  }
  return name;
}

}  // namespace wispen
