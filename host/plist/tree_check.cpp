#include "host/plist/tree_check.hpp"

#include <cmath>
#include <cstdio>

#include "host/plist/limits.hpp"
#include "host/plist/scalars.hpp"
#include "host/plist/utf.hpp"
#include "host/plist/xml_text.hpp"

namespace wispen::plist {

namespace {

/// Stands for a date among the characters that XML cannot hold.
constexpr char32_t kDate = 0xFFFFFFFF;

// The walks give back no sentences: these would make each of up to kMaxDepth stack frames several times as
// big.
std::optional<char32_t> obstacle(const Tree& tree) {
  if (const auto* text = tree.as<std::string>()) return find_unholdable(*text);
  if (const auto* date = tree.as<Date>()) {
    return format_date(date->seconds) ? std::nullopt : std::optional<char32_t>(kDate);
  }
  if (const auto* array = tree.as<Array>()) {
    for (const Tree& element : *array) {
      if (const auto found = obstacle(element)) return found;
    }
  }
  if (const auto* dictionary = tree.as<Dictionary>()) {
    for (const Member& member : *dictionary) {
      if (const auto found = find_unholdable(member.key)) return found;
      if (const auto found = obstacle(member.value)) return found;
    }
  }
  return std::nullopt;
}

std::optional<std::string> sentence(std::optional<char32_t> obstacle) {
  if (!obstacle) return std::nullopt;
  if (*obstacle == kDate) return "XML cannot hold a date outside the years 0 to 9999";
  char text[64];
  const int length = std::snprintf(text, sizeof text, "XML cannot hold the character U+%04X",
                                   static_cast<unsigned>(*obstacle));
  return std::string(text, static_cast<std::size_t>(length));
}

}  // namespace

const char* find_unwritable(std::string_view text) {
  return is_utf8(text) ? nullptr : "a string is not UTF-8";
}

const char* find_unwritable(const Tree& tree, std::size_t depth) {
  static_assert(kMaxDepth == 512, "the sentence below names it");
  if (const auto* text = tree.as<std::string>()) return find_unwritable(std::string_view{*text});
  if (const auto* date = tree.as<Date>()) {
    return std::isfinite(date->seconds) ? nullptr : "a date is not a finite number of seconds";
  }
  const auto* array = tree.as<Array>();
  const auto* dictionary = tree.as<Dictionary>();
  // In XML a UID is a dictionary too.
  const bool container = array != nullptr || dictionary != nullptr || tree.type() == Type::Uid;
  if (container && depth > kMaxDepth) {
    return "the property list would have more than 512 containers inside one another";
  }
  if (array != nullptr) {
    for (const Tree& element : *array) {
      if (const char* reason = find_unwritable(element, depth + 1)) return reason;
    }
  }
  if (dictionary != nullptr) {
    for (const Member& member : *dictionary) {
      if (const char* reason = find_unwritable(std::string_view{member.key})) return reason;
      if (const char* reason = find_unwritable(member.value, depth + 1)) return reason;
    }
  }
  return nullptr;
}

std::optional<std::string> find_unholdable_by_xml(std::string_view text) {
  return sentence(find_unholdable(text));
}

std::optional<std::string> find_unholdable_by_xml(const Tree& tree) { return sentence(obstacle(tree)); }

}  // namespace wispen::plist
