// host/plist/binary_contents.hpp: the view of a binary property list.
#pragma once

#include <memory>

#include "host/core/result.hpp"
#include "host/files/buffer.hpp"
#include "host/plist/big_endian.hpp"
#include "host/plist/contents.hpp"

namespace wispen::plist {

/// The last 32 bytes of a binary property list, the format of which is public: "bplist00", objects, a table
/// of their offsets, and this.
struct BinaryTrailer {
  static constexpr std::size_t kSize = 32;
  std::uint8_t offset_size = 0;     ///< bytes of an entry of the offset table
  std::uint8_t reference_size = 0;  ///< bytes of a reference from a container to an object
  std::uint64_t object_count = 0;
  std::uint64_t root = 0;
  std::uint64_t offset_table = 0;
};

inline constexpr std::string_view kBinaryMagic = "bplist0";

/// The kinds of object, in the upper half of an object's first byte.
enum class Marker : std::uint8_t {
  Singleton = 0x0,
  Integer = 0x1,
  Real = 0x2,
  Date = 0x3,
  Bytes = 0x4,
  Ascii = 0x5,
  Utf16 = 0x6,
  Uid = 0x8,
  List = 0xA,
  Map = 0xD
};
inline constexpr std::uint8_t kBinaryFalse = 0x08;
inline constexpr std::uint8_t kBinaryTrue = 0x09;

/// Where one object stands: its kind, what the lower half of its first byte and a length behind it say, and
/// where its payload begins.
struct BinaryObject {
  Marker marker = Marker::Singleton;
  std::uint8_t low = 0;
  std::uint64_t count = 0;  ///< bytes, UTF-16 units, elements or pairs
  std::size_t begin = 0;
  std::size_t payload = 0;
  std::size_t payload_size = 0;

  std::size_t end() const { return payload + payload_size; }
  bool is_container() const { return marker == Marker::List || marker == Marker::Map; }
  std::uint64_t references() const { return marker == Marker::Map ? 2 * count : count; }
};

/// A binary list needs no index of its own: the file's offset table is one. A node is an object's number.
class BinaryContents final : public Contents {
 public:
  /// Checks everything that can be reached from the root.
  static Result<std::shared_ptr<const BinaryContents>> parse(files::Buffer bytes);
  /// A view of bytes that have been checked; parse() is the way to one.
  BinaryContents(files::Buffer bytes, const BinaryTrailer& trailer)
      : bytes_(std::move(bytes)), trailer_(trailer) {}

  Format format() const override { return Format::Binary; }
  Node root() const override { return static_cast<Node>(trailer_.root); }
  Type type(Node node) const override;
  bool boolean(Node node) const override;
  Integer integer(Node node) const override;
  double number(Node node) const override;
  std::uint64_t uid(Node node) const override;
  std::vector<std::uint8_t> data(Node node) const override;
  std::string text(Node node) const override;
  std::optional<std::string_view> text_in_place(Node node) const override;
  std::size_t count(Node container) const override { return object(container).count; }
  Position first(Node) const override { return 0; }
  Position end(Node container) const override { return static_cast<Position>(object(container).count); }
  Position next(Node, Position position) const override { return position + 1; }
  Node key_at(Node dictionary, Position position) const override;
  Node value_at(Node container, Position position) const override;
  std::optional<Node> find(Node dictionary, std::string_view key) const override;

  std::string_view source() const { return bytes_.view(); }
  const BinaryTrailer& trailer() const { return trailer_; }
  BinaryObject object(Node node) const;
  /// Where each object begins, by its number.
  std::vector<std::uint32_t> offsets() const {
    std::vector<std::uint32_t> offsets;
    read_all_big_endian(offsets, bytes_.data() + trailer_.offset_table, trailer_.object_count,
                        trailer_.offset_size);
    return offsets;
  }
  /// Appends `count` references of a container, from an ordinal on.
  void append_references(std::vector<Node>& nodes, const BinaryObject& container, std::uint64_t first,
                         std::uint64_t count) const {
    read_all_big_endian(nodes, bytes_.data() + container.payload + first * trailer_.reference_size, count,
                        trailer_.reference_size);
  }
  /// All bytes, header included, of an object that begins at an offset.
  std::string_view bytes_at(std::size_t begin, Node node) const {
    const char* object = bytes_.data() + begin;
    const auto first = static_cast<std::uint8_t>(*object);
    const unsigned low = first & 15;
    switch (static_cast<Marker>(first >> 4)) {
      case Marker::Singleton:
        return {object, 1};
      case Marker::Integer:
      case Marker::Real:
      case Marker::Date:
        return {object, 1 + (std::size_t{1} << low)};
      case Marker::Ascii:
        if (low != 15) return {object, std::size_t{1} + low};
        if (object[1] == 0x10) return {object, std::size_t{3} + static_cast<std::uint8_t>(object[2])};
        break;
      default:
        break;
    }
    const BinaryObject whole = this->object(node);
    return {object, whole.end() - whole.begin};
  }
  bool is_container_at(std::size_t begin) const {
    const auto marker = static_cast<Marker>(static_cast<std::uint8_t>(bytes_.data()[begin]) >> 4);
    return marker == Marker::List || marker == Marker::Map;
  }
  /// The reference at an ordinal of a container: an array's elements; a dictionary's keys, then its values.
  Node reference(const BinaryObject& container, std::uint64_t ordinal) const {
    return static_cast<Node>(read_big_endian(
        bytes_.data() + container.payload + ordinal * trailer_.reference_size, trailer_.reference_size));
  }

 private:
  std::size_t offset(Node node) const {
    const std::size_t entry = trailer_.offset_table + std::size_t{node} * trailer_.offset_size;
    return read_big_endian(bytes_.data() + entry, trailer_.offset_size);
  }

  files::Buffer bytes_;
  BinaryTrailer trailer_;
};

}  // namespace wispen::plist
