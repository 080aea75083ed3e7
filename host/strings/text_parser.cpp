// host/strings/text_parser.cpp: the list of `"key" = "text";` that .strings files hold.

#include "host/strings/text_parser.hpp"

#include <utility>

#include "host/plist/utf.hpp"

namespace wispen::strings {

void TextParser::run(Entries& entries) {
  if (const std::size_t bad = plist::utf8_error_offset(text_); bad != text_.size()) {
    // Entries before the bad byte are read as usual. What then seems to end too early ends at that byte.
    text_ = text_.substr(0, bad);
    while (skip_space() && !at_end() && entry(entries)) {
    }
    if (!error() || at_end()) fail(bad, "expected UTF-8 or, after a byte order mark, UTF-16");
    return;
  }
  while (skip_space() && !at_end() && entry(entries)) {
  }
}

bool TextParser::entry(Entries& entries) {
  std::string key;
  if (!token("a key", key) || !skip_space()) return false;
  std::string value = key;
  const bool has_value = !at_end() && text_[at_] == '=';
  if (has_value) {
    ++at_;
    if (!skip_space() || !token("a text", value) || !skip_space()) return false;
  }
  if (at_end() || text_[at_] != ';') {
    const char* expected =
        has_value ? R"(expected ";" after the text of ")" : R"(expected "=" or ";" after ")";
    return fail(expected + key + "\", found " + found());
  }
  ++at_;
  entries.insert_or_assign(std::move(key), std::move(value));
  return true;
}

}  // namespace wispen::strings
