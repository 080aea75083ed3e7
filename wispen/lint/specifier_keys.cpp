// wispen/lint/specifier_keys.cpp: the keys that a row may have, and what they hold.

#include "wispen/lint/specifier_keys.hpp"

#include <algorithm>
#include <array>

namespace wispen::lint {

namespace {

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
    {"isController", Boolean},
    {"requiredCapabilities", Array},
    {"dontIndentOnRemove", Boolean},
    {"pl_filter", Dictionary},
    {"localizationTable", String},
    // Groups.
    {"footerText", Text},
    {"footerAlignment", Number},
    {"headerCellClass", ClassName},
    {"footerCellClass", ClassName},
    {"isRadioGroup", Boolean},
    {"isStaticText", Boolean},
    // Switches.
    {"alternateColors", Boolean},
    {"confirmation", Dictionary},
    {"confirmationAction", SelectorName},
    {"cancel", SelectorName},
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
    // This bundle's.
    {"depends", String},
    {"dependsNot", String},
    {"labelDependant", Any},
    {"infoTitle", String},
    {"infoMessage", Text},
});

}  // namespace

std::span<const KnownKey> known_keys() { return kKeys; }

const KnownKey* find_known_key(std::string_view name) {
  const auto* const found = std::ranges::find(kKeys, name, &KnownKey::name);
  return found == kKeys.end() ? nullptr : found;
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
