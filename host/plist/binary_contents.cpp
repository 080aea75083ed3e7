#include "host/plist/binary_contents.hpp"

#include <bit>

#include "host/plist/big_endian.hpp"
#include "host/plist/utf.hpp"

namespace wispen::plist {

namespace {

Type type_of(Marker marker) {
  switch (marker) {
    case Marker::Integer:
      return Type::Integer;
    case Marker::Real:
      return Type::Real;
    case Marker::Date:
      return Type::Date;
    case Marker::Bytes:
      return Type::Data;
    case Marker::Ascii:
    case Marker::Utf16:
      return Type::String;
    case Marker::Uid:
      return Type::Uid;
    case Marker::List:
      return Type::Array;
    case Marker::Map:
      return Type::Dictionary;
    default:
      return Type::Boolean;
  }
}

}  // namespace

// The file has been checked, so nothing here looks for an end.
BinaryObject BinaryContents::object(Node node) const {
  const char* bytes = bytes_.data();
  BinaryObject object;
  object.begin = offset(node);
  const auto first = static_cast<std::uint8_t>(bytes[object.begin]);
  object.marker = static_cast<Marker>(first >> 4);
  object.low = first & 15;
  object.payload = object.begin + 1;
  switch (object.marker) {
    case Marker::Singleton:
      return object;
    case Marker::Integer:
    case Marker::Real:
    case Marker::Date:
      object.payload_size = std::size_t{1} << object.low;
      return object;
    case Marker::Uid:
      object.payload_size = std::size_t{object.low} + 1;
      return object;
    default:
      break;
  }
  object.count = object.low;
  if (object.low == 15) {
    const std::size_t size = std::size_t{1} << (bytes[object.payload] & 15);
    object.count = read_big_endian(bytes + object.payload + 1, size);
    object.payload += 1 + size;
  }
  switch (object.marker) {
    case Marker::Utf16:
      object.payload_size = object.count * 2;
      break;
    case Marker::List:
    case Marker::Map:
      object.payload_size = object.references() * trailer_.reference_size;
      break;
    default:
      object.payload_size = object.count;
      break;
  }
  return object;
}

Type BinaryContents::type(Node node) const { return type_of(object(node).marker); }

bool BinaryContents::boolean(Node node) const { return object(node).low == kBinaryTrue; }

Integer BinaryContents::integer(Node node) const {
  const BinaryObject number = object(node);
  const char* payload = bytes_.data() + number.payload;
  if (number.payload_size < 16) return {read_big_endian(payload, number.payload_size), false};
  const Integer low{read_big_endian(payload + 8, 8), false};
  const bool negative = read_big_endian(payload, 8) != 0;
  return negative ? low : Integer::of_unsigned(low.bits);
}

double BinaryContents::number(Node node) const {
  const BinaryObject real = object(node);
  const std::uint64_t bits = read_big_endian(bytes_.data() + real.payload, real.payload_size);
  if (real.payload_size == 4) return std::bit_cast<float>(static_cast<std::uint32_t>(bits));
  return std::bit_cast<double>(bits);
}

std::uint64_t BinaryContents::uid(Node node) const {
  const BinaryObject uid = object(node);
  return read_big_endian(bytes_.data() + uid.payload, uid.payload_size);
}

std::vector<std::uint8_t> BinaryContents::data(Node node) const {
  const BinaryObject data = object(node);
  const std::string_view bytes = source().substr(data.payload, data.payload_size);
  return {bytes.begin(), bytes.end()};
}

std::optional<std::string_view> BinaryContents::text_in_place(Node node) const {
  const char* string = bytes_.data() + offset(node);
  const auto first = static_cast<std::uint8_t>(*string);
  if (first >> 4 != static_cast<std::uint8_t>(Marker::Ascii)) return std::nullopt;
  // The two lengths that names have, without the general case's detours.
  if ((first & 15) != 15) return std::string_view(string + 1, first & 15);
  if (string[1] == 0x10) return std::string_view(string + 3, static_cast<std::uint8_t>(string[2]));
  const BinaryObject long_string = object(node);
  return source().substr(long_string.payload, long_string.payload_size);
}

std::string BinaryContents::text(Node node) const {
  const BinaryObject string = object(node);
  const std::string_view bytes = source().substr(string.payload, string.payload_size);
  return string.marker == Marker::Ascii ? std::string(bytes) : utf8_from_utf16(bytes, ByteOrder::Big);
}

Node BinaryContents::key_at(Node dictionary, Position position) const {
  return reference(object(dictionary), position);
}

Node BinaryContents::value_at(Node container, Position position) const {
  const BinaryObject found = object(container);
  return reference(found, found.marker == Marker::Map ? found.count + position : position);
}

std::optional<Node> BinaryContents::find(Node dictionary, std::string_view key) const {
  const BinaryObject found = object(dictionary);
  for (std::uint64_t i = found.count; i-- > 0;) {
    const Node candidate = reference(found, i);
    const std::optional<std::string_view> in_place = text_in_place(candidate);
    if (in_place ? *in_place == key : text(candidate) == key) return reference(found, found.count + i);
  }
  return std::nullopt;
}

}  // namespace wispen::plist
