// host/foundation/strings/text_parser.hpp: the list of `"key" = "text";` that .strings files hold.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/foundation/strings/table.hpp"

namespace wispen::strings {

/// Reads UTF-8 text. Between entries it takes // and /* */ comments; a key or text is quoted, with the
/// escapes of C and \Uxxxx for UTF-16 units, or bare when it is made of letters, digits and _ $ / : . -;
/// `key;` alone stands for a key that is its own text.
class TextParser {
 public:
  explicit TextParser(std::string_view text) : text_(text) {}

  /// Adds entries up to the end or the first mistake, which error() then names with its line.
  void run(Entries& entries);
  const std::optional<Error>& error() const { return error_; }

 private:
  bool fail(std::size_t place, std::string message);
  bool fail(std::string message) { return fail(at_, std::move(message)); }
  bool at_end() const { return at_ == text_.size(); }
  bool skip_space();
  bool entry(Entries& entries);
  bool token(const char* what, std::string& token);
  bool quoted(std::string& token);
  bool escape(std::string& token);
  bool unicode_escape(std::string& token);
  bool hex_unit(char16_t& unit);
  std::string found() const;

  std::string_view text_;
  std::size_t at_ = 0;
  std::optional<Error> error_;
};

}  // namespace wispen::strings
