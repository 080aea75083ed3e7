// host/plist/xml_markup.cpp: the parts of XmlParser that usual files hardly need: what may stand
// around and between elements, tags with extras, characters that are not plain.
#include <algorithm>
#include <cstring>

#include "host/plist/byte_scan.hpp"
#include "host/plist/utf.hpp"
#include "host/plist/xml_bytes.hpp"
#include "host/plist/xml_parser.hpp"
#include "host/plist/xml_text.hpp"

namespace wispen::plist {

void XmlParser::skip_space() {
  while (is_space(*at_)) ++at_;
}

bool XmlParser::skip_comment() {
  const char* start = at_;
  const std::string_view rest(at_, static_cast<std::size_t>(end_ - at_));
  const std::size_t close = rest.find("-->", 4);
  if (close == std::string_view::npos) return fail_at(start, "the comment is not closed");
  if (utf8_error_offset(rest.substr(0, close)) != close) return fail("the comment is not UTF-8");
  at_ += close + 3;
  return true;
}

bool XmlParser::skip_instruction() {
  const std::string_view rest(at_, static_cast<std::size_t>(end_ - at_));
  const std::size_t close = rest.find("?>");
  if (close == std::string_view::npos) return fail("the processing instruction is not closed");
  const std::string_view instruction = rest.substr(0, close);
  if (utf8_error_offset(instruction) != close) return fail("the processing instruction is not UTF-8");
  if (instruction.starts_with("<?xml") && !check_encoding(instruction)) return false;
  at_ += close + 2;
  return true;
}

bool XmlParser::check_encoding(std::string_view instruction) {
  const std::size_t attribute = instruction.find("encoding");
  if (attribute == std::string_view::npos) return true;
  const std::size_t open = instruction.find_first_of("\"'", attribute);
  if (open == std::string_view::npos) return fail("the declared encoding has no name");
  const std::size_t close = instruction.find(instruction[open], open + 1);
  if (close == std::string_view::npos) return fail("the declared encoding has no name");
  std::string name(instruction.substr(open + 1, close - open - 1));
  std::transform(name.begin(), name.end(), name.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
  const bool utf8 = name == "UTF-8" || name == "UTF8";
  const bool utf16 = name.starts_with("UTF-16");
  if (encoding_ == XmlEncoding::Utf8 ? utf8 : utf16) return true;
  if (utf8 || utf16) return fail("the file declares " + name + " but is written otherwise");
  return fail("the encoding " + name + " is not supported");
}

bool XmlParser::skip_doctype() {
  if (doctype_seen_) return fail("a second document type");
  doctype_seen_ = true;
  char quote = 0;
  for (const char* c = at_; c != end_; ++c) {
    if (quote != 0) {
      if (*c == quote) quote = 0;
    } else if (*c == '"' || *c == '\'') {
      quote = *c;
    } else if (*c == '[') {
      // An internal subset can define entities, and entities of entities without end.
      return fail_at(c, "a document type with an internal subset is not supported");
    } else if (*c == '>') {
      if (!is_utf8({at_, static_cast<std::size_t>(c - at_)})) return fail("the document type is not UTF-8");
      at_ = c + 1;
      return true;
    }
  }
  return fail("the document type is not closed");
}

bool XmlParser::skip_misc(bool doctype_allowed) {
  for (;;) {
    skip_space();
    if (matches(at_, "<!--")) {
      if (!skip_comment()) return false;
    } else if (matches(at_, "<?")) {
      if (!skip_instruction()) return false;
    } else if (doctype_allowed && matches(at_, "<!DOCTYPE")) {
      if (!skip_doctype()) return false;
    } else {
      return true;
    }
  }
}

bool XmlParser::open_tag_with_extras(Tag& tag) {
  const char* start = at_;
  const char* name_end = at_ + 1;
  while (*name_end >= 'a' && *name_end <= 'z') ++name_end;
  const std::string_view name(at_ + 1, static_cast<std::size_t>(name_end - at_ - 1));
  for (int i = 0; i <= static_cast<int>(Name::Data); ++i) {
    if (name != spelling(static_cast<Name>(i))) continue;
    tag.name = static_cast<Name>(i);
    at_ = name_end;
    if (!is_space(*at_) && *at_ != '>' && *at_ != '/') break;
    return skip_attributes(tag.empty);
  }
  if (start + 1 == end_) return fail("the file ends inside a tag");
  return fail_at(start, "<" + std::string(name) + "...> is no element of a property list");
}

bool XmlParser::skip_attributes(bool& empty) {
  for (;;) {
    skip_space();
    const char c = *at_;
    if (c == '>') {
      empty = false;
      ++at_;
      return true;
    }
    if (c == '/' && at_[1] == '>') {
      empty = true;
      at_ += 2;
      return true;
    }
    const char* name = at_;
    while (static_cast<signed char>(*at_) > ' ' && std::strchr("<>/=\"'", *at_) == nullptr) ++at_;
    const bool named = at_ != name;
    skip_space();
    if (!named || *at_ != '=') {
      return fail(at_ == end_ ? "the file ends inside a tag" : "the tag is malformed");
    }
    ++at_;
    skip_space();
    const char quote = *at_;
    if (quote != '"' && quote != '\'') return fail("an attribute's value must be quoted");
    const char* value = ++at_;
    while (at_ != end_ && *at_ != quote && *at_ != '<') ++at_;
    if (*at_ != quote) return fail("an attribute's value is not closed");
    if (!is_utf8({value, static_cast<std::size_t>(at_ - value)})) return fail("an attribute is not UTF-8");
    ++at_;
  }
}

bool XmlParser::character(bool& plain) {
  const char c = *at_;
  if (c == '\t' || c == '\n') {
    ++at_;
    return true;
  }
  if (c == '\r') {
    plain = false;
    ++at_;
    return true;
  }
  if (c == '&') {
    const auto reference =
        parse_reference({at_, std::min(static_cast<std::size_t>(end_ - at_), std::size_t{64})});
    if (!reference) return fail("\"&\" does not begin a known character reference");
    plain = false;
    at_ += reference->length;
    return true;
  }
  if (static_cast<std::uint8_t>(c) < 0x80) {
    return at_ == end_ ? fail("the file ends inside an element")
                       : fail("the control character " + printable(c) + " is not allowed");
  }
  const std::size_t length = utf8_sequence_length(at_);
  if (length == 0) return fail("the byte " + printable(c) + " is not UTF-8");
  if (matches(at_, "\xEF\xBF\xBE") || matches(at_, "\xEF\xBF\xBF")) {
    return fail("U+FFFE and U+FFFF are no characters");
  }
  at_ += length;
  return true;
}

bool XmlParser::character_data(std::string_view name, bool& plain) {
  for (;;) {
    at_ = find_text_stop(at_);
    if (*at_ != '<') {
      if (!character(plain)) return false;
      continue;
    }
    if (at_[1] == '/') return true;
    plain = false;
    if (matches(at_, "<!--")) {
      if (!skip_comment()) return false;
    } else if (matches(at_, "<?")) {
      if (!skip_instruction()) return false;
    } else if (matches(at_, "<![CDATA[")) {
      const std::string_view rest(at_, static_cast<std::size_t>(end_ - at_));
      const std::size_t close = rest.find("]]>");
      if (close == std::string_view::npos) return fail("the CDATA section is not closed");
      const char* stop = at_ + close;
      at_ += sizeof "<![CDATA[" - 1;
      while (at_ < stop) {
        if (*at_ == '<' || *at_ == '&' || static_cast<signed char>(*at_) >= ' ') {
          ++at_;
        } else if (!character(plain)) {
          return false;
        }
      }
      at_ = stop + 3;
    } else {
      return fail(at_ + 1 == end_ ? "the file ends inside an element"
                                  : "expected </" + std::string(name) + ">, found another tag");
    }
  }
}

}  // namespace wispen::plist
