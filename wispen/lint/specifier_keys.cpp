// wispen/lint/specifier_keys.cpp: the keys that a row may have, and what they hold.

#include "wispen/lint/specifier_keys.hpp"

#include <algorithm>
#include <array>

namespace wispen::lint {

namespace {

constexpr bool kIgnored = true;

struct KnownKey {
  std::string_view name;
  Holds holds;
  bool ignored = false;
};

using enum Holds;

constexpr std::array kKeys = std::to_array<KnownKey>({
    // Every row.
    {"cell", String},
    {"label", Text},
    {"id", String},
    {"key", String},
    {"default", Any},
    {"defaults", String},
    {"get", SelectorName},
    {"set", SelectorName},
    {"action", SelectorName},
    {"negate", Boolean},
    {"enabled", Boolean},
    {"height", Number},
    {"PostNotification", String},
    {"detail", ClassName},
    {"cellClass", ClassName},
    {"hasIcon", Boolean},
    {"icon", ImageName},
    {"iconImage", ImageName},
    {"bundle", String},
    {"isController", Boolean, kIgnored},
    {"requiredCapabilities", Array},
    {"dontIndentOnRemove", Boolean, kIgnored},
    {"pl_filter", Dictionary, kIgnored},
    {"localizationTable", String},
    // Groups.
    {"footerText", Text},
    {"footerAlignment", Number},
    {"headerCellClass", ClassName},
    {"footerCellClass", ClassName},
    {"isRadioGroup", Boolean},
    {"isStaticText", Boolean, kIgnored},
    // Switches.
    {"alternateColors", Boolean, kIgnored},
    {"confirmation", Dictionary},
    {"confirmationAction", SelectorName},
    {"cancel", SelectorName, kIgnored},
    // Sliders.
    {"min", Number},
    {"max", Number},
    {"showValue", Boolean},
    {"isContinuous", Boolean},
    {"isSegmented", Boolean},
    {"segmentCount", Number},
    {"leftImage", ImageName},
    {"rightImage", ImageName},
    // Choices.
    {"validTitles", Array},
    {"validValues", Array},
    {"shortTitles", Array},
    {"titlesDataSource", SelectorName},
    {"valuesDataSource", SelectorName},
    {"staticTextMessage", Text},
    // Text fields.
    {"placeholder", Text},
    {"keyboard", String},
    {"autoCaps", String},
    {"noAutoCorrect", Boolean},
    {"isIP", Boolean},
    {"isURL", Boolean},
    {"isNumeric", Boolean},
    {"isEmail", Boolean},
    // Buttons.
    {"isDestructive", Boolean},
    {"style", String},
});

struct Word {
  std::string_view word;
  Holds holds;
};
/// As the facts say it.
constexpr std::array kWords = std::to_array<Word>({{"string", String},
                                                   {"boolean", Boolean},
                                                   {"number", Number},
                                                   {"array", Array},
                                                   {"dictionary", Dictionary},
                                                   {"class", ClassName},
                                                   {"selector", SelectorName},
                                                   {"image", ImageName},
                                                   {"text", Text}});

}  // namespace

bool is_ignored(std::string_view name) {
  const auto* const found = std::ranges::find(kKeys, name, &KnownKey::name);
  return found != kKeys.end() && found->ignored;
}

std::optional<Holds> known_key(std::string_view name, const BundleFacts& facts) {
  if (const auto* const found = std::ranges::find(kKeys, name, &KnownKey::name); found != kKeys.end()) {
    return found->holds;
  }
  const auto own = std::ranges::find(facts.row_keys, name, [](const auto& key) { return key.first; });
  if (own == facts.row_keys.end()) return std::nullopt;
  const auto* const word = std::ranges::find(kWords, own->second, &Word::word);
  return word == kWords.end() ? Any : word->holds;
}

std::string_view description(Holds holds) {
  switch (holds) {
    case Boolean:
      return "yes or no";
    case Number:
      return "a number";
    case Array:
      return "an array";
    case Dictionary:
      return "a dictionary";
    case Any:
      return "a value";
    default:
      return "a string";
  }
}

}  // namespace wispen::lint
