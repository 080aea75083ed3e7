// host/plist/xml_parser.cpp: one pass over an XML property list.

#include "host/plist/xml_parser.hpp"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "host/plist/byte_scan.hpp"
#include "host/plist/limits.hpp"
#include "host/plist/scalars.hpp"
#include "host/plist/xml_bytes.hpp"
#include "host/plist/xml_text.hpp"

namespace wispen::plist {

std::string_view XmlParser::spelling(Name name) {
  constexpr std::array<std::string_view, 11> kSpellings = {
      "plist", "dict", "array", "key", "string", "integer", "real", "true", "false", "date", "data"};
  return kSpellings[static_cast<std::size_t>(name)];
}

bool XmlParser::fail_at(const char* place, std::string message) {
  error_place_ = std::min(place, end_);
  error_ = std::move(message);
  return false;
}

std::string XmlParser::error() const {
  const auto line = std::count(begin_, error_place_, '\n') + 1;
  return "line " + std::to_string(line) + ": " + error_;
}

bool XmlParser::run() {
  // A bool value and its key take some 40 bytes of a usual file, a string more.
  elements_.reserve(static_cast<std::size_t>(end_ - begin_) / 24 + 8);
  if (starts_with("\xEF\xBB\xBF")) at_ += 3;
  if (!skip_misc(true)) return false;
  if (at_ == end_) return fail("there is no property list in the file");
  const bool wrapped = starts_with("<plist");
  if (wrapped) {
    Tag tag;
    if (!open_tag(tag)) return false;
    if (tag.empty) return fail("<plist/> holds no value");
  }
  if (!parse_values(wrapped)) return false;
  if (wrapped) {
    if (!skip_misc(false)) return false;
    bool canonical = false;
    if (!close_tag("plist", canonical)) return false;
  }
  if (!skip_misc(false)) return false;
  return at_ == end_ || fail("nothing may follow the property list");
}

bool XmlParser::open_tag(Tag& tag) {
  const auto take = [&](Name name, bool empty, std::size_t length) {
    tag = {name, empty};
    at_ += length;
    return true;
  };
  if (*at_ != '<') {
    return at_ == end_ ? fail("the file ends too early") : fail("expected a tag, found " + printable(*at_));
  }
  switch (at_[1]) {
    case 'k':
      if (matches(at_, "<key>")) return take(Name::Key, false, 5);
      break;
    case 's':
      if (matches(at_, "<string>")) return take(Name::String, false, 8);
      break;
    case 'i':
      if (matches(at_, "<integer>")) return take(Name::Integer, false, 9);
      break;
    case 't':
      if (matches(at_, "<true/>")) return take(Name::True, true, 7);
      break;
    case 'f':
      if (matches(at_, "<false/>")) return take(Name::False, true, 8);
      break;
    case 'r':
      if (matches(at_, "<real>")) return take(Name::Real, false, 6);
      break;
    case 'd':
      if (matches(at_, "<dict>")) return take(Name::Dict, false, 6);
      break;
    case 'a':
      if (matches(at_, "<array>")) return take(Name::Array, false, 7);
      break;
    default:
      break;
  }
  return open_tag_with_extras(tag);
}

bool XmlParser::close_tag(std::string_view name, bool& canonical) {
  const char* start = at_;
  if (at_[0] == '<' && at_[1] == '/' && std::memcmp(at_ + 2, name.data(), name.size()) == 0) {
    at_ += 2 + name.size();
    canonical = *at_ == '>';
    skip_space();
    if (*at_ == '>') {
      ++at_;
      return true;
    }
  }
  const std::string expected = "expected </" + std::string(name) + ">";
  if (start == end_ || at_ == end_) return fail(expected + ", but the file ends");
  return fail_at(start, expected);
}

bool XmlParser::check_scalar(Name name, std::string_view content, const char* place) {
  const auto refuse = [&](const char* what) {
    return fail_at(place, "\"" + std::string(content.substr(0, 40)) + "\" is not a " + what);
  };
  switch (name) {
    case Name::Integer:
      return parse_integer(content) || refuse("whole number from -2^63 to 2^64-1");
    case Name::Real:
      return is_real(content) || refuse("number");
    case Name::Date:
      return parse_date(content) || refuse("date of the form 2001-01-01T00:00:00Z");
    case Name::Data:
      return is_base64(content) || fail_at(place, "the data is not Base64");
    default:
      return true;
  }
}

bool XmlParser::scalar(const Tag& tag, XmlElement& element) {
  const std::string_view name = spelling(tag.name);
  const bool text = tag.name == Name::Key || tag.name == Name::String;
  if (tag.empty) {
    element.flags |= XmlElement::kEmpty;
    return text || check_scalar(tag.name, {}, at_);
  }
  const char* content = at_;
  bool plain = true;
  if (!character_data(name, plain)) return false;
  const std::string_view raw(content, static_cast<std::size_t>(at_ - content));
  if (!text && !(plain ? check_scalar(tag.name, raw, content)
                       : check_scalar(tag.name, decode_content(raw), content))) {
    return false;
  }
  bool canonical = false;
  if (!close_tag(name, canonical)) return false;
  if (plain && canonical) element.flags |= XmlElement::kPlain;
  return true;
}

template <std::size_t kSize>
bool XmlParser::take_text(const char (&closing)[kSize], const Tag& tag, XmlElement& element) {
  if (!tag.empty) {
    const char* stop = find_text_stop(at_);
    if (matches(stop, closing)) {
      at_ = stop + kSize - 1;
      element.flags |= XmlElement::kPlain;
      return true;
    }
  }
  return scalar(tag, element);
}

template <std::size_t kSize>
bool XmlParser::take_number(const char (&closing)[kSize], const Tag& tag, XmlElement& element) {
  if (!tag.empty) {
    // Short enough to fit 64 bits whatever its digits, so that nothing but its form has to be looked at.
    constexpr std::ptrdiff_t kSafeDigits = 18;
    const char* digits = at_ + (*at_ == '-' ? 1 : 0);
    const char* stop = digits;
    while (is_digit(*stop)) ++stop;
    bool number = stop != digits && stop - digits <= kSafeDigits;
    if (tag.name == Name::Real && *stop == '.') {
      const char* fraction = ++stop;
      while (is_digit(*stop)) ++stop;
      number = number && stop != fraction;
    }
    if (number && matches(stop, closing)) {
      at_ = stop + kSize - 1;
      element.flags |= XmlElement::kPlain;
      return true;
    }
  }
  return scalar(tag, element);
}

bool XmlParser::start_element(const Tag& tag, const char* begin) {
  const auto tag_length = static_cast<std::size_t>(at_ - begin);
  XmlElement element;
  element.begin = offset(begin);
  element.open_tag_length =
      static_cast<std::uint16_t>(std::min<std::size_t>(tag_length, XmlElement::kLongTag));
  switch (tag.name) {
    case Name::Dict:
    case Name::Array:
      element.type = tag.name == Name::Dict ? Type::Dictionary : Type::Array;
      if (open_.size() == kMaxDepth) {
        return fail_at(begin, "more than " + std::to_string(kMaxDepth) + " containers inside one another");
      }
      if (!tag.empty) {
        open_.push_back(static_cast<Node>(elements_.size()));
        elements_.push_back(element);
        expects_key_ = tag.name == Name::Dict;
        return true;
      }
      element.flags = XmlElement::kEmpty;
      break;
    case Name::True:
    case Name::False:
      element.type = Type::Boolean;
      element.flags = tag.name == Name::True ? XmlElement::kTrue : 0;
      if (!tag.empty) {
        bool canonical = false;
        if (!skip_misc(false) || !close_tag(spelling(tag.name), canonical)) return false;
      }
      break;
    case Name::Key:
      element.type = Type::String;
      element.flags = XmlElement::kKey;
      if (!take_text("</key>", tag, element)) return false;
      break;
    case Name::String:
      element.type = Type::String;
      if (!take_text("</string>", tag, element)) return false;
      break;
    case Name::Integer:
      element.type = Type::Integer;
      if (!take_number("</integer>", tag, element)) return false;
      break;
    case Name::Real:
      element.type = Type::Real;
      if (!take_number("</real>", tag, element)) return false;
      break;
    case Name::Date:
      element.type = Type::Date;
      if (!scalar(tag, element)) return false;
      break;
    case Name::Data:
      element.type = Type::Data;
      if (!scalar(tag, element)) return false;
      break;
    case Name::Plist:
      return fail_at(begin, "<plist> inside a property list");
  }
  element.end = offset(at_);
  element.next = static_cast<Node>(elements_.size() + 1);
  elements_.push_back(element);
  return true;
}

bool XmlParser::close_container() {
  XmlElement& container = elements_[open_.back()];
  const bool dictionary = container.type == Type::Dictionary;
  if (dictionary && !expects_key_) return fail("the key before </dict> has no value");
  bool canonical = false;
  if (!close_tag(spelling(dictionary ? Name::Dict : Name::Array), canonical)) return false;
  if (canonical) container.flags |= XmlElement::kPlain;
  container.end = offset(at_);
  container.next = static_cast<Node>(elements_.size());
  open_.pop_back();
  return true;
}

bool XmlParser::parse_values(bool inside_plist) {
  // Each turn takes one tag: a value, a key, or the end of the innermost container.
  do {
    while (is_space(*at_)) ++at_;
    if (*at_ == '<' && (at_[1] == '!' || at_[1] == '?')) {
      if (!skip_misc(false)) return false;
    }
    const bool in_dictionary = !open_.empty() && elements_[open_.back()].type == Type::Dictionary;
    if (*at_ == '<' && at_[1] == '/') {
      if (open_.empty()) {
        return fail(inside_plist ? "<plist> holds no value" : "a closing tag without its opening");
      }
      if (!close_container()) return false;
      expects_key_ = !open_.empty() && elements_[open_.back()].type == Type::Dictionary;
      continue;
    }
    const char* begin = at_;
    Tag tag;
    if (!open_tag(tag)) return false;
    if (in_dictionary && expects_key_ != (tag.name == Name::Key)) {
      return fail_at(begin, expects_key_ ? "expected <key>, found <" + std::string(spelling(tag.name)) + ">"
                                         : "the key before this one has no value");
    }
    if (!in_dictionary && tag.name == Name::Key) return fail_at(begin, "<key> outside a dictionary");
    const std::size_t depth = open_.size();
    if (!start_element(tag, begin)) return false;
    if (open_.size() == depth) expects_key_ = in_dictionary && tag.name != Name::Key;
  } while (!open_.empty());
  return true;
}

Result<std::shared_ptr<const XmlContents>> XmlContents::parse(files::Buffer text, XmlEncoding encoding) {
  XmlParser parser(text, encoding);
  if (!parser.run()) return Error{parser.error()};
  return std::shared_ptr<const XmlContents>(
      std::make_shared<XmlContents>(std::move(text), parser.take_elements(), encoding));
}

}  // namespace wispen::plist
