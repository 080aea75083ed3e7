#include "host/plist/tree.hpp"

#include <bit>
#include <new>
#include <unordered_map>

#include "host/plist/binary_writer.hpp"
#include "host/plist/limits.hpp"
#include "host/plist/tree_check.hpp"
#include "host/plist/xml_writer.hpp"

namespace wispen::plist {

namespace {

Dictionary dictionary_of(const Value& value) {
  constexpr std::size_t kFew = 16;
  Dictionary members;
  std::unordered_map<std::string, std::size_t> places;
  const bool few = value.count() <= kFew;
  for (const Entry& entry : value.entries()) {
    std::string key = entry.key.string();
    std::size_t place = members.size();
    if (few) {
      for (place = 0; place < members.size() && members[place].key != key; ++place) {
      }
    } else {
      place = places.try_emplace(key, place).first->second;
    }
    if (place == members.size()) {
      members.push_back({std::move(key), Tree::of(entry.value)});
    } else {
      members[place].value = Tree::of(entry.value);
    }
  }
  return members;
}

}  // namespace

Tree Tree::of(const Value& value) {
  switch (value.type()) {
    case Type::Boolean:
      return value.boolean();
    case Type::Integer:
      return value.integer();
    case Type::Real:
      return value.real();
    case Type::String:
      return value.string();
    case Type::Data:
      return value.data();
    case Type::Date:
      return Date{value.date()};
    case Type::Uid:
      return Uid{value.uid()};
    case Type::Array: {
      Array array;
      for (const Value element : value.elements()) array.push_back(of(element));
      return array;
    }
    case Type::Dictionary:
      return dictionary_of(value);
  }
  return {};
}

bool operator==(const Member& left, const Member& right) {
  return left.key == right.key && left.value == right.value;
}

bool operator==(const Tree& left, const Tree& right) {
  if (left.type() != right.type()) return false;
  const auto bits = [](double number) { return std::bit_cast<std::uint64_t>(number); };
  if (const auto* real = left.as<double>()) return bits(*real) == bits(*right.as<double>());
  if (const auto* date = left.as<Date>()) return bits(date->seconds) == bits(right.as<Date>()->seconds);
  if (const auto* boolean = left.as<bool>()) return *boolean == *right.as<bool>();
  if (const auto* integer = left.as<Integer>()) return *integer == *right.as<Integer>();
  if (const auto* string = left.as<std::string>()) return *string == *right.as<std::string>();
  if (const auto* data = left.as<Data>()) return *data == *right.as<Data>();
  if (const auto* array = left.as<Array>()) return *array == *right.as<Array>();
  if (const auto* dictionary = left.as<Dictionary>()) return *dictionary == *right.as<Dictionary>();
  return *left.as<Uid>() == *right.as<Uid>();
}

Result<std::string> encode(const Tree& tree, Format format) {
  try {
    if (const char* reason = find_unwritable(tree, 1)) return Error{reason};
    if (format == Format::Xml) {
      if (std::optional<std::string> reason = find_unholdable_by_xml(tree)) return Error{*std::move(reason)};
    }
    std::string bytes = format == Format::Xml ? encode_xml(tree) : encode_binary(tree);
    if (bytes.size() > kMaxFileSize) return Error{kTooLarge};
    return bytes;
  } catch (const std::bad_alloc&) {
    return Error{"out of memory"};
  }
}

}  // namespace wispen::plist
