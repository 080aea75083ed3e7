// host/plist/xml_parser.hpp: one pass over an XML property list.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/files/buffer.hpp"
#include "host/plist/xml_contents.hpp"

namespace wispen::plist {

/// Checks a whole XML property list and notes where each of its elements stands. It works through its own
/// list of open elements, never by recursion, and looks at each byte once.
///
/// What it accepts: an optional byte order mark and XML declaration, comments, processing instructions and
/// one document type without an internal subset around or inside one value, in a <plist> element or bare.
class XmlParser {
 public:
  XmlParser(const files::Buffer& text, XmlEncoding encoding)
      : begin_(text.data()), end_(text.data() + text.size()), at_(begin_), encoding_(encoding) {}

  /// False when the text is no property list; error() then says why.
  bool run();

  XmlElements take_elements() { return std::move(elements_); }
  /// "line 12: ..."
  std::string error() const;

 private:
  enum class Name : std::uint8_t { Plist, Dict, Array, Key, String, Integer, Real, True, False, Date, Data };
  struct Tag {
    Name name = Name::Plist;
    bool empty = false;
  };

  bool fail_at(const char* place, std::string message);
  bool fail(std::string message) { return fail_at(at_, std::move(message)); }

  void skip_space();
  bool skip_comment();
  bool skip_instruction();
  bool skip_doctype();
  bool skip_misc(bool doctype_allowed);
  bool check_encoding(std::string_view instruction);

  bool open_tag(Tag& tag);
  bool open_tag_with_extras(Tag& tag);
  bool skip_attributes(bool& empty);
  bool close_tag(std::string_view name, bool& canonical);

  bool parse_values(bool inside_plist);
  bool start_element(const Tag& tag, const char* begin);
  bool close_container();
  bool character_data(std::string_view name, bool& plain);
  bool character(bool& plain);
  bool scalar(const Tag& tag, XmlElement& element);
  /// The usual forms of text and numbers, taken at a glance; all others are left to scalar().
  template <std::size_t kSize>
  bool take_text(const char (&closing)[kSize], const Tag& tag, XmlElement& element);
  template <std::size_t kSize>
  bool take_number(const char (&closing)[kSize], const Tag& tag, XmlElement& element);
  bool check_scalar(Name name, std::string_view content, const char* place);

  std::uint32_t offset(const char* place) const { return static_cast<std::uint32_t>(place - begin_); }
  bool starts_with(std::string_view text) const {
    return std::string_view(at_, static_cast<std::size_t>(end_ - at_)).starts_with(text);
  }

  static std::string_view spelling(Name name);

  const char* begin_;
  const char* end_;
  const char* at_;
  XmlEncoding encoding_;
  XmlElements elements_;
  std::vector<Node> open_;
  bool expects_key_ = false;
  bool doctype_seen_ = false;
  const char* error_place_ = nullptr;
  std::string error_;
};

}  // namespace wispen::plist
