#include "host/foundation/plist/binary_writer.hpp"

#include <bit>
#include <functional>
#include <utility>

#include "host/foundation/plist/big_endian.hpp"
#include "host/foundation/plist/byte_scan.hpp"
#include "host/foundation/plist/utf.hpp"

namespace wispen::plist {

namespace {

char firstByte(Marker marker, unsigned low) {
  return static_cast<char>(static_cast<unsigned>(marker) << 4 | low);
}

std::string scalarBytes(Marker marker, std::uint64_t number, std::size_t size) {
  std::string bytes(1, firstByte(marker, static_cast<unsigned>(std::countr_zero(size))));
  appendBigEndian(bytes, number, size);
  return bytes;
}

/// Below eight bytes numbers have no sign; eight have one; sixteen are for what is above.
std::string integerBytes(Integer value) {
  if (value.unsigned64) {
    std::string bytes(1, firstByte(Marker::Integer, 4));
    appendBigEndian(bytes, 0, 8);
    appendBigEndian(bytes, value.bits, 8);
    return bytes;
  }
  if (value.negative()) return scalarBytes(Marker::Integer, value.bits, 8);
  return scalarBytes(Marker::Integer, value.bits, std::bit_ceil(std::size_t{bytesFor(value.bits)}));
}

std::string stringBytes(std::string_view text) {
  std::string bytes;
  if (isAscii(text)) {
    appendObjectHeader(bytes, Marker::Ascii, text.size());
    bytes += text;
    return bytes;
  }
  std::string units;
  appendUtf16(units, text, ByteOrder::Big);
  appendObjectHeader(bytes, Marker::Utf16, units.size() / 2);
  return bytes + units;
}

std::string dataBytes(const Data& data) {
  std::string bytes;
  appendObjectHeader(bytes, Marker::Bytes, data.size());
  bytes.append(data.begin(), data.end());
  return bytes;
}

std::string uidBytes(Uid uid) {
  const std::size_t size = bytesFor(uid.number);
  std::string bytes(1, firstByte(Marker::Uid, static_cast<unsigned>(size - 1)));
  appendBigEndian(bytes, uid.number, size);
  return bytes;
}

std::string leafBytes(const Tree& tree) {
  if (const auto* value = tree.as<bool>()) {
    std::string bytes;
    bytes.push_back(static_cast<char>(*value ? kBinaryTrue : kBinaryFalse));
    return bytes;
  }
  if (const auto* value = tree.as<Integer>()) return integerBytes(*value);
  if (const auto* value = tree.as<double>()) {
    return scalarBytes(Marker::Real, std::bit_cast<std::uint64_t>(*value), 8);
  }
  if (const auto* value = tree.as<Date>()) {
    return scalarBytes(Marker::Date, std::bit_cast<std::uint64_t>(value->seconds), 8);
  }
  if (const auto* value = tree.as<Data>()) return dataBytes(*value);
  if (const auto* value = tree.as<Uid>()) return uidBytes(*value);
  return stringBytes(*tree.as<std::string>());
}

}  // namespace

void appendObjectHeader(std::string& bytes, Marker marker, std::uint64_t count) {
  constexpr std::uint64_t kInFirstByte = 14;
  if (count <= kInFirstByte) {
    bytes.push_back(firstByte(marker, static_cast<unsigned>(count)));
    return;
  }
  bytes.push_back(firstByte(marker, 15));
  bytes += scalarBytes(Marker::Integer, count, std::bit_ceil(std::size_t{bytesFor(count)}));
}

std::uint32_t NewObjects::addLeaf(std::string bytes) {
  const auto index = static_cast<std::uint32_t>(objects_.size());
  const auto [known, fresh] = leaves_.try_emplace(bytes, index);
  if (fresh) objects_.push_back({std::move(bytes), Marker::Singleton, {}});
  return known->second;
}

std::uint32_t NewObjects::addString(std::string_view text) { return addLeaf(stringBytes(text)); }

std::uint32_t NewObjects::addContainer(Marker marker, std::vector<std::uint32_t> references) {
  objects_.push_back({{}, marker, std::move(references)});
  return static_cast<std::uint32_t>(objects_.size() - 1);
}

std::uint32_t NewObjects::add(const Tree& tree) {
  const auto* array = tree.as<Array>();
  const auto* dictionary = tree.as<Dictionary>();
  if (array == nullptr && dictionary == nullptr) return addLeaf(leafBytes(tree));

  const std::uint32_t index = addContainer(array != nullptr ? Marker::List : Marker::Map, {});
  std::vector<std::uint32_t> references;
  if (array != nullptr) {
    for (const Tree& element : *array) references.push_back(add(element));
  } else {
    for (const Member& member : *dictionary) references.push_back(addString(member.key));
    for (const Member& member : *dictionary) references.push_back(add(member.value));
  }
  objects_[index].references = std::move(references);
  return index;
}

void finishBinary(std::string& bytes, const std::vector<std::uint32_t>& offsets, std::uint8_t reference_size,
                  std::uint32_t root) {
  const std::size_t table = bytes.size();
  const std::uint8_t offset_size = bytesFor(table);
  appendAllBigEndian(bytes, offsets, offset_size, std::identity());
  bytes.append(6, '\0');
  bytes.push_back(static_cast<char>(offset_size));
  bytes.push_back(static_cast<char>(reference_size));
  appendBigEndian(bytes, offsets.size(), 8);
  appendBigEndian(bytes, root, 8);
  appendBigEndian(bytes, table, 8);
}

std::string encodeBinary(const Tree& tree) {
  NewObjects objects;
  const std::uint32_t root = objects.add(tree);
  const std::uint8_t reference_size = bytesFor(objects.all().size());
  std::string bytes = "bplist00";
  std::vector<std::uint32_t> offsets;
  offsets.reserve(objects.all().size());
  for (const NewObject& object : objects.all()) {
    offsets.push_back(static_cast<std::uint32_t>(bytes.size()));
    if (!object.isContainer()) {
      bytes += object.bytes;
      continue;
    }
    const std::size_t references = object.references.size();
    appendObjectHeader(bytes, object.marker, object.marker == Marker::Map ? references / 2 : references);
    appendAllBigEndian(bytes, object.references, reference_size, std::identity());
  }
  finishBinary(bytes, offsets, reference_size, root);
  return bytes;
}

}  // namespace wispen::plist
