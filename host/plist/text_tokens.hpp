// host/plist/text_tokens.hpp: the words, quoted texts and comments of old-style lists.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "host/core/result.hpp"

namespace wispen::plist {

/// Reads UTF-8 text token by token, for the parsers of strings tables and of old-style property lists.
/// Between tokens it takes white space and // and /* */ comments. A token is quoted, with the escapes of C
/// and \Uxxxx for UTF-16 units, or bare when it is made of letters, digits and _ $ / : . -
class TextTokens {
 public:
  explicit TextTokens(std::string_view text) : text_(text) {}

  /// The first mistake, with its line.
  const std::optional<Error>& error() const { return error_; }

 protected:
  /// Notes the mistake and gives false.
  bool fail(std::size_t place, std::string message);
  bool fail(std::string message) { return fail(at_, std::move(message)); }
  bool at_end() const { return at_ == text_.size(); }
  /// Whether the next character is this one; it is passed over then.
  bool take(char c);
  bool skip_space();
  /// A quoted or bare token; `what` names it in the error.
  bool token(const char* what, std::string& token);
  /// What stands here, for an error.
  std::string found() const;

  std::string_view text_;
  std::size_t at_ = 0;

 private:
  bool quoted(std::string& token);
  bool escape(std::string& token);
  bool unicode_escape(std::string& token);
  bool hex_unit(char16_t& unit);

  std::optional<Error> error_;
};

}  // namespace wispen::plist
