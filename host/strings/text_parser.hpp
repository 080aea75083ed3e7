// host/strings/text_parser.hpp: the list of `"key" = "text";` that .strings files hold.
#pragma once

#include <string_view>

#include "host/plist/text_tokens.hpp"
#include "host/strings/table.hpp"

namespace wispen::strings {

/// Reads UTF-8 text; `key;` alone stands for a key that is its own text.
class TextParser : public plist::TextTokens {
 public:
  using TextTokens::TextTokens;

  /// Adds entries up to the end or the first mistake, which error() then names with its line.
  void run(Entries& entries);

 private:
  bool entry(Entries& entries);
};

}  // namespace wispen::strings
