#include "host/plist/xml_contents.hpp"

#include <string>

#include "host/plist/scalars.hpp"
#include "host/plist/xml_text.hpp"

namespace wispen::plist {

namespace {

std::size_t closing_tag_length(const XmlElement& element) {
  switch (element.type) {
    case Type::String:
      return element.has(XmlElement::kKey) ? sizeof "</key>" - 1 : sizeof "</string>" - 1;
    case Type::Integer:
      return sizeof "</integer>" - 1;
    case Type::Array:
      return sizeof "</array>" - 1;
    default:
      return sizeof "</real>" - 1;  // real, date, data and dict are all of four letters
  }
}

/// The length of an opening tag that was too long to be noted: up to the '>' outside quotes.
std::size_t measure_tag(std::string_view element) {
  char quote = 0;
  for (std::size_t i = 0; i < element.size(); ++i) {
    const char c = element[i];
    if (quote != 0) {
      if (c == quote) quote = 0;
    } else if (c == '"' || c == '\'') {
      quote = c;
    } else if (c == '>') {
      return i + 1;
    }
  }
  return element.size();
}

}  // namespace

std::string_view XmlContents::content(Node node) const {
  const XmlElement& element = elements_[node];
  if (element.has(XmlElement::kEmpty)) return {};
  std::string_view whole = source().substr(element.begin, element.end - element.begin);
  const std::size_t open =
      element.open_tag_length != XmlElement::kLongTag ? element.open_tag_length : measure_tag(whole);
  // A closing tag may have space before its '>', which the plain form has not.
  const std::size_t close =
      element.has(XmlElement::kPlain) ? whole.size() - closing_tag_length(element) : whole.rfind('<');
  return whole.substr(open, close - open);
}

std::optional<std::string_view> XmlContents::text_in_place(Node node) const {
  const XmlElement& element = elements_[node];
  if (element.has(XmlElement::kPlain) || element.has(XmlElement::kEmpty)) return content(node);
  return std::nullopt;
}

std::string XmlContents::text(Node node) const {
  const std::optional<std::string_view> in_place = text_in_place(node);
  return in_place ? std::string(*in_place) : decode_content(content(node));
}

Integer XmlContents::integer(Node node) const {
  const std::optional<std::string_view> in_place = text_in_place(node);
  return (in_place ? parse_integer(*in_place) : parse_integer(text(node))).value_or(Integer{});
}

double XmlContents::number(Node node) const {
  const std::string digits = text(node);
  return (type(node) == Type::Date ? parse_date(digits) : parse_real(digits)).value_or(0);
}

std::vector<std::uint8_t> XmlContents::data(Node node) const {
  const std::optional<std::string_view> in_place = text_in_place(node);
  return (in_place ? parse_base64(*in_place) : parse_base64(text(node)))
      .value_or(std::vector<std::uint8_t>{});
}

std::size_t XmlContents::count(Node container) const {
  std::size_t count = 0;
  for (Position at = first(container); at != end(container); at = next(container, at)) ++count;
  return count;
}

std::optional<Node> XmlContents::find(Node dictionary, std::string_view key) const {
  std::optional<Node> found;
  const Node end = elements_[dictionary].next;
  for (Node at = dictionary + 1; at != end; at = elements_[at + 1].next) {
    if (key_is(at, key)) found = at + 1;
  }
  return found;
}

}  // namespace wispen::plist
