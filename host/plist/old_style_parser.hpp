// host/plist/old_style_parser.hpp: property lists from before XML: `{ key = value; list = (a, b);
// }`.
#pragma once

#include "host/plist/text_tokens.hpp"
#include "host/plist/tree.hpp"

namespace wispen::plist {

/// Whether text that is not XML may be such a list: it begins, after comments, with a dictionary or an array.
bool looks_old_style(std::string_view text);

/// Reads UTF-8 text. Dictionaries are `{ key = value; }`, where `key;` stands for a key that is its own
/// value, arrays
/// `(a, b)`, data `<0fbd 77>`; all else is a string. The format is the public one of OpenStep's property
/// lists.
class OldStyleParser : private TextTokens {
 public:
  using TextTokens::error;
  using TextTokens::TextTokens;

  /// The list; an error, with its line, where there is none or where it is nested deeper than a reader takes.
  Result<Tree> run();

 private:
  bool value(Tree& value, std::size_t depth);
  bool dictionary(Dictionary& members, std::size_t depth);
  bool array(Array& elements, std::size_t depth);
  bool data(Data& bytes);
};

}  // namespace wispen::plist
