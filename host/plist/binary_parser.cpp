#include "host/plist/binary_parser.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <utility>

#include "host/plist/big_endian.hpp"
#include "host/plist/byte_scan.hpp"
#include "host/plist/limits.hpp"

namespace wispen::plist {

namespace {

constexpr std::uint8_t kNotSimple = 0xFF;

/// Payload bytes by first byte, of the objects whose first byte and length are all there is to check.
constexpr std::array<std::uint8_t, 256> kSimplePayloads = [] {
  std::array<std::uint8_t, 256> sizes{};
  sizes.fill(kNotSimple);
  sizes[kBinaryFalse] = 0;
  sizes[kBinaryTrue] = 0;
  for (std::uint8_t low = 0; low <= 3; ++low) sizes[0x10U | low] = static_cast<std::uint8_t>(1U << low);
  sizes[0x22] = 4;
  sizes[0x23] = 8;
  return sizes;
}();

}  // namespace

bool BinaryParser::fail_at(std::uint64_t offset, std::string message) {
  error_ = "byte " + std::to_string(offset) + ": " + std::move(message);
  return false;
}

bool BinaryParser::run() {
  if (!read_trailer()) return false;
  if (!visit(static_cast<Node>(trailer_.root), false)) return false;
  return walk();
}

bool BinaryParser::read_trailer() {
  constexpr std::size_t kHeader = 8;
  if (size_ < kHeader + 1 + BinaryTrailer::kSize) return fail_at(size_, "the file ends too early");
  const std::size_t start = size_ - BinaryTrailer::kSize;
  const char* trailer = bytes_ + start;
  trailer_.offset_size = static_cast<std::uint8_t>(trailer[6]);
  trailer_.reference_size = static_cast<std::uint8_t>(trailer[7]);
  trailer_.object_count = read_big_endian(trailer + 8, 8);
  trailer_.root = read_big_endian(trailer + 16, 8);
  trailer_.offset_table = read_big_endian(trailer + 24, 8);
  const auto valid_size = [](std::uint8_t size) { return size >= 1 && size <= 8; };
  if (!valid_size(trailer_.offset_size) || !valid_size(trailer_.reference_size)) {
    return fail_at(start, "the trailer is malformed, as at the end of a truncated file");
  }
  if (trailer_.offset_table <= kHeader || trailer_.offset_table >= start) {
    return fail_at(start, "the offset table lies outside the file");
  }
  const std::uint64_t table_size = start - trailer_.offset_table;
  if (table_size % trailer_.offset_size != 0 || table_size / trailer_.offset_size != trailer_.object_count) {
    return fail_at(start, "the offset table does not fit the number of objects");
  }
  if (trailer_.root >= trailer_.object_count) return fail_at(start, "the root object is missing");
  return true;
}

bool BinaryParser::inspect(Node node, BinaryObject& object) {
  const std::uint64_t entry = trailer_.offset_table + std::uint64_t{node} * trailer_.offset_size;
  const std::uint64_t offset = read_big_endian(bytes_ + entry, trailer_.offset_size);
  if (offset < 8 || offset >= trailer_.offset_table) return fail_at(entry, "an object lies outside the file");
  object.begin = offset;
  const auto first = static_cast<std::uint8_t>(bytes_[offset]);
  object.marker = static_cast<Marker>(first >> 4);
  object.low = first & 15;
  object.payload = offset + 1;
  object.payload_size = 0;
  object.count = 0;
  switch (object.marker) {
    case Marker::Singleton:
      if (first == kBinaryFalse || first == kBinaryTrue) return true;
      break;
    case Marker::Integer:
      if (object.low > 4) break;
      object.payload_size = std::size_t{1} << object.low;
      if (object.end() > trailer_.offset_table) return fail_at(offset, "a number is cut off");
      return true;
    case Marker::Real:
    case Marker::Date:
      if (object.low != 3 && (object.low != 2 || object.marker == Marker::Date)) break;
      object.payload_size = std::size_t{1} << object.low;
      if (object.end() > trailer_.offset_table) return fail_at(offset, "a number is cut off");
      return true;
    case Marker::Uid:
      if (object.low > 7) break;
      object.payload_size = std::size_t{object.low} + 1;
      if (object.end() > trailer_.offset_table) return fail_at(offset, "a number is cut off");
      return true;
    case Marker::Bytes:
    case Marker::Ascii:
    case Marker::Utf16:
    case Marker::List:
    case Marker::Map:
      return inspect_counted(object);
    default:
      break;
  }
  return fail_at(offset, "an object of an unknown kind");
}

bool BinaryParser::inspect_counted(BinaryObject& object) {
  object.count = object.low;
  if (object.low == 15) {
    const auto length = static_cast<std::uint8_t>(bytes_[object.payload]);
    const std::size_t size = std::size_t{1} << (length & 15);
    if (length >> 4 != static_cast<std::uint8_t>(Marker::Integer) || size > 8 ||
        object.payload + 1 + size > trailer_.offset_table) {
      return fail_at(object.begin, "an object's length is malformed");
    }
    object.count = read_big_endian(bytes_ + object.payload + 1, size);
    object.payload += 1 + size;
  }
  std::uint64_t unit = 1;
  if (object.marker == Marker::Utf16) unit = 2;
  if (object.marker == Marker::List) unit = trailer_.reference_size;
  if (object.marker == Marker::Map) unit = std::uint64_t{2} * trailer_.reference_size;
  const std::uint64_t room = trailer_.offset_table - object.payload;
  if (object.count > room / unit) return fail_at(object.begin, "an object reaches beyond the objects' end");
  object.payload_size = object.count * unit;
  return true;
}

bool BinaryParser::check_leaf(const BinaryObject& object) {
  if (object.marker == Marker::Ascii) {
    return is_ascii({bytes_ + object.payload, object.payload_size}) ||
           fail_at(object.begin, "an ASCII string holds other characters");
  }
  if (object.marker == Marker::Integer && object.payload_size == 16) {
    // Sixteen bytes serve only to tell large unsigned numbers from negative ones.
    const std::uint64_t high = read_big_endian(bytes_ + object.payload, 8);
    const std::uint64_t low = read_big_endian(bytes_ + object.payload + 8, 8);
    if (high != 0 && (high != std::numeric_limits<std::uint64_t>::max() || low >> 63 == 0)) {
      return fail_at(object.begin, "a number needs more than 64 bits");
    }
  }
  if (object.marker == Marker::Date) {
    const auto seconds = std::bit_cast<double>(read_big_endian(bytes_ + object.payload, 8));
    return std::isfinite(seconds) || fail_at(object.begin, "a date is not a finite number of seconds");
  }
  return true;
}

bool BinaryParser::account(std::uint64_t size, std::size_t offset) {
  walked_size_ += size;
  return walked_size_ <= kMaxExpandedSize ||
         fail_at(offset, "objects named in many places make the list too large");
}

bool BinaryParser::visit_simple(Node node, bool as_key, std::uint64_t& size) {
  const std::uint64_t entry = trailer_.offset_table + std::uint64_t{node} * trailer_.offset_size;
  const std::uint64_t offset = read_big_endian(bytes_ + entry, trailer_.offset_size);
  if (offset < 8 || offset >= trailer_.offset_table) return false;
  const auto first = static_cast<std::uint8_t>(bytes_[offset]);
  if (first >> 4 == static_cast<std::uint8_t>(Marker::Ascii)) {
    std::uint64_t payload = offset + 1;
    std::uint64_t length = first & 15;
    if (length == 15) {
      if (bytes_[payload] != 0x10) return false;  // more than 255 characters
      length = static_cast<std::uint8_t>(bytes_[payload + 1]);
      payload += 2;
    }
    size += kExpandedValueSize + length;
    return payload + length <= trailer_.offset_table && is_ascii({bytes_ + payload, length});
  }
  const std::uint8_t payload = kSimplePayloads[first];
  size += kExpandedValueSize + payload;
  return !as_key && payload != kNotSimple && offset + 1 + payload <= trailer_.offset_table;
}

bool BinaryParser::visit(Node node, bool as_key) {
  BinaryObject object;
  if (!inspect(node, object)) return false;
  if (as_key && object.marker != Marker::Ascii && object.marker != Marker::Utf16) {
    return fail_at(object.begin, "a dictionary's key is not a string");
  }
  if (object.is_container()) return enter(node, object);
  if (!check_leaf(object)) return false;
  const std::uint64_t size = kExpandedValueSize + object.payload_size;
  if (!open_.empty()) open_.back().extent.size += size;
  return account(size, object.begin);
}

bool BinaryParser::enter(Node node, const BinaryObject& object) {
  const auto [known, fresh] = extents_.try_emplace(node, Extent{});
  if (!fresh) {
    const Extent& extent = known->second;
    if (extent.height == 0) return fail_at(object.begin, "a container holds itself");
    if (open_.size() + extent.height > kMaxDepth) {
      return fail_at(object.begin,
                     "more than " + std::to_string(kMaxDepth) + " containers inside one another");
    }
    Extent& parent = open_.back().extent;
    parent.size += extent.size;
    parent.height = std::max(parent.height, extent.height + 1);
    return account(extent.size, object.begin);
  }
  if (open_.size() == kMaxDepth) {
    return fail_at(object.begin, "more than " + std::to_string(kMaxDepth) + " containers inside one another");
  }
  open_.push_back({node, object, 0, {kExpandedValueSize, 1}});
  return account(kExpandedValueSize, object.begin);
}

void BinaryParser::leave() {
  const Frame frame = open_.back();
  open_.pop_back();
  extents_[frame.node] = frame.extent;
  if (open_.empty()) return;
  Extent& parent = open_.back().extent;
  parent.size += frame.extent.size;
  parent.height = std::max(parent.height, frame.extent.height + 1);
}

bool BinaryParser::walk() {
  while (!open_.empty()) {
    const std::size_t depth = open_.size();
    const BinaryObject container = open_.back().object;
    const std::uint64_t keys = container.marker == Marker::Map ? container.count : 0;
    const std::uint64_t references = container.references();
    std::uint64_t ordinal = open_.back().next;
    std::uint64_t simple_size = 0;
    // A nested container interrupts its parent's walk, which goes on here afterwards.
    while (ordinal < references && open_.size() == depth) {
      const char* place = bytes_ + container.payload + ordinal * trailer_.reference_size;
      const std::uint64_t node = read_big_endian(place, trailer_.reference_size);
      if (node >= trailer_.object_count) {
        return fail_at(static_cast<std::uint64_t>(place - bytes_),
                       "a reference to an object that is not there");
      }
      ++ordinal;
      std::uint64_t size = 0;
      if (visit_simple(static_cast<Node>(node), ordinal <= keys, size)) {
        simple_size += size;
        continue;
      }
      open_[depth - 1].next = ordinal;
      if (!visit(static_cast<Node>(node), ordinal <= keys)) return false;
    }
    open_[depth - 1].extent.size += simple_size;
    if (!account(simple_size, container.begin)) return false;
    if (ordinal == references && open_.size() == depth) leave();
  }
  return true;
}

Result<std::shared_ptr<const BinaryContents>> BinaryContents::parse(files::Buffer bytes) {
  BinaryParser parser(bytes);
  if (!parser.run()) return Error{parser.error()};
  return std::shared_ptr<const BinaryContents>(
      std::make_shared<BinaryContents>(std::move(bytes), parser.trailer()));
}

}  // namespace wispen::plist
