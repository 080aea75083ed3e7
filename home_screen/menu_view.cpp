// home_screen/menu_view.cpp: the menu that opens when an icon is pressed.

#include "home_screen/menu_view.hpp"

#include <algorithm>
#include <array>
#include <optional>

#include "home_screen/separator.hpp"

namespace wispen::home_screen {

namespace {

constexpr double kRowHeight = 44;
constexpr double kMargin = 16;
constexpr double kSymbolSize = 20;
constexpr double kIconPlate = 30;
constexpr double kSystemRadius = 13;
constexpr double kSystemOpacity = 0.85;
constexpr double kWidgetHeight = 72;

struct Entry {
  const char* name;
  const char* symbol;
  int group;  // bold lines part the groups
  bool destructive = false;
};
constexpr std::array<Entry, 5> kEntries{Entry{"New Page", "plus", 0}, Entry{"Search", "magnifyingglass", 0},
                                        Entry{"Edit Home Screen", "iphone", 1},
                                        Entry{"Share", "chevron.up", 1},
                                        Entry{"Remove App", "minus", 1, true}};

UIFont label_font(LabelWeight weight) {
  switch (weight) {
    case LabelWeight::Light:
      return UIFont::systemFontOfSize(17, UIFontWeightLight);
    case LabelWeight::Bold:
      return UIFont::systemFontOfSize(17, UIFontWeightBold);
    default:
      return UIFont::systemFontOfSize(17);
  }
}

UIBlurEffectStyle blur_style(const Settings& settings) {
  if (!settings.enabled || !settings.vitrelle_background) return UIBlurEffectStyle::SystemMaterial;
  switch (settings.blur) {
    case BlurStrength::Thin:
      return UIBlurEffectStyle::SystemUltraThinMaterial;
    case BlurStrength::Thick:
      return UIBlurEffectStyle::SystemThickMaterial;
    default:
      return UIBlurEffectStyle::SystemThinMaterial;
  }
}

/// What all rows of one menu have in common. `colour` is nil where the menu is plain.
struct Look {
  const Settings& settings;
  UIColor colour;
  Ground ground;

  bool labels_coloured() const { return colour && settings.label_colour; }
};

UIColor label_ink(const Look& look, const Entry& entry) {
  if (look.labels_coloured()) return coloured_ink(look.colour, look.ground);
  // Red would not be read on most colours.
  if (entry.destructive && !look.ground.coloured) return UIColor::systemRedColor();
  return plain_ink(look.ground);
}

void add_icon(const UIView& row, const Look& look, const Entry& entry, UIColor ink) {
  if (look.settings.enabled && look.settings.icons_hidden) return;
  const double middle = kMenuWidth - kMargin - kSymbolSize / 2;
  if (look.colour && look.settings.icon_background) {
    const UIView plate = UIView::alloc().initWithFrame(
        {{middle - kIconPlate / 2, (kRowHeight - kIconPlate) / 2}, {kIconPlate, kIconPlate}});
    const Ground ground =
        covered(look.ground, coloured_line(look.colour, look.ground), look.settings.icon_background_opacity);
    plate.setBackgroundColor(ground.fill);
    ink = plain_ink(ground);
    plate.layer().setCornerRadius(7);
    plate.setTag(kIconPlateTag);
    row.addSubview(plate);
  }
  const UIImageView icon = UIImageView::alloc().initWithImage(
      UIImage::systemImageNamed(entry.symbol, UIImageSymbolConfiguration::configurationWithPointSize(17)));
  icon.setContentMode(UIViewContentMode::Center);
  icon.setFrame({{middle - kIconPlate / 2, 0}, {kIconPlate, kRowHeight}});
  icon.setTintColor(ink);
  row.addSubview(icon);
}

UIView make_row(const Look& look, const Entry& entry, double y) {
  const UIView row = UIView::alloc().initWithFrame({{0, y}, {kMenuWidth, kRowHeight}});
  const UIColor ink = label_ink(look, entry);
  const UIFont font = label_font(look.settings.enabled ? look.settings.label_weight : LabelWeight::Regular);
  const UILabel label =
      make_label(entry.name, font, ink, {{kMargin, 0}, {kMenuWidth - 3 * kMargin - kSymbolSize, kRowHeight}});
  if (look.settings.enabled) label.setAlpha(look.settings.label_opacity);
  row.addSubview(label);
  add_icon(row, look, entry, ink);
  return row;
}

UIColor border_colour(const Look& look) {
  if (look.settings.border_from_icon && look.colour) return look.colour;
  return colour_from_text(look.settings.border_colour);
}

/// The rows, and the lines between them; gives the height of all.
double add_rows(const UIView& menu, const Look& look) {
  double y = 0;
  std::optional<int> group;
  for (const Entry& entry : kEntries) {
    const auto& hidden = look.settings.hidden_entries;
    if (look.settings.enabled && std::ranges::find(hidden, entry.name) != hidden.end()) continue;
    if (group) {
      const SeparatorKind kind = *group == entry.group ? SeparatorKind::Thin : SeparatorKind::Bold;
      const UIView line = make_separator(kind, look.settings.menu_separators, look.colour, look.ground,
                                         look.settings.enabled, y, kMenuWidth);
      if (line) {
        line.setTag(kSeparatorTag);
        menu.addSubview(line);
        y += line.frame().size.height;
      }
    }
    group = entry.group;
    menu.addSubview(make_row(look, entry, y));
    y += kRowHeight;
  }
  return y;
}

}  // namespace

UIView make_widget(const App& app, const Settings& settings, bool dark) {
  const UIColor given = settings.widget_colour ? colour_for(app, settings, settings.menus, dark) : UIColor();
  const Ground ground = ground_of(given, kSystemOpacity, false, dark);
  const UIView widget = make_pane({{0, 0}, {kMenuWidth, kWidgetHeight}}, kSystemRadius,
                                  UIBlurEffectStyle::SystemMaterial, ground);
  widget.setTag(kWidgetTag);
  const UIColor ink = given ? coloured_ink(given, ground) : plain_ink(ground);
  widget.addSubview(make_label("Tonight", UIFont::systemFontOfSize(13, UIFontWeightSemibold),
                               plain_secondary_ink(ground), {{kMargin, 11}, {kMenuWidth - 2 * kMargin, 17}}));
  widget.addSubview(make_label("Waxing moon, 71 %", UIFont::systemFontOfSize(17, UIFontWeightSemibold), ink,
                               {{kMargin, 33}, {kMenuWidth - 2 * kMargin, 24}}));
  return widget;
}

UIView make_menu(const App& app, const Settings& settings, bool dark) {
  Look look{settings, colour_for(app, settings, settings.menus, dark), {}};
  const bool bare_blur = settings.enabled && settings.vitrelle_background;
  look.ground = ground_of(settings.background_colour ? look.colour : UIColor(),
                          settings.enabled ? settings.background_opacity : kSystemOpacity, bare_blur, dark);
  const double radius =
      settings.enabled && settings.own_corner_radius ? settings.corner_radius : kSystemRadius;
  const UIView menu =
      make_pane({{0, 0}, {kMenuWidth, kRowHeight}}, radius, blur_style(settings), look.ground);
  menu.setTag(kMenuTag);
  set_pane_height(menu, add_rows(menu, look));
  if (settings.enabled && settings.border) {
    menu.layer().setBorderWidth(settings.border_width);
    const UIColor ink = border_colour(look);
    if (ink) menu.layer().setBorderColor(ink.CGColor());
  }
  return menu;
}

}  // namespace wispen::home_screen
