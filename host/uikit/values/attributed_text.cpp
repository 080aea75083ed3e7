// host/uikit/values/attributed_text.cpp: from attributed strings to the text that is drawn.

#include "host/uikit/values/attributed_text.hpp"

#include <string>

#include "host/uikit/values/color.hpp"
#include "host/uikit/values/font.hpp"

namespace wispen::uikit {

namespace {

std::optional<double> number_in(const NSDictionary& attributes, const NSString& name) {
  const auto number = objc::cast_or_nil<NSNumber>(attributes.objectForKey(name));
  return number ? std::optional(number.doubleValue()) : std::nullopt;
}

std::optional<graphics::Colour> colour_in(const NSDictionary& attributes, const NSString& name) {
  const auto color = objc::cast_or_nil<UIColor>(attributes.objectForKey(name));
  return color ? std::optional(colour_of(color)) : std::nullopt;
}

std::u16string utf16_of(const NSString& text) {
  std::u16string units(text.length(), u'\0');
  objc::send<"getCharacters:range:">(text, units.data(), NSRange{0, units.size()});
  return units;
}

}  // namespace

graphics::TextAttributes text_attributes_of(const NSDictionary& attributes,
                                            const graphics::TextAttributes& defaults) {
  graphics::TextAttributes result = defaults;
  if (const auto font = objc::cast_or_nil<UIFont>(attributes.objectForKey(NSFontAttributeName))) {
    result.font = font_of(font);
  }
  if (auto colour = colour_in(attributes, NSForegroundColorAttributeName)) result.colour = colour;
  if (auto colour = colour_in(attributes, NSBackgroundColorAttributeName)) result.background = colour;
  result.kern = number_in(attributes, NSKernAttributeName).value_or(result.kern);
  result.baseline_offset =
      number_in(attributes, NSBaselineOffsetAttributeName).value_or(result.baseline_offset);
  if (const auto style = number_in(attributes, NSUnderlineStyleAttributeName)) result.underline = *style != 0;
  if (const auto style = number_in(attributes, NSStrikethroughStyleAttributeName)) {
    result.strikethrough = *style != 0;
  }
  return result;
}

graphics::AttributedText attributed_text_of(const NSAttributedString& text,
                                            const graphics::TextAttributes& defaults) {
  if (!text) return graphics::AttributedText(std::u16string_view(), defaults);
  const objc::AutoreleasePool pool;
  graphics::AttributedText result(utf16_of(text.string()), defaults);
  for (NSUInteger at = 0; at < text.length();) {
    NSRange range{at, 1};
    const NSDictionary attributes = text.attributesAtIndex(at, &range);
    const graphics::TextAttributes wanted = text_attributes_of(attributes, defaults);
    if (wanted != defaults) {
      result.edit({range.location, range.length}, [&](graphics::TextAttributes& each) { each = wanted; });
    }
    at = range.location + range.length;
  }
  return result;
}

std::optional<ParagraphLook> paragraph_look_of(const NSAttributedString& text) {
  if (text.length() == 0) return std::nullopt;
  const NSDictionary attributes = text.attributesAtIndex(0, nullptr);
  const auto style =
      objc::cast_or_nil<NSParagraphStyle>(attributes.objectForKey(NSParagraphStyleAttributeName));
  return style ? std::optional(look_of(style)) : std::nullopt;
}

}  // namespace wispen::uikit
