#include "host/plist/binary_writer.hpp"

#include <bit>
#include <functional>
#include <utility>

#include "host/plist/big_endian.hpp"
#include "host/plist/byte_scan.hpp"
#include "host/plist/utf.hpp"

namespace wispen::plist {

namespace {

char first_byte(Marker marker, unsigned low) {
  return static_cast<char>(static_cast<unsigned>(marker) << 4 | low);
}

std::string scalar_bytes(Marker marker, std::uint64_t number, std::size_t size) {
  std::string bytes(1, first_byte(marker, static_cast<unsigned>(std::countr_zero(size))));
  append_big_endian(bytes, number, size);
  return bytes;
}

/// Below eight bytes numbers have no sign; eight have one; sixteen are for what is above.
std::string integer_bytes(Integer value) {
  if (value.unsigned64) {
    std::string bytes(1, first_byte(Marker::Integer, 4));
    append_big_endian(bytes, 0, 8);
    append_big_endian(bytes, value.bits, 8);
    return bytes;
  }
  if (value.negative()) return scalar_bytes(Marker::Integer, value.bits, 8);
  return scalar_bytes(Marker::Integer, value.bits, std::bit_ceil(std::size_t{bytes_for(value.bits)}));
}

std::string string_bytes(std::string_view text) {
  std::string bytes;
  if (is_ascii(text)) {
    append_object_header(bytes, Marker::Ascii, text.size());
    bytes += text;
    return bytes;
  }
  std::string units;
  append_utf16(units, text, ByteOrder::Big);
  append_object_header(bytes, Marker::Utf16, units.size() / 2);
  return bytes + units;
}

std::string data_bytes(const Data& data) {
  std::string bytes;
  append_object_header(bytes, Marker::Bytes, data.size());
  bytes.append(data.begin(), data.end());
  return bytes;
}

std::string uid_bytes(Uid uid) {
  const std::size_t size = bytes_for(uid.number);
  std::string bytes(1, first_byte(Marker::Uid, static_cast<unsigned>(size - 1)));
  append_big_endian(bytes, uid.number, size);
  return bytes;
}

std::string leaf_bytes(const Tree& tree) {
  if (const auto* value = tree.as<bool>()) {
    std::string bytes;
    bytes.push_back(static_cast<char>(*value ? kBinaryTrue : kBinaryFalse));
    return bytes;
  }
  if (const auto* value = tree.as<Integer>()) return integer_bytes(*value);
  if (const auto* value = tree.as<double>()) {
    return scalar_bytes(Marker::Real, std::bit_cast<std::uint64_t>(*value), 8);
  }
  if (const auto* value = tree.as<Date>()) {
    return scalar_bytes(Marker::Date, std::bit_cast<std::uint64_t>(value->seconds), 8);
  }
  if (const auto* value = tree.as<Data>()) return data_bytes(*value);
  if (const auto* value = tree.as<Uid>()) return uid_bytes(*value);
  return string_bytes(*tree.as<std::string>());
}

}  // namespace

void append_object_header(std::string& bytes, Marker marker, std::uint64_t count) {
  constexpr std::uint64_t kInFirstByte = 14;
  if (count <= kInFirstByte) {
    bytes.push_back(first_byte(marker, static_cast<unsigned>(count)));
    return;
  }
  bytes.push_back(first_byte(marker, 15));
  bytes += scalar_bytes(Marker::Integer, count, std::bit_ceil(std::size_t{bytes_for(count)}));
}

std::uint32_t NewObjects::add_leaf(std::string bytes) {
  const auto index = static_cast<std::uint32_t>(objects_.size());
  const auto [known, fresh] = leaves_.try_emplace(bytes, index);
  if (fresh) objects_.push_back({std::move(bytes), Marker::Singleton, {}});
  return known->second;
}

std::uint32_t NewObjects::add_string(std::string_view text) { return add_leaf(string_bytes(text)); }

std::uint32_t NewObjects::add_container(Marker marker, std::vector<std::uint32_t> references) {
  objects_.push_back({{}, marker, std::move(references)});
  return static_cast<std::uint32_t>(objects_.size() - 1);
}

std::uint32_t NewObjects::add(const Tree& tree) {
  const auto* array = tree.as<Array>();
  const auto* dictionary = tree.as<Dictionary>();
  if (array == nullptr && dictionary == nullptr) return add_leaf(leaf_bytes(tree));

  const std::uint32_t index = add_container(array != nullptr ? Marker::List : Marker::Map, {});
  std::vector<std::uint32_t> references;
  if (array != nullptr) {
    for (const Tree& element : *array) references.push_back(add(element));
  } else {
    for (const Member& member : *dictionary) references.push_back(add_string(member.key));
    for (const Member& member : *dictionary) references.push_back(add(member.value));
  }
  objects_[index].references = std::move(references);
  return index;
}

void finish_binary(std::string& bytes, const std::vector<std::uint32_t>& offsets, std::uint8_t reference_size,
                   std::uint32_t root) {
  const std::size_t table = bytes.size();
  const std::uint8_t offset_size = bytes_for(table);
  append_all_big_endian(bytes, offsets, offset_size, std::identity());
  bytes.append(6, '\0');
  bytes.push_back(static_cast<char>(offset_size));
  bytes.push_back(static_cast<char>(reference_size));
  append_big_endian(bytes, offsets.size(), 8);
  append_big_endian(bytes, root, 8);
  append_big_endian(bytes, table, 8);
}

std::string encode_binary(const Tree& tree) {
  NewObjects objects;
  const std::uint32_t root = objects.add(tree);
  const std::uint8_t reference_size = bytes_for(objects.all().size());
  std::string bytes = "bplist00";
  std::vector<std::uint32_t> offsets;
  offsets.reserve(objects.all().size());
  for (const NewObject& object : objects.all()) {
    offsets.push_back(static_cast<std::uint32_t>(bytes.size()));
    if (!object.is_container()) {
      bytes += object.bytes;
      continue;
    }
    const std::size_t references = object.references.size();
    append_object_header(bytes, object.marker, object.marker == Marker::Map ? references / 2 : references);
    append_all_big_endian(bytes, object.references, reference_size, std::identity());
  }
  finish_binary(bytes, offsets, reference_size, root);
  return bytes;
}

}  // namespace wispen::plist
