#include "host/foundation/plist/tree_check.hpp"

#include <cstdio>

#include "host/foundation/plist/limits.hpp"
#include "host/foundation/plist/scalars.hpp"
#include "host/foundation/plist/utf.hpp"
#include "host/foundation/plist/xml_text.hpp"

namespace wispen::plist {

std::optional<std::string> findUnwritable(std::string_view text) {
  if (isUtf8(text)) return std::nullopt;
  return "a string is not UTF-8";
}

std::optional<std::string> findUnwritable(const Tree& tree, std::size_t depth) {
  if (const std::string* text = tree.as<std::string>()) return findUnwritable(std::string_view(*text));
  const Array* array = tree.as<Array>();
  const Dictionary* dictionary = tree.as<Dictionary>();
  // In XML a UID is a dictionary too.
  const bool container = array != nullptr || dictionary != nullptr || tree.type() == Type::Uid;
  if (container && depth > kMaxDepth) {
    return "the property list would have more than " + std::to_string(kMaxDepth) +
           " containers inside one another";
  }
  if (array != nullptr) {
    for (const Tree& element : *array) {
      if (auto reason = findUnwritable(element, depth + 1)) return reason;
    }
  }
  if (dictionary != nullptr) {
    for (const Member& member : *dictionary) {
      if (auto reason = findUnwritable(std::string_view(member.key))) return reason;
      if (auto reason = findUnwritable(member.value, depth + 1)) return reason;
    }
  }
  return std::nullopt;
}

std::optional<std::string> findUnholdableByXml(std::string_view text) {
  const std::optional<char32_t> character = findUnholdable(text);
  if (!character) return std::nullopt;
  char sentence[64];
  const int length = std::snprintf(sentence, sizeof sentence, "XML cannot hold the character U+%04X",
                                   static_cast<unsigned>(*character));
  return std::string(sentence, static_cast<std::size_t>(length));
}

std::optional<std::string> findUnholdableByXml(const Tree& tree) {
  if (const std::string* text = tree.as<std::string>()) return findUnholdableByXml(std::string_view(*text));
  if (const Date* date = tree.as<Date>()) {
    if (!formatDate(date->seconds)) return "XML cannot hold a date outside the years 0 to 9999";
  }
  if (const Array* array = tree.as<Array>()) {
    for (const Tree& element : *array) {
      if (auto reason = findUnholdableByXml(element)) return reason;
    }
  }
  if (const Dictionary* dictionary = tree.as<Dictionary>()) {
    for (const Member& member : *dictionary) {
      if (auto reason = findUnholdableByXml(std::string_view(member.key))) return reason;
      if (auto reason = findUnholdableByXml(member.value)) return reason;
    }
  }
  return std::nullopt;
}

}  // namespace wispen::plist
