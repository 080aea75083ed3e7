// host/uikit/controls/image_view.hpp: a picture, drawn as an image view does.
#pragma once

#include "host/geometry/content_mode.hpp"
#include "platform/UIKit/UIImage.hpp"

namespace wispen::graphics {
class Canvas;
}

namespace wispen::uikit {

/// Draws an image laid into the bounds; templates, and symbols, take the tint.
void paint_image(const UIImage& image, graphics::Canvas& canvas, const Rect& bounds, ContentMode mode,
                 const UIColor& tint);

}  // namespace wispen::uikit
