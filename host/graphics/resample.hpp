// host/graphics/resample.hpp: scales premultiplied pixels, area-averaged when they shrink.
#pragma once

#include <cstdint>

#include "host/geometry/geometry.hpp"
#include "host/graphics/pixels.hpp"

namespace wispen::graphics {

/// The inner loops to use. All give the same bytes; a test compares them.
enum class ResampleKernel : std::uint8_t { Portable, Sse2, Avx2 };

/// The fastest one that this processor has.
ResampleKernel fastest_resample_kernel();

/// Writes every pixel of `target`: `source`, scaled so that it covers `where` (in the target's pixels, y
/// downwards), transparent outside, by part where an edge lies inside a pixel. An axis that shrinks is
/// averaged by area, one that grows is interpolated linearly. Weights add up exactly, so that one colour
/// stays exactly that colour, and a colour never exceeds its alpha. The kernel must be one this machine has.
void resample(const PixelView& source, const Rect& where, const MutablePixelView& target,
              ResampleKernel kernel = fastest_resample_kernel());

}  // namespace wispen::graphics
