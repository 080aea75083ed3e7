// host/program/output.cpp: how the program talks.

#include "host/program/output.hpp"

#include <cmath>
#include <cstdio>

#include "host/wispen_host.h"

namespace wispen::program {

namespace {

bool is_boolean(const NSNumber& number) {
  static const objc::ClassRef boolean = objc::class_of(NSNumber::numberWithBool(true));
  return number.isKindOfClass(boolean);
}

Json json_of_number(const NSNumber& number) {
  if (is_boolean(number)) return number.boolValue();
  switch (number.objCType()[0]) {
    case 'f': {
      // The digits of a single-precision number, not those of its double.
      return std::isfinite(number.floatValue()) ? Json(std::stod(number.stringValue().utf8()))
                                                : Json(number.stringValue().utf8());
    }
    case 'd':
      return std::isfinite(number.doubleValue()) ? Json(number.doubleValue())
                                                 : Json(number.stringValue().utf8());
    case 'Q':
    case 'L':
      return number.unsignedLongLongValue();
    default:
      return number.longLongValue();
  }
}

std::string base64(const NSData& data) {
  static constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  const auto* bytes = static_cast<const unsigned char*>(data.bytes());
  const std::size_t size = data.length();
  std::string text;
  for (std::size_t i = 0; i < size; i += 3) {
    const std::size_t left = size - i;
    const unsigned group = (static_cast<unsigned>(bytes[i]) << 16) |
                           (left > 1 ? static_cast<unsigned>(bytes[i + 1]) << 8 : 0U) |
                           (left > 2 ? static_cast<unsigned>(bytes[i + 2]) : 0U);
    text += kDigits[group >> 18];
    text += kDigits[(group >> 12) & 63];
    text += left > 1 ? kDigits[(group >> 6) & 63] : '=';
    text += left > 2 ? kDigits[group & 63] : '=';
  }
  return text;
}

}  // namespace

Json json_of(const NSObject& value) {
  if (!value) return nullptr;
  if (const auto string = objc::cast_or_nil<NSString>(value)) return string.utf8();
  if (const auto number = objc::cast_or_nil<NSNumber>(value)) return json_of_number(number);
  if (const auto data = objc::cast_or_nil<NSData>(value)) return base64(data);
  if (const auto array = objc::cast_or_nil<NSArray>(value)) {
    Json list = Json::array();
    for (NSUInteger i = 0; i < array.count(); ++i) list.push_back(json_of(array.objectAtIndex(i)));
    return list;
  }
  if (const auto dictionary = objc::cast_or_nil<NSDictionary>(value)) {
    Json object = Json::object();
    const NSArray keys = dictionary.allKeys();
    for (NSUInteger i = 0; i < keys.count(); ++i) {
      object[keys.objectAtIndex(i).description().utf8()] =
          json_of(dictionary.objectForKey(keys.objectAtIndex(i)));
    }
    return object;
  }
  return value.description().utf8();
}

std::string text_of(const NSObject& value) {
  if (!value) return "-";
  const Json json = json_of(value);
  if (json.is_boolean()) return json.get<bool>() ? "yes" : "no";
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string padded(const std::string& utf8, std::size_t width) {
  std::size_t characters = 0;
  for (const char byte : utf8) characters += (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U ? 1U : 0U;
  return characters >= width ? utf8 : utf8 + std::string(width - characters, ' ');
}

int fail(const std::string& sentence) {
  std::fprintf(stderr, "wispen: %s\n", sentence.c_str());
  return kFailed;
}

void print_problems() {
  while (const char* const problem = wispen_host_next_problem()) {
    std::fprintf(stderr, "wispen: %s\n", problem);
  }
}

}  // namespace wispen::program
