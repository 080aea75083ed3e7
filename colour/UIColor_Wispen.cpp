// colour/UIColor_Wispen.cpp: UIColor(Wispen).

#include "colour/UIColor_Wispen.hpp"

#include <string>

#include "colour/hex_text.hpp"
#include "platform/UIKit/UIColor.hpp"

namespace wispen {

namespace {

using colour::Components;

/// Red, green and blue as the colour holds them. A colour of another space is converted first: its components
/// mean something else, and there may be fewer of them.
Components components_of(const UIColor& color) {
  const CGColorRef reference = color.CGColor();
  if (CGColorSpaceGetModel(CGColorGetColorSpace(reference)) == kCGColorSpaceModelRGB) {
    const CGFloat* const values = CGColorGetComponents(reference);
    return {values[0], values[1], values[2], values[3]};
  }
  Components converted;
  color.getRed(&converted.red, &converted.green, &converted.blue, &converted.alpha);
  return converted;
}

UIColor from_hex_string(objc::ClassRef, const NSString& text) {
  std::u16string units(text.length(), u'\0');
  if (units.empty()) return UIColor::blackColor();
  objc::send<"getCharacters:range:">(text, units.data(), NSRange{0, units.size()});
  const Components components = colour::components_from_hex(units);
  return UIColor::colorWithRed(components.red, components.green, components.blue, components.alpha);
}

NSString hex_string_from_color(objc::ClassRef, const UIColor& color) {
  return {colour::hex_from_components(components_of(color)).c_str()};
}

bool is_dark_color(const UIColor& self) { return colour::is_dark(components_of(self)); }

}  // namespace

void define_color_category() {
  objc::Category<UIColor>()
      .class_method<"wispRGBAColorFromHexString:", &from_hex_string>()
      .class_method<"wispHexStringFromColor:", &hex_string_from_color>()
      .method<"wispIsDarkColor", &is_dark_color>();
}

}  // namespace wispen
