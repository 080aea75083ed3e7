// host/graphics/scaled_pixels.hpp: images at the size they are shown at, kept for the next time.
#pragma once

#include "host/geometry/geometry.hpp"
#include "host/graphics/pixels.hpp"

namespace wispen::graphics {

/// `pixels` scaled to cover `where` of a picture of `size` (whole pixels), as resample() does. The same
/// pixels when nothing has to be scaled; from the thread's cache when they were asked for before; null when
/// there is no memory for them.
PixelsRef scaled_pixels(const PixelsRef& pixels, const Rect& where, Size size);

}  // namespace wispen::graphics
