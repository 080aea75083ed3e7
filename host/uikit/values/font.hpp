// host/uikit/values/font.hpp: UIFont, and its way to and from the fonts that are drawn.
#pragma once

#include <optional>

#include "host/graphics/font.hpp"
#include "host/graphics/text_style.hpp"
#include "platform/UIKit/UIFont.hpp"

namespace wispen::uikit {

class Font : public objc::Authored<Font, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"UIFont"};
  using Authored::Authored;

  static void define();
  static Font make(const graphics::Font& font);

  const graphics::Font& font() const { return state<graphics::Font>(); }
  Font fontWithSize(double size) const { return make(font().with_size(size)); }
  NSString fontName() const { return {font().face_name().c_str()}; }
  NSString familyName() const { return {font().family_name().c_str()}; }
  double pointSize() const { return font().size(); }
  double ascender() const { return font().metrics().ascender; }
  double descender() const { return font().metrics().descender; }
  double lineHeight() const { return font().metrics().line_height; }
  double capHeight() const { return font().metrics().cap_height; }
  double xHeight() const { return font().metrics().x_height; }
  double leading() const { return font().metrics().leading; }
  bool isEqual(const NSObject& other) const;
  NSUInteger hash() const;
  NSString description() const;
  Font copy() const { return *this; }
};

/// The system font at its own size for nil.
graphics::Font font_of(const UIFont& font);
UIFont font_from(const graphics::Font& font);
/// The style of one of the platform's names (UIFontTextStyleBody, ...); nothing for any other.
std::optional<graphics::TextStyle> text_style_of(const NSString& name);

}  // namespace wispen::uikit
