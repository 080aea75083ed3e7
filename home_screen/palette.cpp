// home_screen/palette.cpp: which colour a menu or a notification takes, and what can be read on it.

#include "home_screen/palette.hpp"

#include <algorithm>

namespace wispen::home_screen {

namespace {

constexpr Tone kWhite{1, 1, 1};
constexpr Tone kBlack{0, 0, 0};
constexpr Tone kLightPlate{.95, .95, .96};
constexpr Tone kDarkPlate{.16, .16, .18};

Tone tone_of(const UIColor& given) {
  Tone tone;
  given.getRed(&tone.red, &tone.green, &tone.blue, &tone.alpha);
  return tone;
}

bool is_dark(const UIColor& given) {
  if (objc::responds_to(given, objc::selector<"wispIsDarkColor">()))
    return objc::send<"wispIsDarkColor", bool>(given);
  return false;
}

UIColor icon_colour(const UIImage& icon, ColourSource source) {
  // No class of the platform has these methods: the bundle brings them.
  if (!objc::responds_to(icon, objc::selector<"wispDominantColor">())) return UIColor();
  return source == ColourSource::Second ? objc::send<"wispSecondDominantColor", UIColor>(icon)
                                        : objc::send<"wispDominantColor", UIColor>(icon);
}

UIColor with_intensity(const UIColor& found, double intensity) {
  if (intensity == 1) return found;  // as it was found, to the last digit
  CGFloat hue = 0, saturation = 0, brightness = 0, alpha = 0;
  if (!found.getHue(&hue, &saturation, &brightness, &alpha)) return found;
  return UIColor::colorWithHue(hue, std::clamp(saturation * intensity, 0.0, 1.0), brightness, alpha);
}

UIColor lightened(const UIColor& dark) {
  constexpr double kStep = 0.05;
  UIColor result = dark;
  for (double part = kStep; part < 1 && is_dark(result); part += kStep) {
    result = colour(mix(tone_of(dark), kWhite, part));
  }
  return result;
}

Tone ink_on(const Ground& ground) { return is_dark(ground.seen) ? kWhite : kBlack; }

}  // namespace

UIColor colour_from_text(const std::string& text) {
  const objc::ClassRef colours = objc::class_for<UIColor>();
  if (!objc::responds_to(UIColor::blackColor(), objc::selector<"wispIsDarkColor">())) return UIColor();
  return objc::send<"wispRGBAColorFromHexString:", UIColor>(colours, NSString(text.c_str()));
}

UIColor colour_for(const App& app, const Settings& settings, const ColourSettings& place, bool dark) {
  if (!settings.enabled || place.mode == ColourMode::None) return UIColor();
  if (settings.keep_system_apps && app.came_with_the_device) return UIColor();
  const bool from_icon =
      place.mode == ColourMode::Auto && place.follow_icon && settings.source != ColourSource::Fixed;
  const UIColor found = from_icon ? icon_colour(app.icon, settings.source) : colour_from_text(place.own);
  if (!found) return found;
  const UIColor strong = with_intensity(found, settings.intensity);
  return from_icon && dark && settings.adapt_dark_icons ? lightened(strong) : strong;
}

Ground ground_of(const UIColor& given, double opacity, bool bare_blur, bool dark) {
  const Tone plate = dark ? kDarkPlate : kLightPlate;
  if (!given) {
    Tone fill = plate;
    fill.alpha = bare_blur ? 0 : opacity;
    return {colour(fill), colour(plate), false};
  }
  const double part = bare_blur ? opacity / 2 : opacity;
  Tone fill = tone_of(given);
  const Tone seen = mix(plate, {fill.red, fill.green, fill.blue}, part);
  fill.alpha *= part;
  return {colour(fill), colour(seen), true};
}

Ground covered(const Ground& ground, const UIColor& given, double opacity) {
  return {given.colorWithAlphaComponent(opacity), colour(mix(tone_of(ground.seen), tone_of(given), opacity)),
          true};
}

UIColor plain_ink(const Ground& ground) {
  return ground.coloured ? colour(ink_on(ground)) : UIColor::labelColor();
}
UIColor plain_secondary_ink(const Ground& ground) {
  return ground.coloured ? colour(ink_on(ground)).colorWithAlphaComponent(0.7)
                         : UIColor::secondaryLabelColor();
}
UIColor plain_line(const Ground& ground) {
  return ground.coloured ? colour(ink_on(ground)).colorWithAlphaComponent(0.25) : UIColor::separatorColor();
}
UIColor coloured_ink(const UIColor& given, const Ground& ground) {
  return ground.coloured ? colour(mix(tone_of(given), ink_on(ground), 0.75)) : given;
}
UIColor coloured_line(const UIColor& given, const Ground& ground) {
  return ground.coloured ? colour(mix(tone_of(given), ink_on(ground), 0.4)) : given;
}

}  // namespace wispen::home_screen
