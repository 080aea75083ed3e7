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

using Provider = objc::Block<UIColor(NSObject)>;

class Color : public objc::Implementation<Color, UIColor> {
 public:
  static UIColor with(objc::Allocated<UIColor> self, const Colour& colour);
  static UIColor init(objc::Allocated<UIColor> self) { return with(std::move(self), Colour()); }
  static UIColor initWithRed(objc::Allocated<UIColor> self, double red, double green, double blue,
                             double alpha) {
    return with(std::move(self), Colour::rgb(red, green, blue, alpha));
  }
  static UIColor initWithWhite(objc::Allocated<UIColor> self, double white, double alpha) {
    return with(std::move(self), Colour::grey(white, alpha));
  }
  static UIColor initWithHue(objc::Allocated<UIColor> self, double hue, double saturation, double brightness,
                             double alpha) {
    return with(std::move(self), Colour::hsb(hue, saturation, brightness, alpha));
  }
  static UIColor initWithCGColor(objc::Allocated<UIColor> self, CGColorRef color);
  static UIColor initWithDynamicProvider(objc::Allocated<UIColor> self, const Provider& provider);

  const Colour& colour() const { return colour_; }
  UIColor colorWithAlphaComponent(double alpha) const { return color_from(colour_.with_alpha(alpha)); }
  UIColor resolvedColorWithTraitCollection(const NSObject& traits) const {
    return colour_.is_dynamic() ? color_from(Colour(colour_.resolved(appearance_of(traits)))) : self();
  }
  bool getRed(double* red, double* green, double* blue, double* alpha) const;
  bool getHue(double* hue, double* saturation, double* brightness, double* alpha) const;
  bool getWhite(double* white, double* alpha) const;
  CGColorRef CGColor() const {
    return references_[static_cast<std::size_t>(display_settings().appearance)].get();
  }
  bool isEqual(const NSObject& other) const {
    const auto color = objc::cast_or_nil<UIColor>(other);
    return color && of(color).colour_ == colour_;
  }
  NSUInteger hash() const;
  NSString description() const;
  UIColor copy() const { return self(); }

 private:
  Colour colour_;
  // By appearance; made with the colour, because components are read from any thread.
  std::array<CountedRef<::CGColor>, 2> references_;
};

namespace {

constexpr NSInteger kDarkStyle = 2;
constexpr NSInteger kLightStyle = 1;

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

UIColor color_with_rgb(objc::ClassRef, double red, double green, double blue, double alpha) {
  return color_from(Colour::rgb(red, green, blue, alpha));
}
UIColor color_with_white(objc::ClassRef, double white, double alpha) {
  return color_from(Colour::grey(white, alpha));
}
UIColor color_with_hsb(objc::ClassRef, double hue, double saturation, double brightness, double alpha) {
  return color_from(Colour::hsb(hue, saturation, brightness, alpha));
}
UIColor color_with_cg_color(objc::ClassRef, CGColorRef color) {
  return color != nullptr ? color_from(Colour(components_of(color))) : UIColor();
}
UIColor color_with_provider(objc::ClassRef, const Provider& provider) {
  return provider ? color_from(provided(provider)) : UIColor();
}

/// One object a name, as on the platform; it lives as long as the process.
template <objc::FixedString Sel>
UIColor named(objc::ClassRef) {
  constexpr std::string_view kEnding = "Color";
  constexpr std::string_view kName(Sel.value, Sel.size() - kEnding.size());
  static const auto* const kept = new UIColor(color_from(graphics::named_colour(kName).value_or(Colour())));
  return *kept;
}

template <objc::FixedString... Selectors>
void add_named(objc::Class<UIColor>& color) {
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

UIColor Color::with(objc::Allocated<UIColor> self, const Colour& colour) {
  const UIColor object = super_init<"init">(std::move(self));
  if (!object) return object;
  Color& color = of(object);
  color.colour_ = colour;
  for (const Appearance each : {Appearance::Light, Appearance::Dark}) {
    auto& reference = color.references_[static_cast<std::size_t>(each)];
    const bool shared = each == Appearance::Dark && !colour.is_dynamic();
    reference = shared ? color.references_[0]
                       : CountedRef<::CGColor>::adopt(Counted::make<::CGColor>(colour.resolved(each)));
  }
  return object;
}

UIColor Color::initWithCGColor(objc::Allocated<UIColor> self, CGColorRef color) {
  return with(std::move(self), Colour(components_of(color)));
}
UIColor Color::initWithDynamicProvider(objc::Allocated<UIColor> self, const Provider& provider) {
  return with(std::move(self), provided(provider));
}

bool Color::getRed(double* red, double* green, double* blue, double* alpha) const {
  const graphics::Rgba rgba = colour_.rgba(display_settings().appearance);
  put(red, rgba.red);
  put(green, rgba.green);
  put(blue, rgba.blue);
  put(alpha, rgba.alpha);
  return true;
}

bool Color::getHue(double* hue, double* saturation, double* brightness, double* alpha) const {
  const graphics::Hsba hsba = colour_.to_hsb(display_settings().appearance);
  put(hue, hsba.hue);
  put(saturation, hsba.saturation);
  put(brightness, hsba.brightness);
  put(alpha, hsba.alpha);
  return true;
}

bool Color::getWhite(double* white, double* alpha) const {
  const Components& components = colour_.resolved(display_settings().appearance);
  const graphics::Rgba rgba = components.to_rgba();
  // Equal components are that grey exactly; others are weighed as luminance.
  const bool grey = rgba.red == rgba.green && rgba.green == rgba.blue;
  put(white, grey ? rgba.red : 0.299 * rgba.red + 0.587 * rgba.green + 0.114 * rgba.blue);
  put(alpha, rgba.alpha);
  return true;
}

NSUInteger Color::hash() const {
  NSUInteger result = 0;
  for (const Appearance each : {Appearance::Light, Appearance::Dark}) {
    for (const double value : colour_.resolved(each).values()) {
      result = result * 31 + std::hash<double>()(value);  // both zeros have one hash
    }
  }
  return result;
}

NSString Color::description() const {
  if (!colour_.is_dynamic()) return {described(colour_.resolved(Appearance::Light)).c_str()};
  const std::string text = "<UIDynamicColor light: " + described(colour_.resolved(Appearance::Light)) +
                           "; dark: " + described(colour_.resolved(Appearance::Dark)) + ">";
  return {text.c_str()};
}

void define_color() {
  auto color = objc::Class<UIColor>::implemented_by<Color>();
  color.class_method<"colorWithRed:green:blue:alpha:", &color_with_rgb>()
      .class_method<"colorWithWhite:alpha:", &color_with_white>()
      .class_method<"colorWithHue:saturation:brightness:alpha:", &color_with_hsb>()
      .class_method<"colorWithCGColor:", &color_with_cg_color>()
      .class_method<"colorWithDynamicProvider:", &color_with_provider>()
      .initializer<"init", &Color::init>()
      .initializer<"initWithRed:green:blue:alpha:", &Color::initWithRed>()
      .initializer<"initWithWhite:alpha:", &Color::initWithWhite>()
      .initializer<"initWithHue:saturation:brightness:alpha:", &Color::initWithHue>()
      .initializer<"initWithCGColor:", &Color::initWithCGColor>()
      .initializer<"initWithDynamicProvider:", &Color::initWithDynamicProvider>()
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
  return objc::cast_or_nil<UIColor>(color) ? Color::of(color).colour() : Colour();
}

UIColor color_from(const Colour& colour) { return Color::with(objc::allocate<UIColor>(), colour); }

Appearance appearance_of(const NSObject& traits) {
  if (traits.respondsToSelector(objc::selector<"userInterfaceStyle">())) {
    const auto style = objc::send<"userInterfaceStyle", NSInteger>(traits);
    if (style == kDarkStyle) return Appearance::Dark;
    if (style == kLightStyle) return Appearance::Light;
  }
  return display_settings().appearance;
}

}  // namespace wispen::uikit
