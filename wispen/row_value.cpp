// wispen/row_value.cpp: a word from the command line as the value that a row stores.

#include "wispen/row_value.hpp"

#include <array>
#include <charconv>
#include <cmath>
#include <optional>

namespace wispen::program {

namespace {

std::optional<bool> boolean_from(const std::string& word) {
  for (const char* const yes : {"yes", "true", "on", "1", "YES"}) {
    if (word == yes) return true;
  }
  for (const char* const no : {"no", "false", "off", "0", "NO"}) {
    if (word == no) return false;
  }
  return std::nullopt;
}

template <class Number>
std::optional<Number> number_from(const std::string& word) {
  Number number{};
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  if (error != std::errc() || end != word.data() + word.size()) return std::nullopt;
  return number;
}

Error not_a(const std::string& word, const char* what) { return Error{"\"" + word + "\" is not " + what}; }

Result<NSObject> of_type(const std::string& word, const std::string& type) {
  if (type == "string") return NSObject(NSString(word.c_str()));
  if (type == "bool") {
    if (const auto value = boolean_from(word)) return NSObject(NSNumber::numberWithBool(*value));
    return not_a(word, "yes or no");
  }
  if (type == "int") {
    if (const auto value = number_from<long long>(word))
      return NSObject(NSNumber::numberWithLongLong(*value));
    return not_a(word, "a whole number");
  }
  if (const auto value = number_from<double>(word)) return NSObject(NSNumber::numberWithDouble(*value));
  return not_a(word, "a number");
}

double bound(const PSSpecifier& specifier, const NSString& key, double fallback) {
  const auto number = objc::cast_or_nil<NSNumber>(specifier.propertyForKey(key));
  return number ? number.doubleValue() : fallback;
}

std::string shown(double number) {
  std::array<char, 32> text;
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
  return std::string(text.data(), end);
}

Result<NSObject> of_slider(const PSSpecifier& specifier, const std::string& word) {
  const auto number = number_from<double>(word);
  if (!number || !std::isfinite(*number)) return not_a(word, "a number");
  const double least = bound(specifier, "min"_ns, 0);
  const double most = bound(specifier, "max"_ns, 1);
  if (*number < least || *number > most) {
    return Error{word + " is outside the row's range, " + shown(least) + " to " + shown(most)};
  }
  return NSObject(NSNumber::numberWithFloat(static_cast<float>(*number)));  // what a slider stores
}

Result<NSObject> of_choice(const NSArray& values, const std::string& word) {
  std::string known;
  for (NSUInteger i = 0; i < values.count(); ++i) {
    const auto value = values.objectAtIndex(i);
    const std::string text = value.description().utf8();
    if (text == word) return value;
    known += (known.empty() ? "" : ", ") + text;
  }
  return Error{"\"" + word + "\" is none of the row's values: " + known};
}

const char* type_of(const NSObject& value) {
  const auto number = objc::cast_or_nil<NSNumber>(value);
  if (!number) return "string";
  if (number.isKindOfClass(objc::class_of(NSNumber::numberWithBool(true)))) return "bool";
  const char type = number.objCType()[0];
  return type == 'f' || type == 'd' ? "real" : "int";
}

}  // namespace

Result<NSObject> row_value(const PSSpecifier& specifier, const std::string& word, const std::string& type) {
  if (!type.empty()) return of_type(word, type);
  const std::string cell = objc::cast_or_nil<NSString>(specifier.propertyForKey("cell"_ns)).utf8();
  if (cell == "PSSwitchCell") return of_type(word, "bool");
  if (cell == "PSSliderCell") return of_slider(specifier, word);
  if (specifier.values().count() > 0) return of_choice(specifier.values(), word);
  if (cell == "PSEditTextCell" || cell == "PSSecureEditTextCell" || cell == "PSEditTextViewCell") {
    return of_type(word, "string");
  }
  return of_type(word, type_of(specifier.propertyForKey("default"_ns)));
}

}  // namespace wispen::program
