// home_screen/screen.cpp: the home screen: an icon's menu and a notification, both open.

#include "home_screen/screen.hpp"

#include <algorithm>
#include <memory>
#include <string_view>

#include "home_screen/menu_view.hpp"
#include "home_screen/notification_view.hpp"
#include "host/wispen_host.h"

namespace wispen::home_screen {

namespace {

constexpr double kNameHeight = 18;
constexpr double kGap = 10;
constexpr double kShortGap = 5;  // on screens that all of it hardly fits on
constexpr double kShort = 700;
constexpr double kDockHeight = 104;
constexpr double kWidestNotification = 420;
constexpr double kFading = 0.3;       // seconds
constexpr double kBrightening = 0.9;  // seconds

bool is_dark() {
  const char* const appearance = wispen_host_look("appearance");
  return appearance != nullptr && std::string_view(appearance) == "dark";
}

/// How the names below icons are seen.
struct Names {
  bool hidden;
  bool fading;
  double opacity;
  bool shadow;
  NSInteger tag;
  UIColor ink = UIColor::whiteColor();
};

void add_name(const UIView& screen, const std::string& text, CGRect frame, const Names& names) {
  if (names.hidden && !names.fading) return;
  const UIFont font = UIFont::systemFontOfSize(12, UIFontWeightMedium);
  const UIView name = UIView::alloc().initWithFrame(frame);
  const CGRect inside{{0, 0}, frame.size};
  if (names.shadow) {
    const UIColor black = UIColor::colorWithWhite(0, 0.75);
    name.addSubview(make_label(text, font, black, CGRectOffset(inside, 0, 1.5), NSTextAlignment::Center));
  }
  name.addSubview(make_label(text, font, names.ink, inside, NSTextAlignment::Center));
  name.setAlpha(names.opacity);
  name.setTag(names.tag);
  screen.addSubview(name);
  if (names.hidden) UIView::animateWithDuration(kFading, [name] { name.setAlpha(0); });
}

void add_icons(const UIView& screen, const std::array<App, 4>& apps, CGRect row, const Names& names) {
  const double column = row.size.width / static_cast<double>(apps.size());
  for (std::size_t i = 0; i < apps.size(); ++i) {
    const double left = row.origin.x + column * static_cast<double>(i);
    const UIImageView icon = UIImageView::alloc().initWithImage(apps[i].icon);
    icon.setFrame({{left + (column - kIconSize) / 2, row.origin.y}, {kIconSize, kIconSize}});
    screen.addSubview(icon);
    add_name(screen, apps[i].name, {{left, row.origin.y + kIconSize + 4}, {column, kNameHeight}}, names);
  }
}

}  // namespace

struct Screen::Parts {
  Settings settings;
  std::unique_ptr<Apps> apps;
  UIImage background;
  CGSize background_size{0, 0};
  bool background_dark = false;
  CGRect built{{0, 0}, {0, 0}};
  bool names_seen = false;  // below the icons, until now
};

Screen::Parts& Screen::parts() const { return state<Parts>(); }

void Screen::define() {
  objc::Class<Screen>()
      .state<Parts>()
      .method<"viewDidLayoutSubviews", &Screen::viewDidLayoutSubviews>()
      .method<"traitCollectionDidChange:", &Screen::traitCollectionDidChange>()
      .register_class();
}

Screen Screen::make() { return objc::send<"new", Screen>(objc::class_for<Screen>()); }

void Screen::show(const Settings& settings, bool animated) const {
  parts().settings = settings;
  build(animated);
}

void Screen::viewDidLayoutSubviews() const {
  if (!(parts().built == view().bounds())) build(false);
}

void Screen::traitCollectionDidChange(const NSObject&) const { build(false); }

void Screen::brighten() const {
  const UIView dark = UIView::alloc().initWithFrame(view().bounds());
  dark.setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
  dark.setBackgroundColor(UIColor::blackColor());
  const UIView above = view().superview() ? view().superview() : view();
  above.addSubview(dark);
  UIView::animateWithDuration(
      kBrightening, [dark] { dark.setAlpha(0); }, [dark](bool) { dark.removeFromSuperview(); });
}

void Screen::build(bool animated) const {
  Parts& now = parts();
  const UIView screen = view();
  const CGRect bounds = screen.bounds();
  const CGSize size = bounds.size;
  const bool dark = is_dark();
  now.built = bounds;
  if (!now.apps) now.apps = std::make_unique<Apps>(UIScreen::mainScreen().scale());
  if (!now.background || !(now.background_size == size) || now.background_dark != dark) {
    now.background = wallpaper(size, dark);
    now.background_size = size;
    now.background_dark = dark;
  }

  while (screen.subviews().count() > 0) screen.subviews().objectAtIndex<UIView>(0).removeFromSuperview();
  const UIImageView behind = UIImageView::alloc().initWithImage(now.background);
  behind.setFrame(bounds);
  screen.addSubview(behind);

  const Settings& settings = now.settings;
  const UIEdgeInsets safe = screen.safeAreaInsets();
  const double gap = size.height < kShort ? kShortGap : kGap;
  const double top = safe.top + gap;
  // Beside each other where the screen is wide and not high.
  const bool wide = size.width > size.height;
  const double left = std::max(safe.left, wide ? 20.0 : 0.0);
  const double half = wide ? (size.width - left) / 2 : size.width;

  const double notification_width = std::min(half - 20, kWidestNotification);
  const UIView notification = make_notification(now.apps->notifying(), settings, dark, notification_width);
  const double notification_height = notification.frame().size.height;
  notification.setFrame({{wide ? left + half : (size.width - notification_width) / 2, top},
                         {notification_width, notification_height}});

  const bool fading = animated && settings.enabled && settings.fade_names && now.names_seen;
  Names names{settings.enabled && settings.hide_names, fading, settings.enabled ? settings.name_opacity : 1,
              settings.enabled && settings.name_shadow, kNameTag};
  now.names_seen = !names.hidden;
  const double row_width = wide ? half - 20 : size.width;
  const double row_top = wide ? top : top + notification_height + gap + 5;
  const double row_margin = 8;
  add_icons(screen, now.apps->row, {{left + row_margin, row_top}, {row_width - 2 * row_margin, kIconSize}},
            names);

  const UIView dock =
      make_pane({{10, size.height - kDockHeight - 10}, {size.width - 20, kDockHeight}}, 30,
                UIBlurEffectStyle::SystemThinMaterial, ground_of(UIColor(), 0.25, false, dark));
  screen.addSubview(dock);
  names.tag = kDockNameTag;
  names.ink = UIColor::labelColor();
  names.hidden = settings.enabled && settings.hide_dock_names;
  names.fading = false;
  add_icons(screen, now.apps->dock,
            {{row_margin, size.height - kDockHeight + 2}, {size.width - 2 * row_margin, kIconSize}}, names);

  double y = row_top + kIconSize + 4 + kNameHeight + gap;
  const double column = (row_width - 2 * row_margin) / static_cast<double>(now.apps->row.size());
  const double menu_left = left + row_margin + (column - kIconSize) / 2;
  for (const UIView& part :
       {make_widget(now.apps->pressed(), settings, dark), make_menu(now.apps->pressed(), settings, dark)}) {
    const CGSize own = part.frame().size;
    // A menu comes up where there is room for it, over whatever is there.
    y = std::max(0.0, std::min(y, size.height - own.height - kShortGap));
    part.setFrame({{menu_left, y}, own});
    screen.addSubview(part);
    y += own.height + gap;
  }
  screen.addSubview(notification);
}

}  // namespace wispen::home_screen
