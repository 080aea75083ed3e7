// wispen/output.cpp: how the program talks.

#include "wispen/output.hpp"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "host/plist/utf.hpp"
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

/// All of a string, behind a NUL too.
std::string bytes_of(const NSString& string) {
  const objc::AutoreleasePool pool;
  constexpr NSUInteger kUtf8 = 4;
  const auto data = objc::send<"dataUsingEncoding:", NSData>(string, kUtf8);
  return data ? std::string(static_cast<const char*>(data.bytes()), data.length()) : string.utf8();
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
  if (const auto string = objc::cast_or_nil<NSString>(value)) return bytes_of(string);
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
  return shown(json.dump(-1, ' ', false, Json::error_handler_t::replace));
}

std::string shown(std::string_view text) {
  std::string safe;
  const auto escape = [&](const char* format, unsigned number) {
    char digits[16];
    std::snprintf(digits, sizeof digits, format, number);
    safe += digits;
  };
  for (std::size_t at = 0; at < text.size();) {
    const auto byte = static_cast<unsigned char>(text[at]);
    const bool is_control = byte < 0x20 && byte != '\n' && byte != '\t';
    if (is_control || byte == 0x7F) {
      escape("\\x%02x", byte);
      ++at;
      continue;
    }
    const std::string_view sequence = text.substr(at, byte < 0x80 ? 1 : 4);
    // The whole character or characters at the front that are well-formed; the first is taken.
    const std::size_t good = plist::utf8_error_offset(sequence);
    if (good == 0) {
      escape("\\x%02x", byte);
      ++at;
      continue;
    }
    std::size_t next = at;
    const char32_t character = plist::next_character(text, next);
    const bool turns =
        (character >= 0x202A && character <= 0x202E) || (character >= 0x2066 && character <= 0x2069);
    if (turns || (character >= 0x80 && character < 0xA0)) {
      escape("\\u%04x", static_cast<unsigned>(character));
    } else {
      safe += text.substr(at, next - at);
    }
    at = next;
  }
  return safe;
}

bool output_is_written() {
  const bool flushed = std::fflush(stdout) == 0;
  const int number = errno;
  if (flushed && std::ferror(stdout) == 0) return true;
  if (flushed || number != EPIPE) {
    fail(flushed ? "not all of the output was written"
                 : std::string("the output was not written: ") + std::strerror(number));
  }
  return false;
}

std::string padded(const std::string& utf8, std::size_t width) {
  std::size_t characters = 0;
  for (const char byte : utf8) characters += (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U ? 1U : 0U;
  return characters >= width ? utf8 : utf8 + std::string(width - characters, ' ');
}

int fail(const std::string& sentence) {
  std::fprintf(stderr, "wispen: %s\n", shown(sentence).c_str());
  return kFailed;
}

void print_problems() {
  while (const char* const problem = wispen_host_next_problem()) {
    std::fprintf(stderr, "wispen: %s\n", shown(problem).c_str());
  }
}

}  // namespace wispen::program
