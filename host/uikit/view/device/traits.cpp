// host/uikit/view/device/traits.cpp: what the user chose, and what device it is: everything a page adapts to.

#include "host/uikit/view/device/traits.hpp"

#include <algorithm>
#include <array>

#include "host/core/text_list.hpp"

namespace wispen::uikit {

namespace {

using graphics::Appearance;
using graphics::ContentSize;
using Values = std::vector<std::string>;

/// "a, b and c".
std::string enumerated(const Values& words) {
  std::string all;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (i > 0) all += i + 1 == words.size() ? " and " : ", ";
    all += words[i];
  }
  return all;
}

/// The value with that name; false, and nothing is changed, where there is none.
template <class Value, std::size_t N>
bool choose(Value& value, const std::array<std::pair<const char*, Value>, N>& choices,
            const std::string& name) {
  for (const auto& [known, choice] : choices) {
    if (name != known) continue;
    value = choice;
    return true;
  }
  return false;
}

template <class Value, std::size_t N>
std::string name_in(const std::array<std::pair<const char*, Value>, N>& choices, Value value) {
  return std::ranges::find(choices, value, [](const auto& choice) { return choice.second; })->first;
}

template <class Value, std::size_t N>
Values names_in(const std::array<std::pair<const char*, Value>, N>& choices) {
  Values names;
  for (const auto& [name, value] : choices) names.emplace_back(name);
  return names;
}

constexpr std::array<std::pair<const char*, Appearance>, 2> kAppearances{
    {{"light", Appearance::Light}, {"dark", Appearance::Dark}}};
constexpr std::array<std::pair<const char*, ReadingDirection>, 3> kDirections{
    {{"ltr", ReadingDirection::LeftToRight},
     {"rtl", ReadingDirection::RightToLeft},
     {"natural", ReadingDirection::Natural}}};
constexpr std::array<std::pair<const char*, Orientation>, 2> kOrientations{
    {{"portrait", Orientation::Portrait}, {"landscape", Orientation::Landscape}}};

Values text_sizes() {
  Values names;
  for (int size = 0; size <= static_cast<int>(ContentSize::AccessibilityExtraExtraExtraLarge); ++size) {
    names.emplace_back(graphics::content_size_name(static_cast<ContentSize>(size)));
  }
  return names;
}

Values device_names() {
  Values names;
  for (const DeviceModel& model : device_models()) names.push_back(model.name);
  return names;
}

constexpr std::array kFields{
    TraitField{"appearance", "The system's appearance", [] { return names_in(kAppearances); },
               [](const Traits& traits) { return name_in(kAppearances, traits.appearance); },
               [](Traits& traits, const std::string& value) {
                 return choose(traits.appearance, kAppearances, value);
               }},
    TraitField{"language", "The user's languages, most wanted first", [] { return Values(); },
               [](const Traits& traits) { return joined(traits.languages, ","); },
               [](Traits& traits, const std::string& value) {
                 Values languages = split_list(value, ',');
                 if (languages.empty()) return false;
                 traits.languages = std::move(languages);
                 return true;
               }},
    TraitField{"direction", "The way the language is read", [] { return names_in(kDirections); },
               [](const Traits& traits) { return name_in(kDirections, traits.direction); },
               [](Traits& traits, const std::string& value) {
                 return choose(traits.direction, kDirections, value);
               }},
    TraitField{
        "text-size", "The user's text size", text_sizes,
        [](const Traits& traits) { return std::string(graphics::content_size_name(traits.text_size)); },
        [](Traits& traits, const std::string& value) {
          const auto size = graphics::content_size_from_name(value);
          traits.text_size = size.value_or(traits.text_size);
          return size.has_value();
        }},
    TraitField{"device", "The device", device_names, [](const Traits& traits) { return traits.device; },
               [](Traits& traits, const std::string& value) {
                 if (find_device(value) == nullptr) return false;
                 traits.device = value;
                 return true;
               }},
    TraitField{"orientation", "How the device is held", [] { return names_in(kOrientations); },
               [](const Traits& traits) { return name_in(kOrientations, traits.orientation); },
               [](Traits& traits, const std::string& value) {
                 return choose(traits.orientation, kOrientations, value);
               }},
};

}  // namespace

bool Traits::is_right_to_left() const {
  if (direction != ReadingDirection::Natural) return direction == ReadingDirection::RightToLeft;
  const std::string language = languages.front().substr(0, languages.front().find('-'));
  constexpr std::array kRightToLeft{"ar", "fa", "he", "ur", "yi", "ps", "ug"};
  return std::ranges::find(kRightToLeft, language) != kRightToLeft.end();
}

DeviceModel Traits::device_model() const {
  DeviceModel model = *find_device(device);
  model.orientation = orientation;
  return model;
}

DisplaySettings Traits::display_settings() const {
  const DeviceModel* const model = find_device(device);
  return {.scale = static_cast<float>(model->scale),
          .idiom = model->idiom,
          .appearance = appearance,
          .content_size = text_size,
          .right_to_left = is_right_to_left()};
}

std::span<const TraitField> trait_fields() { return kFields; }

const TraitField* find_trait(std::string_view name) {
  const auto* const found = std::ranges::find(kFields, name, &TraitField::name);
  return found != kFields.end() ? found : nullptr;
}

Result<void> set_trait(Traits& traits, const std::string& name, const std::string& value) {
  const TraitField* const field = find_trait(name);
  if (field == nullptr) {
    Values names;
    for (const TraitField& known : kFields) names.emplace_back(known.name);
    return Error{"there is no trait \"" + name + "\": " + enumerated(names) + " are known"};
  }
  if (field->set(traits, value)) return {};
  const Values known = field->values();
  if (known.empty()) return Error{"the trait \"" + name + "\" needs at least one value"};
  return Error{"there is no " + name + " \"" + value + "\": " + enumerated(known) + " are known"};
}

}  // namespace wispen::uikit
