// host/preferences/specifier_list.cpp: the specifier lists of a bundle, made into specifiers.

#include "host/preferences/specifier_list.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

#include "host/foundation/device_paths.hpp"
#include "host/foundation/plist_objects.hpp"
#include "host/foundation/problems.hpp"
#include "host/plist/document.hpp"
#include "host/preferences/limits.hpp"
#include "host/preferences/named_method.hpp"

namespace wispen::preferences {

namespace {

/// What the device that is played has, by which "requiredCapabilities" filters.
constexpr std::array<std::string_view, 9> kCapabilities{
    "armv7", "arm64", "wifi", "bluetooth-le", "touch-id", "accelerometer", "gyroscope", "haptics", "metal"};

/// A data source may ask its page for the very list that it is being asked for; the list is then read without
/// it.
class DataSourceTurn {
 public:
  explicit DataSourceTurn(const std::string& list) : list_(list), first_(lists_asking.insert(list).second) {
    if (!first_) report_problem(list + ": a data source asks for the list that it belongs to");
  }
  DataSourceTurn(const DataSourceTurn&) = delete;
  DataSourceTurn& operator=(const DataSourceTurn&) = delete;
  ~DataSourceTurn() {
    if (first_) lists_asking.erase(list_);
  }
  bool granted() const { return first_; }

 private:
  static inline std::set<std::string> lists_asking;
  const std::string list_;
  const bool first_;
};

/// Reads one list's items; it knows the table that their texts are translated by.
class ListReader {
 public:
  ListReader(NSBundle bundle, NSString name, NSObject target)
      : bundle_(std::move(bundle)), name_(std::move(name)), target_(std::move(target)) {}

  PSSpecifier read(const NSDictionary& item) const {
    const auto cell = text(item, "cell"_ns);
    const std::string cell_name = cell ? cell.utf8() : "PSGroupCell";
    std::optional<CellType> type = cell_type_from_name(cell_name);
    if (!type) {
      report_problem(where() + ": unknown cell \"" + cell_name + "\"");
      type = CellType::StaticText;
    }
    const PSSpecifier specifier = make_specifier(translated(text(item, "label"_ns)), *type);
    specifier.setTarget(target_);
    specifier.setProperties(item);
    if (!text(item, "localizationTable"_ns)) specifier.setProperty(name_, "localizationTable"_ns);
    translate_properties(specifier);
    bind_selectors(specifier, item);
    read_choices(specifier, item);
    return specifier;
  }

  /// As it is to be shown: translated, and no longer than anybody reads.
  NSString translated(const NSString& source) const {
    if (!source || source.length() == 0) return source;
    const NSString text = bundle_.localizedString(source, source, name_);
    if (text.length() > kLongestText) {
      report_problem(where() + ": a text of " + std::to_string(text.length()) + " characters is cut at " +
                     std::to_string(kLongestText));
    }
    return shortened(text);
  }

  std::string where() const { return name_.utf8() + ".plist"; }

 private:
  static NSString text(const NSDictionary& item, const NSString& key) {
    return objc::cast_or_nil<NSString>(item.objectForKey(key));
  }

  // The label stays as the list has it, since cells use it as a key of the strings table; the name holds its
  // translation. Keys, values and ids are never translated.
  void translate_properties(const PSSpecifier& specifier) const {
    for (const NSString& key : {"footerText"_ns, "placeholder"_ns, "staticTextMessage"_ns}) {
      if (const NSString source = text(specifier.properties(), key)) {
        specifier.setProperty(translated(source), key);
      }
    }
    const auto confirmation = objc::cast_or_nil<NSDictionary>(specifier.propertyForKey("confirmation"_ns));
    if (!confirmation) return;
    const NSMutableDictionary translation = confirmation.mutableCopy();
    const NSArray keys = confirmation.allKeys();
    for (NSUInteger i = 0; i < keys.count(); ++i) {
      const auto key = keys.objectAtIndex<NSString>(i);
      if (const NSString source = text(confirmation, key)) translation.setObject(translated(source), key);
    }
    specifier.setProperty(translation, "confirmation"_ns);
  }

  static void bind_selectors(const PSSpecifier& specifier, const NSDictionary& item) {
    const auto named = [&](const NSString& key) {
      const NSString name = text(item, key);
      return name ? objc::Selector::named(name.utf8().c_str()) : objc::Selector();
    };
    const objc::Selector getter = named("get"_ns);
    const objc::Selector setter = named("set"_ns);
    set_accessors(specifier, getter ? getter : objc::selector<"readPreferenceValue:">(),
                  setter ? setter : objc::selector<"setPreferenceValue:specifier:">());
    specifier.setAction(named("action"_ns));
  }

  NSArray translated_array(const NSObject& source) const {
    const auto titles = objc::cast_or_nil<NSArray>(source);
    if (!titles) return NSArray();
    NSMutableArray translation = NSMutableArray::array();
    for (NSUInteger i = 0; i < titles.count(); ++i) {
      const auto title = objc::cast_or_nil<NSString>(titles.objectAtIndex(i));
      if (title) {
        translation.addObject(translated(title));
      } else {
        translation.addObject(titles.objectAtIndex(i));
      }
    }
    return translation;
  }

  /// The array that the item holds, or that the target gives where the item names a data source.
  NSArray choices(const NSDictionary& item, const NSString& key, const NSString& source_key,
                  const PSSpecifier& specifier) const {
    if (const NSString source = text(item, source_key)) {
      const auto selector = objc::Selector::named(source.utf8().c_str());
      if (may_perform(target_, selector, MethodRole::DataSource)) {
        const DataSourceTurn turn(where());
        if (turn.granted())
          return objc::cast_or_nil<NSArray>(objc::perform<NSObject>(target_, selector, specifier));
      }
    }
    return objc::cast_or_nil<NSArray>(item.objectForKey(key));
  }

  void read_choices(const PSSpecifier& specifier, const NSDictionary& item) const {
    const NSArray values = choices(item, "validValues"_ns, "valuesDataSource"_ns, specifier);
    if (!values) return;
    const NSArray titles =
        translated_array(choices(item, "validTitles"_ns, "titlesDataSource"_ns, specifier));
    if (titles && titles.count() != values.count()) {
      report_problem(where() + ": the row " + specifier.identifier().utf8() + " has " +
                     std::to_string(values.count()) + " values and " + std::to_string(titles.count()) +
                     " titles");
    }
    const NSArray short_titles = translated_array(item.objectForKey("shortTitles"_ns));
    if (short_titles) {
      specifier.setValues(values, titles ? titles : values, short_titles);
    } else {
      specifier.setValues(values, titles ? titles : values);
    }
  }

  NSBundle bundle_;
  NSString name_;
  NSObject target_;
};

bool device_has_what_it_needs(const NSDictionary& item) {
  const auto required = objc::cast_or_nil<NSArray>(item.objectForKey("requiredCapabilities"_ns));
  if (!required) return true;
  for (NSUInteger i = 0; i < required.count(); ++i) {
    const auto name = objc::cast_or_nil<NSString>(required.objectAtIndex(i));
    if (name && std::ranges::find(kCapabilities, name.utf8()) == kCapabilities.end()) return false;
  }
  return true;
}

}  // namespace

NSString shortened(const NSString& text) {
  if (!text || text.length() <= kLongestText) return text;
  // Not between the halves of a character of two units.
  const auto last = objc::send<"characterAtIndex:", unsigned short>(text, NSUInteger{kLongestText - 1});
  const std::size_t length = kLongestText - (last >= 0xD800 && last < 0xDC00 ? 1 : 0);
  return objc::send<"stringByAppendingString:", NSString>(
      objc::send<"substringToIndex:", NSString>(text, NSUInteger{length}), "\u2026"_ns);
}

SpecifierList load_specifier_list(const NSBundle& bundle, const NSString& name, const NSObject& target) {
  SpecifierList list{NSString(), NSMutableArray::array()};
  const ListReader reader(bundle, name, target);
  const NSString path = bundle.pathForResource(name, "plist"_ns);
  if (!path) {
    report_problem("the bundle has no list " + reader.where());
    return list;
  }
  // Row by row, for a list may hold any number of them.
  const auto file = plist::Document::read(path.utf8(), device_calls());
  if (!file || !file->root().is(plist::Type::Dictionary)) {
    report_problem(path.utf8() + " is no property list that can be read");
    return list;
  }
  const auto title = file->root().find("title");
  if (title && title->is(plist::Type::String)) list.title = reader.translated(string_of(title->string()));
  const auto items = file->root().find("items");
  if (!items || !items->is(plist::Type::Array)) {
    report_problem(reader.where() + " has no array \"items\"");
    return list;
  }
  std::size_t index = 0;
  for (const plist::Value value : items->elements()) {
    const std::size_t row = index++;
    if (row == kMostRows) {
      report_problem(reader.where() + ": only the first " + std::to_string(kMostRows) + " rows are shown");
      break;
    }
    if (!value.is(plist::Type::Dictionary)) {
      report_problem(reader.where() + ": item " + std::to_string(row) + " is not a dictionary");
      continue;
    }
    const objc::AutoreleasePool pool;
    const auto item = object_of(value).as<NSDictionary>();
    if (device_has_what_it_needs(item)) list.specifiers.addObject(reader.read(item));
  }
  return list;
}

}  // namespace wispen::preferences
