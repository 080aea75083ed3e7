// host/uikit/values/color.cpp: UIColor.

#include "host/uikit/values/color.hpp"

#include <array>
#include <cstdio>
#include <functional>
#include <string>
#include <utility>

#include "host/graphics/system_colours.hpp"
#include "host/uikit/values/core_graphics.hpp"
#include "host/uikit/values/display_settings.hpp"

namespace wispen::uikit {

using graphics::Appearance;
using graphics::Colour;
using graphics::Components;

struct ColorState {
  Colour colour;
  // By appearance; made with the colour, because components are read from any thread.
  std::array<CountedRef<::CGColor>, 2> references;
};

namespace {

constexpr NSInteger kDarkStyle = 2;
constexpr NSInteger kLightStyle = 1;

using Provider = objc::Block<UIColor(NSObject)>;

void put(double* where, double value) {
  if (where != nullptr) *where = value;
}

Components components_of(CGColorRef color) {
  return color != nullptr ? color->components : Components::grey(0, 0);
}

Colour provided(const Provider& provider) {
  const auto ask = [&](NSInteger style) {
    const auto traits = objc::send<"traitCollectionWithUserInterfaceStyle:", NSObject>(
        objc::class_named<"UITraitCollection">(), style);
    const Appearance appearance = style == kDarkStyle ? Appearance::Dark : Appearance::Light;
    return Colour(colour_of(provider(traits)).resolved(appearance));
  };
  const Colour light = ask(kLightStyle);
  return Colour::dynamic(light, ask(kDarkStyle));
}

Color color_with_rgb(objc::ClassRef, double red, double green, double blue, double alpha) {
  return Color::make(Colour::rgb(red, green, blue, alpha));
}
Color color_with_white(objc::ClassRef, double white, double alpha) {
  return Color::make(Colour::grey(white, alpha));
}
Color color_with_hsb(objc::ClassRef, double hue, double saturation, double brightness, double alpha) {
  return Color::make(Colour::hsb(hue, saturation, brightness, alpha));
}
Color color_with_cg_color(objc::ClassRef, CGColorRef color) {
  return color != nullptr ? Color::make(Colour(components_of(color))) : Color();
}
Color color_with_provider(objc::ClassRef, const Provider& provider) {
  return provider ? Color::make(provided(provider)) : Color();
}

Color init_plain(objc::Allocated<Color> self) {
  return with_colour(std::move(self).initialize_super<"init">(), Colour());
}
Color init_with_rgb(objc::Allocated<Color> self, double red, double green, double blue, double alpha) {
  return with_colour(std::move(self).initialize_super<"init">(), Colour::rgb(red, green, blue, alpha));
}
Color init_with_white(objc::Allocated<Color> self, double white, double alpha) {
  return with_colour(std::move(self).initialize_super<"init">(), Colour::grey(white, alpha));
}
Color init_with_hsb(objc::Allocated<Color> self, double hue, double saturation, double brightness,
                    double alpha) {
  return with_colour(std::move(self).initialize_super<"init">(),
                     Colour::hsb(hue, saturation, brightness, alpha));
}
Color init_with_cg_color(objc::Allocated<Color> self, CGColorRef color) {
  return with_colour(std::move(self).initialize_super<"init">(), Colour(components_of(color)));
}
Color init_with_provider(objc::Allocated<Color> self, const Provider& provider) {
  return with_colour(std::move(self).initialize_super<"init">(), provided(provider));
}

/// One object a name, as on the platform; it lives as long as the process.
template <objc::FixedString Sel>
Color named(objc::ClassRef) {
  constexpr std::string_view kEnding = "Color";
  constexpr std::string_view kName(Sel.value, Sel.size() - kEnding.size());
  static const auto* const kept = new Color(Color::make(graphics::named_colour(kName).value_or(Colour())));
  return *kept;
}

template <objc::FixedString... Selectors>
void add_named(objc::Class<Color>& color) {
  (color.class_method<Selectors, &named<Selectors>>(), ...);
}

std::string described(const Components& components) {
  const bool grey = components.space() == graphics::ColourSpace::Grey;
  std::string text = grey ? "UIExtendedGrayColorSpace" : "UIExtendedSRGBColorSpace";
  for (int i = 0; i < components.count(); ++i) {
    std::array<char, 32> number{};
    std::snprintf(number.data(), number.size(), " %g", components.values()[static_cast<std::size_t>(i)]);
    text += number.data();
  }
  return text;
}

}  // namespace

ColorState& Color::parts() const { return state<ColorState>(); }

Color with_colour(Color color, const Colour& colour) {
  if (!color) return color;
  ColorState& parts = color.parts();
  parts.colour = colour;
  for (const Appearance each : {Appearance::Light, Appearance::Dark}) {
    auto& reference = parts.references[static_cast<std::size_t>(each)];
    const bool shared = each == Appearance::Dark && !colour.is_dynamic();
    reference = shared ? parts.references[0]
                       : CountedRef<::CGColor>::adopt(Counted::make<::CGColor>(colour.resolved(each)));
  }
  return color;
}

Color Color::make(const Colour& colour) {
  return with_colour(objc::allocate<Color>().initialize_super<"init">(), colour);
}

const Colour& Color::colour() const { return parts().colour; }

Color Color::colorWithAlphaComponent(double alpha) const { return make(colour().with_alpha(alpha)); }

Color Color::resolvedColorWithTraitCollection(const NSObject& traits) const {
  return colour().is_dynamic() ? make(Colour(colour().resolved(appearance_of(traits)))) : *this;
}

bool Color::getRed(double* red, double* green, double* blue, double* alpha) const {
  const graphics::Rgba rgba = colour().rgba(display_settings().appearance);
  put(red, rgba.red);
  put(green, rgba.green);
  put(blue, rgba.blue);
  put(alpha, rgba.alpha);
  return true;
}

bool Color::getHue(double* hue, double* saturation, double* brightness, double* alpha) const {
  const graphics::Hsba hsba = colour().to_hsb(display_settings().appearance);
  put(hue, hsba.hue);
  put(saturation, hsba.saturation);
  put(brightness, hsba.brightness);
  put(alpha, hsba.alpha);
  return true;
}

bool Color::getWhite(double* white, double* alpha) const {
  const Components& components = colour().resolved(display_settings().appearance);
  const graphics::Rgba rgba = components.to_rgba();
  // Equal components are that grey exactly; others are weighed as luminance.
  const bool grey = rgba.red == rgba.green && rgba.green == rgba.blue;
  put(white, grey ? rgba.red : 0.299 * rgba.red + 0.587 * rgba.green + 0.114 * rgba.blue);
  put(alpha, rgba.alpha);
  return true;
}

CGColorRef Color::CGColor() const {
  return parts().references[static_cast<std::size_t>(display_settings().appearance)].get();
}

bool Color::isEqual(const NSObject& other) const {
  const auto color = objc::cast_or_nil<Color>(other);
  return color && color.colour() == colour();
}

NSUInteger Color::hash() const {
  NSUInteger result = 0;
  for (const Appearance each : {Appearance::Light, Appearance::Dark}) {
    for (const double value : colour().resolved(each).values()) {
      result = result * 31 + std::hash<double>()(value);  // both zeros have one hash
    }
  }
  return result;
}

NSString Color::description() const {
  if (!colour().is_dynamic()) return {described(colour().resolved(Appearance::Light)).c_str()};
  const std::string text = "<UIDynamicColor light: " + described(colour().resolved(Appearance::Light)) +
                           "; dark: " + described(colour().resolved(Appearance::Dark)) + ">";
  return {text.c_str()};
}

void Color::define() {
  objc::Class<Color> color;
  color.state<ColorState>()
      .class_method<"colorWithRed:green:blue:alpha:", &color_with_rgb>()
      .class_method<"colorWithWhite:alpha:", &color_with_white>()
      .class_method<"colorWithHue:saturation:brightness:alpha:", &color_with_hsb>()
      .class_method<"colorWithCGColor:", &color_with_cg_color>()
      .class_method<"colorWithDynamicProvider:", &color_with_provider>()
      .initializer<"init", &init_plain>()
      .initializer<"initWithRed:green:blue:alpha:", &init_with_rgb>()
      .initializer<"initWithWhite:alpha:", &init_with_white>()
      .initializer<"initWithHue:saturation:brightness:alpha:", &init_with_hsb>()
      .initializer<"initWithCGColor:", &init_with_cg_color>()
      .initializer<"initWithDynamicProvider:", &init_with_provider>()
      .method<"colorWithAlphaComponent:", &Color::colorWithAlphaComponent>()
      .method<"resolvedColorWithTraitCollection:", &Color::resolvedColorWithTraitCollection>()
      .method<"getRed:green:blue:alpha:", &Color::getRed>()
      .method<"getHue:saturation:brightness:alpha:", &Color::getHue>()
      .method<"getWhite:alpha:", &Color::getWhite>()
      .method<"CGColor", &Color::CGColor>()
      .method<"isEqual:", &Color::isEqual>()
      .method<"hash", &Color::hash>()
      .method<"description", &Color::description>()
      .copying<&Color::copy>();
  add_named<
      "redColor", "greenColor", "blueColor", "cyanColor", "yellowColor", "magentaColor", "orangeColor",
      "purpleColor", "brownColor", "blackColor", "darkGrayColor", "grayColor", "lightGrayColor", "whiteColor",
      "clearColor", "labelColor", "secondaryLabelColor", "tertiaryLabelColor", "quaternaryLabelColor",
      "placeholderTextColor", "linkColor", "separatorColor", "opaqueSeparatorColor", "systemBackgroundColor",
      "secondarySystemBackgroundColor", "tertiarySystemBackgroundColor", "systemGroupedBackgroundColor",
      "secondarySystemGroupedBackgroundColor", "tertiarySystemGroupedBackgroundColor", "systemFillColor",
      "secondarySystemFillColor", "tertiarySystemFillColor", "quaternarySystemFillColor", "lightTextColor",
      "darkTextColor", "systemRedColor", "systemOrangeColor", "systemYellowColor", "systemGreenColor",
      "systemTealColor", "systemBlueColor", "systemIndigoColor", "systemPurpleColor", "systemPinkColor",
      "systemBrownColor", "systemGrayColor", "systemGray2Color", "systemGray3Color", "systemGray4Color",
      "systemGray5Color", "systemGray6Color", "systemMintColor", "systemCyanColor", "tintColor">(color);
  color.register_class();
}

Colour colour_of(const UIColor& color) {
  const auto ours = objc::cast_or_nil<Color>(color);
  return ours ? ours.colour() : Colour();
}

UIColor color_from(const Colour& colour) { return Color::make(colour).as<UIColor>(); }

Appearance appearance_of(const NSObject& traits) {
  if (traits.respondsToSelector(objc::selector<"userInterfaceStyle">())) {
    const auto style = objc::send<"userInterfaceStyle", NSInteger>(traits);
    if (style == kDarkStyle) return Appearance::Dark;
    if (style == kLightStyle) return Appearance::Light;
  }
  return display_settings().appearance;
}

}  // namespace wispen::uikit
