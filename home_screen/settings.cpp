// home_screen/settings.cpp: what the pages store, as the home screen reads it.

#include "home_screen/settings.hpp"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace wispen::home_screen {

namespace {

/// Each function changes `value` only where the dictionary holds something usable.
class Reader {
 public:
  explicit Reader(const NSDictionary& values) : values_(values) {}

  void flag(const std::string& key, bool& value) const {
    if (const auto number = get<NSNumber>(key)) value = number.boolValue();
  }
  void number(const std::string& key, double& value, double least, double most) const {
    const auto stored = get<NSNumber>(key);
    if (stored && !std::isnan(stored.doubleValue())) value = std::clamp(stored.doubleValue(), least, most);
  }
  void text(const std::string& key, std::string& value) const {
    if (const auto stored = get<NSString>(key)) value = stored.utf8();
  }
  template <class Choice>
  void choice(const std::string& key, Choice& value,
              std::initializer_list<std::pair<std::string_view, Choice>> choices) const {
    const std::string stored = get<NSString>(key).utf8();
    const auto found = std::ranges::find(choices, stored, [](const auto& each) { return each.first; });
    if (found != choices.end()) value = found->second;
  }

 private:
  template <class T>
  T get(const std::string& key) const {
    return objc::cast_or_nil<T>(values_.objectForKey(NSString(key.c_str())));
  }
  const NSDictionary& values_;
};

void read_colour(const Reader& reader, const std::string& prefix, ColourSettings& colour) {
  reader.choice(prefix + "Mode", colour.mode,
                {{"none", ColourMode::None}, {"auto", ColourMode::Auto}, {"custom", ColourMode::Custom}});
  reader.flag(prefix + "AutoColor", colour.follow_icon);
  reader.text(prefix + "Color", colour.own);
}

void read_separators(const Reader& reader, const std::string& prefix, SeparatorSettings& separators) {
  reader.flag(prefix + "BoldColor", separators.bold_colour);
  reader.flag(prefix + "BoldHidden", separators.bold_hidden);
  reader.flag(prefix + "ThinColor", separators.thin_colour);
  reader.flag(prefix + "ThinHidden", separators.thin_hidden);
  reader.choice(prefix + "SeparatorStyle", separators.style,
                {{"solid", LineStyle::Solid}, {"faded", LineStyle::Faded}, {"dotted", LineStyle::Dotted}});
  reader.number(prefix + "SeparatorThickness", separators.thickness, 0, 10);
  reader.number(prefix + "SeparatorTrim", separators.trim, 0, 120);
}

void read_menu(const Reader& reader, Settings& settings) {
  reader.flag("vitrelleBackground", settings.vitrelle_background);
  reader.choice(
      "backgroundBlur", settings.blur,
      {{"thin", BlurStrength::Thin}, {"regular", BlurStrength::Regular}, {"thick", BlurStrength::Thick}});
  reader.flag("backgroundDynamic", settings.background_colour);
  reader.number("backgroundOpacity", settings.background_opacity, 0, 1);
  reader.flag("borderEnabled", settings.border);
  reader.flag("borderDynamic", settings.border_from_icon);
  reader.text("borderColor", settings.border_colour);
  reader.number("borderWidth", settings.border_width, 0, 8);
  reader.flag("cornerRadiusEnabled", settings.own_corner_radius);
  reader.number("cornerRadius", settings.corner_radius, 0, 40);
  reader.flag("iconBackground", settings.icon_background);
  reader.number("iconBackgroundOpacity", settings.icon_background_opacity, 0, 1);
  reader.flag("iconsHidden", settings.icons_hidden);
  reader.flag("labelColor", settings.label_colour);
  reader.choice(
      "labelWeight", settings.label_weight,
      {{"light", LabelWeight::Light}, {"regular", LabelWeight::Regular}, {"bold", LabelWeight::Bold}});
  reader.number("menuLabelOpacity", settings.label_opacity, 0.2, 1);
  reader.flag("hsExpandedColor", settings.widget_colour);
}

/// "Remove App; Share" names two entries.
std::vector<std::string> names_in(const std::string& text) {
  std::vector<std::string> names;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t end = std::min(text.find(';', start), text.size());
    const std::size_t first = text.find_first_not_of(" \t", start);
    if (first < end) names.push_back(text.substr(first, text.find_last_not_of(" \t", end - 1) - first + 1));
    start = end + 1;
  }
  return names;
}

}  // namespace

Settings read_settings(const NSDictionary& values) {
  Settings settings;
  const Reader reader(values);
  reader.flag("enabled", settings.enabled);
  reader.choice("colorSource", settings.source,
                {{"dominant", ColourSource::Dominant},
                 {"second", ColourSource::Second},
                 {"fixed", ColourSource::Fixed}});
  reader.flag("adaptDarkIcons", settings.adapt_dark_icons);
  reader.number("colorIntensity", settings.intensity, 0, 2);
  reader.flag("keepSystemApps", settings.keep_system_apps);
  read_colour(reader, "regular", settings.menus);
  read_colour(reader, "notification", settings.notifications);

  reader.flag("hideLabels", settings.hide_names);
  reader.flag("dockHideLabels", settings.hide_dock_names);
  reader.flag("labelFade", settings.fade_names);
  reader.flag("labelShadow", settings.name_shadow);
  reader.number("labelOpacity", settings.name_opacity, 0, 1);

  read_menu(reader, settings);
  bool hides_entries = false;
  std::string entries;
  reader.flag("hiddenCellsEnabled", hides_entries);
  reader.text("hiddenCells", entries);
  if (hides_entries) settings.hidden_entries = names_in(entries);
  read_separators(reader, "hs", settings.menu_separators);

  reader.flag("expandedTitle", settings.title_colour);
  reader.flag("expandedSubtitle", settings.subtitle_colour);
  reader.flag("expandedBackground", settings.notification_background);
  reader.number("expandedBackgroundOpacity", settings.notification_opacity, 0, 1);
  reader.number("expandedCornerRadius", settings.notification_radius, 0, 40);
  read_separators(reader, "ls", settings.notification_separators);
  return settings;
}

}  // namespace wispen::home_screen
