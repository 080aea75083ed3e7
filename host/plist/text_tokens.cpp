// host/plist/text_tokens.cpp: the words, quoted texts and comments of old-style lists.

#include "host/plist/text_tokens.hpp"

#include <algorithm>
#include <charconv>
#include <utility>

#include "host/plist/utf.hpp"

namespace wispen::plist {

namespace {

bool is_bare(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '$' ||
         c == '/' || c == ':' || c == '.' || c == '-';
}

bool is_octal(char c) { return c >= '0' && c <= '7'; }

}  // namespace

bool TextTokens::fail(std::size_t place, std::string message) {
  const auto line = std::count(text_.begin(), text_.begin() + static_cast<std::ptrdiff_t>(place), '\n') + 1;
  error_ = Error{"line " + std::to_string(line) + ": " + std::move(message)};
  return false;
}

std::string TextTokens::found() const {
  if (at_end()) return "the end of the file";
  const auto byte = static_cast<unsigned char>(text_[at_]);
  if (byte > ' ' && byte < 0x7F) return "'" + std::string(1, text_[at_]) + "'";
  const std::size_t length =
      byte < 0x80 ? 0 : utf8_sequence_length(std::string(text_.substr(at_, 4)).c_str());
  return length == 0 ? "a byte that is not text" : "'" + std::string(text_.substr(at_, length)) + "'";
}

bool TextTokens::skip_space() {
  for (;;) {
    at_ = std::min(text_.find_first_not_of(" \t\r\n\v\f", at_), text_.size());
    const std::string_view rest = text_.substr(at_);
    if (rest.starts_with("//")) {
      at_ = std::min(text_.find_first_of("\r\n", at_), text_.size());
    } else if (rest.starts_with("/*")) {
      const std::size_t close = text_.find("*/", at_ + 2);
      if (close == std::string_view::npos) {
        const std::size_t begin = std::exchange(at_, text_.size());
        return fail(begin, R"(expected "*/" at the end of the comment that begins here)");
      }
      at_ = close + 2;
    } else {
      return true;
    }
  }
}

bool TextTokens::take(char c) {
  if (at_end() || text_[at_] != c) return false;
  ++at_;
  return true;
}

bool TextTokens::token(const char* what, std::string& token) {
  if (!at_end() && text_[at_] == '"') return quoted(token);
  const std::size_t begin = at_;
  while (!at_end() && is_bare(text_[at_])) ++at_;
  if (at_ == begin) return fail("expected " + std::string(what) + ", found " + found());
  token = text_.substr(begin, at_ - begin);
  return true;
}

bool TextTokens::quoted(std::string& token) {
  const std::size_t begin = at_++;
  token.clear();
  for (;;) {
    const std::size_t stop = text_.find_first_of("\"\\", at_);
    // Named where it begins: a forgotten quote swallows all lines up to the next one.
    if (stop == std::string_view::npos) {
      at_ = text_.size();
      return fail(begin, "expected '\"' at the end of the text that begins here");
    }
    token += text_.substr(at_, stop - at_);
    at_ = stop + 1;
    if (text_[stop] == '"') return true;
    if (!escape(token)) return false;
  }
}

bool TextTokens::escape(std::string& token) {
  if (at_end()) return fail(R"(expected a character after "\", found the end of the file)");
  const char c = text_[at_++];
  switch (c) {
    case 'a':
      token.push_back('\a');
      return true;
    case 'b':
      token.push_back('\b');
      return true;
    case 'f':
      token.push_back('\f');
      return true;
    case 'n':
      token.push_back('\n');
      return true;
    case 'r':
      token.push_back('\r');
      return true;
    case 't':
      token.push_back('\t');
      return true;
    case 'v':
      token.push_back('\v');
      return true;
    case 'U':
    case 'u':
      return unicode_escape(token);
    default:
      break;
  }
  if (!is_octal(c)) {
    // A quote, a backslash, a line end, or a character that needed no escape: itself.
    token.push_back(c);
    return true;
  }
  auto character = static_cast<char32_t>(c - '0');
  for (int digits = 1; digits < 3 && !at_end() && is_octal(text_[at_]); ++digits) {
    character = character * 8 + static_cast<char32_t>(text_[at_++] - '0');
  }
  append_utf8(token, character);
  return true;
}

bool TextTokens::hex_unit(char16_t& unit) {
  constexpr std::size_t kDigits = 4;
  std::uint16_t number = 0;
  const std::string_view digits = text_.substr(at_, kDigits);
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
  if (error != std::errc() || end != digits.data() + kDigits) return false;
  unit = number;
  at_ += kDigits;
  return true;
}

bool TextTokens::unicode_escape(std::string& token) {
  char16_t unit = 0;
  if (!hex_unit(unit)) return fail(R"(expected four hexadecimal digits after "\U")");
  char32_t character = unit;
  if (unit >= 0xD800 && unit < 0xDC00) {
    const std::size_t after = at_;
    const bool another = text_.substr(at_).starts_with("\\U") || text_.substr(at_).starts_with("\\u");
    at_ += another ? 2 : 0;
    char16_t low = 0;
    if (another && hex_unit(low) && low >= 0xDC00 && low < 0xE000) {
      character = 0x10000U + ((unit & 0x3FFU) << 10 | (low & 0x3FFU));
    } else {
      at_ = after;
      character = kReplacementCharacter;
    }
  } else if (unit >= 0xDC00 && unit < 0xE000) {
    character = kReplacementCharacter;
  }
  append_utf8(token, character);
  return true;
}

}  // namespace wispen::plist
