// host/plist/old_style_parser.cpp: property lists from before XML: `{ key = value; list = (a, b);
// }`.

#include "host/plist/old_style_parser.hpp"

#include <charconv>
#include <utility>

#include "host/plist/limits.hpp"
#include "host/plist/utf.hpp"

namespace wispen::plist {

namespace {

/// The first thing in a text that is not white space or a comment.
class Beginning : private TextTokens {
 public:
  using TextTokens::TextTokens;
  bool is_container() { return skip_space() && (take('{') || take('(')); }
};

}  // namespace

bool looks_old_style(std::string_view text) { return Beginning(text).is_container(); }

Result<Tree> OldStyleParser::run() {
  Tree root;
  if (const std::size_t bad = utf8_error_offset(text_); bad != text_.size()) {
    fail(bad, "expected UTF-8 or, after a byte order mark, UTF-16");
  } else if (value(root, 1) && skip_space() && !at_end()) {
    fail("expected the end of the file, found " + found());
  }
  if (error()) return *error();
  return root;
}

bool OldStyleParser::value(Tree& value, std::size_t depth) {
  if (!skip_space()) return false;
  if (depth > kMaxDepth)
    return fail("containers are nested more than " + std::to_string(kMaxDepth) + " deep");
  if (take('{')) {
    Dictionary members;
    if (!dictionary(members, depth)) return false;
    value = std::move(members);
  } else if (take('(')) {
    Array elements;
    if (!array(elements, depth)) return false;
    value = std::move(elements);
  } else if (take('<')) {
    Data bytes;
    if (!data(bytes)) return false;
    value = std::move(bytes);
  } else {
    std::string text;
    if (!token("a value", text)) return false;
    value = std::move(text);
  }
  return true;
}

bool OldStyleParser::dictionary(Dictionary& members, std::size_t depth) {
  for (;;) {
    if (!skip_space()) return false;
    if (take('}')) return true;
    std::string key;
    if (!token("a key", key) || !skip_space()) return false;
    Tree value = key;
    if (take('=') && (!this->value(value, depth + 1) || !skip_space())) return false;
    if (!take(';')) return fail("expected \";\" after the value of \"" + key + "\", found " + found());
    members.push_back({std::move(key), std::move(value)});
  }
}

bool OldStyleParser::array(Array& elements, std::size_t depth) {
  for (;;) {
    if (!skip_space()) return false;
    if (take(')')) return true;
    if (!value(elements.emplace_back(), depth + 1) || !skip_space()) return false;
    if (!take(',') && (at_end() || text_[at_] != ')'))
      return fail("expected \",\" or \")\", found " + found());
  }
}

bool OldStyleParser::data(Data& bytes) {
  for (;;) {
    if (!skip_space()) return false;
    if (take('>')) return true;
    std::uint8_t byte = 0;
    const std::string_view digits = text_.substr(at_, 2);
    const auto [end, problem] = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
    if (problem != std::errc() || digits.size() < 2 || end != digits.data() + 2) {
      return fail("expected two hexadecimal digits or \">\", found " + found());
    }
    bytes.push_back(byte);
    at_ += 2;
  }
}

}  // namespace wispen::plist
