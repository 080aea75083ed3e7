// host/plist/xml_text.hpp: character data of XML, as it stands and as it is meant.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace wispen::plist {

/// What XML can hold: no control character but tab, line feed and carriage return, no U+FFFE or U+FFFF.
bool is_xml_character(char32_t character);

/// The character that "&...;" at the start of `text` stands for, and its length; nothing when it is neither
/// one of the five names nor a number of a character that XML can hold.
struct Reference {
  char32_t character = 0;
  std::size_t length = 0;
};
std::optional<Reference> parse_reference(std::string_view text);

/// The meaning of checked content: references resolved, comments and processing instructions dropped, CDATA
/// sections opened, line ends made line feeds.
std::string decode_content(std::string_view content);

/// Text as content; `text` holds only what XML can hold. A carriage return becomes a reference, since a
/// literal one would be read as a line feed.
void append_escaped(std::string& xml, std::string_view text);

/// Whether XML can hold the text, which must be UTF-8; else the first character that it cannot hold.
std::optional<char32_t> find_unholdable(std::string_view text);

}  // namespace wispen::plist
