// host/uikit/values/color.hpp: UIColor, and its way to and from the colours that are drawn.
#pragma once

#include "host/graphics/colour.hpp"
#include "platform/UIKit/UIColor.hpp"

namespace wispen::uikit {

/// Clear for nil.
graphics::Colour colour_of(const UIColor& color);
UIColor color_from(const graphics::Colour& colour);
/// What the traits say, or the display where they leave it open.
graphics::Appearance appearance_of(const NSObject& traits);

void define_color();

}  // namespace wispen::uikit
