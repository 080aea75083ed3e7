// host/uikit/values/font.hpp: UIFont, and its way to and from the fonts that are drawn.
#pragma once

#include <optional>

#include "host/graphics/font.hpp"
#include "host/graphics/text_style.hpp"
#include "platform/UIKit/UIFont.hpp"

namespace wispen::uikit {

/// The system font at its own size for nil.
graphics::Font font_of(const UIFont& font);
UIFont font_from(const graphics::Font& font);
/// The style of one of the platform's names (UIFontTextStyleBody, ...); nothing for any other.
std::optional<graphics::TextStyle> text_style_of(const NSString& name);

void define_font();

}  // namespace wispen::uikit
