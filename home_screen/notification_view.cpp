// home_screen/notification_view.cpp: a notification that was pressed, with its actions.

#include "home_screen/notification_view.hpp"

#include "home_screen/separator.hpp"

namespace wispen::home_screen {

namespace {

constexpr double kMargin = 14;
constexpr double kIcon = 38;
constexpr double kTextLeft = kMargin + kIcon + 12;
constexpr double kBannerHeight = 90;
constexpr double kActionHeight = 44;
constexpr double kSystemRadius = 13;
constexpr double kSystemOpacity = 0.85;
constexpr double kTimeWidth = 44;

struct Look {
  const Settings& settings;
  UIColor colour;  // nil where the notification is plain
  Ground ground;

  UIColor ink(bool in_colour) const {
    return colour && in_colour ? coloured_ink(colour, ground) : plain_ink(ground);
  }
};

void add_banner(const UIView& pane, const App& app, const Look& look, double width) {
  const UIImageView icon = UIImageView::alloc().initWithImage(app.icon);
  icon.setFrame({{kMargin, kMargin}, {kIcon, kIcon}});
  pane.addSubview(icon);
  const double text_width = width - kTextLeft - kMargin;
  pane.addSubview(make_label("Harbour Trip", UIFont::systemFontOfSize(15, UIFontWeightSemibold),
                             look.ink(look.settings.title_colour),
                             {{kTextLeft, 13}, {text_width - kTimeWidth, 20}}));
  pane.addSubview(make_label("now", UIFont::systemFontOfSize(13), plain_secondary_ink(look.ground),
                             {{width - kMargin - kTimeWidth, 13}, {kTimeWidth, 20}}, NSTextAlignment::Right));
  pane.addSubview(make_label("Ida, " + app.name, UIFont::systemFontOfSize(15, UIFontWeightMedium),
                             look.ink(look.settings.subtitle_colour), {{kTextLeft, 34}, {text_width, 20}}));
  pane.addSubview(make_label("We leave at nine. Bring the thermos!", UIFont::systemFontOfSize(15),
                             plain_ink(look.ground), {{kTextLeft, 56}, {text_width, 20}}));
}

}  // namespace

UIView make_notification(const App& app, const Settings& settings, bool dark, double width) {
  Look look{settings, colour_for(app, settings, settings.notifications, dark), {}};
  look.ground = ground_of(settings.notification_background ? look.colour : UIColor(),
                          settings.enabled ? settings.notification_opacity : kSystemOpacity, false, dark);
  const UIView pane = make_pane({{0, 0}, {width, kBannerHeight}},
                                settings.enabled ? settings.notification_radius : kSystemRadius,
                                UIBlurEffectStyle::SystemMaterial, look.ground);
  pane.setTag(kNotificationTag);
  add_banner(pane, app, look, width);
  double y = kBannerHeight;
  SeparatorKind above = SeparatorKind::Bold;
  for (const char* const action : {"Reply", "Mark as Read", "Mute"}) {
    const UIView line = make_separator(above, settings.notification_separators, look.colour, look.ground,
                                       settings.enabled, y, width);
    if (line) {
      line.setTag(kSeparatorTag);
      pane.addSubview(line);
      y += line.frame().size.height;
    }
    above = SeparatorKind::Thin;
    pane.addSubview(make_label(action, UIFont::systemFontOfSize(17), plain_ink(look.ground),
                               {{kMargin, y}, {width - 2 * kMargin, kActionHeight}},
                               NSTextAlignment::Center));
    y += kActionHeight;
  }
  set_pane_height(pane, y);
  return pane;
}

}  // namespace wispen::home_screen
