// home_screen/settings.hpp: what the pages store, as the home screen reads it.
#pragma once

#include <string>
#include <vector>

#include "platform/Foundation.hpp"

namespace wispen::home_screen {

enum class ColourMode { None, Auto, Custom };
enum class ColourSource { Dominant, Second, Fixed };
enum class LineStyle { Solid, Faded, Dotted };
enum class BlurStrength { Thin, Regular, Thick };
enum class LabelWeight { Light, Regular, Bold };

/// Of one page of separators. Lengths are points.
struct SeparatorSettings {
  bool bold_colour = true;
  bool bold_hidden = false;
  bool thin_colour = true;
  bool thin_hidden = false;
  LineStyle style = LineStyle::Solid;
  double thickness = 1;  // 0 to 10
  double trim = 0;       // 0 to 120, at each side

  bool operator==(const SeparatorSettings&) const = default;
};

/// Where the colour of menus, or of notifications, comes from.
struct ColourSettings {
  ColourMode mode = ColourMode::Auto;
  bool follow_icon = true;  // in the mode Auto
  std::string own = "#804D8C";

  bool operator==(const ColourSettings&) const = default;
};

/// Every value that the six pages offer. The defaults are those of their rows.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding): one of it, in the order of the pages
struct Settings {
  bool enabled = true;
  ColourSource source = ColourSource::Dominant;
  bool adapt_dark_icons = true;
  double intensity = 1;  // 0 to 2
  bool keep_system_apps = false;
  ColourSettings menus;
  ColourSettings notifications;

  // The names below the icons, while a menu is open.
  bool hide_names = false;
  bool hide_dock_names = false;
  bool fade_names = true;
  bool name_shadow = false;
  double name_opacity = 1;

  // The menu.
  bool vitrelle_background = false;
  BlurStrength blur = BlurStrength::Regular;
  bool background_colour = true;
  double background_opacity = 0.85;
  bool border = false;
  bool border_from_icon = true;
  std::string border_colour = "#B399CC";
  double border_width = 1.5;  // 0 to 8
  bool own_corner_radius = false;
  double corner_radius = 13;  // 0 to 40
  bool icon_background = false;
  double icon_background_opacity = 0.6;
  bool icons_hidden = false;
  bool label_colour = true;
  LabelWeight label_weight = LabelWeight::Regular;
  double label_opacity = 1;                 // 0.2 to 1
  std::vector<std::string> hidden_entries;  // none where they are not to be hidden
  bool widget_colour = true;
  SeparatorSettings menu_separators;

  // The expanded notification.
  bool title_colour = true;
  bool subtitle_colour = false;
  bool notification_background = true;
  double notification_opacity = 0.85;
  double notification_radius = 13;  // 0 to 40
  SeparatorSettings notification_separators;

  bool operator==(const Settings&) const = default;
};

/// Reads the whole file's dictionary; nil gives the defaults. A value that is missing, of another type or
/// none of the row's choices is the row's default, and a number out of the row's range its nearest end, for
/// anybody can write the file.
Settings read_settings(const NSDictionary& values);

}  // namespace wispen::home_screen
