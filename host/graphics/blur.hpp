// host/graphics/blur.hpp: softens pixels, and changes how strong their colours are.
#pragma once

#include "host/graphics/pixels.hpp"

namespace wispen::graphics {

/// Blurs in place, near to a Gaussian of `sigma` pixels. What lies beyond an edge counts as the edge's pixel.
/// A flat area stays exactly as it is.
void blur(const MutablePixelView& pixels, double sigma);

/// Fills `target` with the part of `source` whose top left pixel is (left, top), blurred as by blur() and
/// then saturated. The rest of the source is only looked at, which costs less than changing it.
void soften(const PixelView& source, int left, int top, const MutablePixelView& target, double sigma,
            double saturation);

/// Moves colours away from grey of the same lightness (above 1) or towards it (below 1). Greys stay as they
/// are.
void saturate(const MutablePixelView& pixels, double factor);

}  // namespace wispen::graphics
