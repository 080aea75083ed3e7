#include "host/plist/xml_text.hpp"

#include <charconv>
#include <cstdint>

#include "host/plist/utf.hpp"

namespace wispen::plist {

namespace {

constexpr std::string_view kCdataStart = "<![CDATA[";
constexpr std::string_view kCdataEnd = "]]>";

struct NamedReference {
  std::string_view spelling;
  char character;
};
constexpr NamedReference kNamedReferences[] = {
    {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&apos;", '\''}, {"&quot;", '"'}};

/// Appends with CR LF and lone CR as LF, as every XML reader does.
void append_with_line_feeds(std::string& text, std::string_view part) {
  for (std::size_t i = 0; i < part.size(); ++i) {
    if (part[i] != '\r') {
      text.push_back(part[i]);
    } else if (i + 1 == part.size() || part[i + 1] != '\n') {
      text.push_back('\n');
    }
  }
}

}  // namespace

bool is_xml_character(char32_t c) {
  if (c < 0x20) return c == '\t' || c == '\n' || c == '\r';
  return c < 0xD800 || (c > 0xDFFF && c < 0xFFFE) || (c > 0xFFFF && c < 0x110000);
}

std::optional<Reference> parse_reference(std::string_view text) {
  for (const auto& [spelling, character] : kNamedReferences) {
    if (text.starts_with(spelling)) return Reference{static_cast<char32_t>(character), spelling.size()};
  }
  if (!text.starts_with("&#")) return std::nullopt;
  const bool hexadecimal = text.starts_with("&#x");
  const char* digits = text.data() + (hexadecimal ? 3 : 2);
  const char* limit = text.data() + text.size();
  std::uint32_t number = 0;
  const auto [end, error] = std::from_chars(digits, limit, number, hexadecimal ? 16 : 10);
  if (error != std::errc() || end == limit || *end != ';' || !is_xml_character(number)) return std::nullopt;
  return Reference{number, static_cast<std::size_t>(end + 1 - text.data())};
}

std::string decode_content(std::string_view content) {
  std::string text;
  text.reserve(content.size());
  while (!content.empty()) {
    const std::size_t stop = std::min(content.find_first_of("<&"), content.size());
    append_with_line_feeds(text, content.substr(0, stop));
    content.remove_prefix(stop);
    if (content.empty()) break;
    std::size_t length = 0;
    if (content.front() == '&') {
      const std::optional<Reference> reference = parse_reference(content);
      if (!reference) break;
      append_utf8(text, reference->character);
      length = reference->length;
    } else if (content.starts_with(kCdataStart)) {
      content.remove_prefix(kCdataStart.size());
      length = content.find(kCdataEnd);
      append_with_line_feeds(text, content.substr(0, length));
      length += kCdataEnd.size();
    } else if (content.starts_with("<!--")) {
      length = content.find("-->", 4) + 3;
    } else {
      length = content.find("?>") + 2;
    }
    content.remove_prefix(length);
  }
  return text;
}

void append_escaped(std::string& xml, std::string_view text) {
  while (!text.empty()) {
    const std::size_t stop = std::min(text.find_first_of("<>&\r"), text.size());
    xml.append(text.substr(0, stop));
    if (stop == text.size()) break;
    const char c = text[stop];
    xml.append(c == '<' ? "&lt;" : c == '>' ? "&gt;" : c == '&' ? "&amp;" : "&#13;");
    text.remove_prefix(stop + 1);
  }
}

std::optional<char32_t> find_unholdable(std::string_view text) {
  for (std::size_t offset = 0; offset < text.size();) {
    const char32_t character = next_character(text, offset);
    if (!is_xml_character(character)) return character;
  }
  return std::nullopt;
}

}  // namespace wispen::plist
