// host/uikit/values/tinted_image.hpp: an image as a stencil for one colour.
#pragma once

#include "host/graphics/colour.hpp"
#include "host/graphics/image.hpp"

namespace wispen::uikit {

/// The colour wherever the image has any, as opaque as the image is there. Everything else of the image is
/// kept. An image that cannot be copied for want of memory comes back as it is.
graphics::Image tinted(const graphics::Image& image, const graphics::Rgba& colour);

}  // namespace wispen::uikit
