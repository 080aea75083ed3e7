// host/plist/xml_contents.hpp: the index of an XML property list.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "host/core/result.hpp"
#include "host/files/buffer.hpp"
#include "host/files/recycled_memory.hpp"
#include "host/plist/contents.hpp"

namespace wispen::plist {

/// How the file spells its characters. The document itself is always kept as UTF-8.
enum class XmlEncoding : std::uint8_t { Utf8, Utf16Little, Utf16Big };

/// One element, in the order of the file; a container's children follow it, and a dictionary's keys are
/// elements of their own. 16 bytes, because a page reads a whole file for one value and filling the index
/// is most of what that costs.
struct XmlElement {
  static constexpr std::uint8_t kPlain = 1;  ///< content is literal text, between tags without extras
  static constexpr std::uint8_t kEmpty = 2;  ///< <string/>
  static constexpr std::uint8_t kTrue = 4;
  static constexpr std::uint8_t kKey = 8;
  static constexpr std::uint16_t kLongTag = 0xFFFF;  ///< the opening tag's length must be looked up

  std::uint32_t begin = 0;  ///< offset of the opening '<'
  std::uint32_t end = 0;    ///< offset behind the closing '>'
  Node next = 0;            ///< index of the element behind this one and all its children
  std::uint16_t open_tag_length = 0;
  Type type = Type::Boolean;
  std::uint8_t flags = 0;

  bool has(std::uint8_t flag) const { return (flags & flag) != 0; }
};
static_assert(sizeof(XmlElement) == 16);
using XmlElements = std::vector<XmlElement, files::RecyclingAllocator<XmlElement>>;

class XmlContents final : public Contents {
 public:
  /// Checks the whole text. `text` is UTF-8 without a byte order mark at most at its start; `encoding` is
  /// what the file itself is in.
  static Result<std::shared_ptr<const XmlContents>> parse(files::Buffer text, XmlEncoding encoding);
  /// An index that a parser has made; parse() is the way to one.
  XmlContents(files::Buffer source, XmlElements elements, XmlEncoding encoding)
      : source_(std::move(source)), elements_(std::move(elements)), encoding_(encoding) {}

  Format format() const override { return Format::Xml; }
  Node root() const override { return 0; }
  Type type(Node node) const override { return elements_[node].type; }
  bool boolean(Node node) const override { return elements_[node].has(XmlElement::kTrue); }
  Integer integer(Node node) const override;
  double number(Node node) const override;
  std::uint64_t uid(Node) const override { return 0; }
  std::vector<std::uint8_t> data(Node node) const override;
  std::string text(Node node) const override;
  std::optional<std::string_view> text_in_place(Node node) const override;
  std::size_t count(Node container) const override;
  Position first(Node container) const override { return container + 1; }
  Position end(Node container) const override { return elements_[container].next; }
  Position next(Node container, Position position) const override {
    return elements_[value_at(container, position)].next;
  }
  Node key_at(Node, Position position) const override { return position; }
  Node value_at(Node container, Position position) const override {
    return type(container) == Type::Dictionary ? position + 1 : position;
  }
  std::optional<Node> find(Node dictionary, std::string_view key) const override;

  /// Whether a dictionary's key says this. Nearly all keys are plain text in plain tags: then equal lengths
  /// and bytes decide.
  bool key_is(Node node, std::string_view key) const {
    constexpr std::size_t kOpen = sizeof "<key>" - 1;
    constexpr std::size_t kTags = sizeof "<key></key>" - 1;
    const XmlElement& element = elements_[node];
    if (!element.has(XmlElement::kPlain) || element.open_tag_length != kOpen) return text(node) == key;
    return element.end - element.begin == key.size() + kTags &&
           source_.view().substr(element.begin + kOpen, key.size()) == key;
  }

  XmlEncoding encoding() const { return encoding_; }
  /// The whole file as UTF-8, its byte order mark included.
  std::string_view source() const { return source_.view(); }
  const XmlElement& element(Node node) const { return elements_[node]; }
  /// What stands between an element's tags.
  std::string_view content(Node node) const;

 private:
  files::Buffer source_;
  XmlElements elements_;
  XmlEncoding encoding_;
};

}  // namespace wispen::plist
