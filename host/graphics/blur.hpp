// host/graphics/blur.hpp: softens pixels, and changes how strong their colours are.
#pragma once

#include "host/graphics/pixels.hpp"

namespace wispen::graphics {

/// Blurs in place, near to a Gaussian of `sigma` pixels. What lies beyond an edge counts as the edge's pixel.
/// A flat area stays exactly as it is.
void blur(const MutablePixelView& pixels, double sigma);

/// Moves colours away from grey of the same lightness (above 1) or towards it (below 1). Greys stay as they
/// are.
void saturate(const MutablePixelView& pixels, double factor);

}  // namespace wispen::graphics
