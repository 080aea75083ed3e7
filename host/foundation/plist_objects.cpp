// host/foundation/plist_objects.cpp: property-list values as Foundation's objects, and back.

#include "host/foundation/plist_objects.hpp"

#include <algorithm>
#include <utility>
#include <vector>

#include "host/plist/limits.hpp"

namespace wispen {

namespace {

constexpr NSUInteger kUtf8 = 4;  // NSUTF8StringEncoding

// Foundation has no class for a binary list's UID; it is the dictionary that stands for one in XML.
constexpr char kUidKey[] = "CF$UID";

NSObject number_of(plist::Integer integer) {
  if (integer.unsigned64) return NSNumber::numberWithUnsignedLongLong(integer.bits);
  return NSNumber::numberWithLongLong(static_cast<long long>(integer.bits));
}

// Containers are made in one go, of all that they hold: a long list of rows makes thousands of them, and what
// only helps to make one would live as long as the caller's pool.

NSObject array_of(const plist::Value& value) {
  std::vector<NSObject> elements;
  elements.reserve(value.count());
  for (const plist::Value element : value.elements()) elements.push_back(object_of(element));
  return objc::allocate<NSArray>().initialize<"initWithObjects:count:">(
      static_cast<const NSObject*>(elements.data()), NSUInteger{elements.size()});
}

NSObject dictionary_of(const plist::Value& value) {
  std::vector<NSObject> keys;
  std::vector<NSObject> objects;
  const std::size_t count = value.count();
  keys.reserve(count);
  objects.reserve(count);
  for (const plist::Entry entry : value.entries()) {
    keys.push_back(object_of(entry.key));
    objects.push_back(object_of(entry.value));
  }
  return objc::allocate<NSDictionary>().initialize<"initWithObjects:forKeys:count:">(
      static_cast<const NSObject*>(objects.data()), static_cast<const NSObject*>(keys.data()),
      NSUInteger{keys.size()});
}

plist::Tree tree_of_number(const NSNumber& number) {
  // The class tells true from 1; both have the same type encoding.
  static const objc::ClassRef boolean = objc::class_of(NSNumber::numberWithBool(true));
  if (number.isKindOfClass(boolean)) return number.boolValue();
  switch (number.objCType()[0]) {
    case 'f':
    case 'd':
      return number.doubleValue();
    case 'Q':
    case 'L':
      return number.unsignedLongLongValue() > 0x7FFFFFFFFFFFFFFFULL
                 ? plist::Tree(plist::Integer{number.unsignedLongLongValue(), true})
                 : plist::Tree(plist::Integer{number.unsignedLongLongValue(), false});
    default:
      return plist::Integer{static_cast<std::uint64_t>(number.longLongValue()), false};
  }
}

Result<plist::Tree> tree_at_depth(const objc::Object& object, std::size_t depth);

Result<plist::Tree> tree_of_array(const NSArray& array, std::size_t depth) {
  plist::Array elements;
  const NSUInteger count = array.count();
  elements.reserve(count);
  for (NSUInteger i = 0; i < count; ++i) {
    auto element = tree_at_depth(array.objectAtIndex(i), depth + 1);
    if (!element) return element;
    elements.push_back(*std::move(element));
  }
  return plist::Tree(std::move(elements));
}

Result<plist::Tree> tree_of_dictionary(const NSDictionary& dictionary, std::size_t depth) {
  plist::Dictionary members;
  const NSEnumerator keys = dictionary.keyEnumerator();
  while (const NSObject key = keys.nextObject()) {
    const auto name = objc::cast_or_nil<NSString>(key);
    if (!name) return Error{"a property list's keys are strings"};
    auto text = utf8_of(name);
    if (!text) return text.error();
    auto value = tree_at_depth(dictionary.objectForKey(key), depth + 1);
    if (!value) return value;
    members.push_back({*std::move(text), *std::move(value)});
  }
  return plist::Tree(std::move(members));
}

Result<plist::Tree> tree_at_depth(const objc::Object& object, std::size_t depth) {
  if (depth > plist::kMaxDepth) return Error{"containers are nested too deeply for a property list"};
  if (const auto string = objc::cast_or_nil<NSString>(object)) {
    auto text = utf8_of(string);
    if (!text) return text.error();
    return plist::Tree(*std::move(text));
  }
  if (const auto number = objc::cast_or_nil<NSNumber>(object)) return tree_of_number(number);
  if (const auto dictionary = objc::cast_or_nil<NSDictionary>(object))
    return tree_of_dictionary(dictionary, depth);
  if (const auto array = objc::cast_or_nil<NSArray>(object)) return tree_of_array(array, depth);
  if (const auto data = objc::cast_or_nil<NSData>(object)) {
    const auto* bytes = static_cast<const std::uint8_t*>(data.bytes());
    return plist::Tree(plist::Data(bytes, bytes + data.length()));
  }
  if (const auto date = objc::cast_or_nil<NSDate>(object)) {
    return plist::Tree(plist::Date{date.timeIntervalSinceReferenceDate()});
  }
  return Error{std::string("an object of class ") + objc::class_of(object).name() +
               " is no property-list value"};
}

}  // namespace

NSString string_of(std::string_view utf8) {
  return objc::allocate<NSString>().initialize<"initWithBytes:length:encoding:">(
      static_cast<const void*>(utf8.data()), NSUInteger{utf8.size()}, kUtf8);
}

Result<std::string> utf8_of(const NSString& string) {
  const objc::AutoreleasePool pool;
  const auto data = objc::send<"dataUsingEncoding:", NSData>(string, kUtf8);
  if (!data) return Error{"a string holds half a surrogate pair, which no file can"};
  return std::string(static_cast<const char*>(data.bytes()), data.length());
}

NSObject object_of(const plist::Value& value) {
  switch (value.type()) {
    case plist::Type::Boolean:
      return NSNumber::numberWithBool(value.boolean());
    case plist::Type::Integer:
      return number_of(value.integer());
    case plist::Type::Real:
      return NSNumber::numberWithDouble(value.real());
    case plist::Type::String: {
      if (const auto in_place = value.string_view()) return string_of(*in_place);
      return string_of(value.string());
    }
    case plist::Type::Data: {
      const auto bytes = value.data();
      return NSData::dataWithBytes(bytes.data(), bytes.size());
    }
    case plist::Type::Date:
      // Foundation's calendar never comes to an end with years that it does not have.
      return NSDate::dateWithTimeIntervalSinceReferenceDate(
          std::clamp(value.date(), plist::kEarliestDate, plist::kLatestDate));
    case plist::Type::Array:
      return array_of(value);
    case plist::Type::Dictionary:
      return dictionary_of(value);
    case plist::Type::Uid: {
      NSMutableDictionary dictionary = NSMutableDictionary::dictionary();
      dictionary.setObject(NSNumber::numberWithUnsignedLongLong(value.uid()), NSString(kUidKey));
      return dictionary;
    }
  }
  return NSObject();
}

Result<plist::Tree> tree_of(const objc::Object& object) { return tree_at_depth(object, 1); }

}  // namespace wispen
