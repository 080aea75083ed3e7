// cells/palette.hpp: the bundle's own colours.
#pragma once

#include "platform/UIKit/UIColor.hpp"

namespace wispen::palette {

/// The purple of bars, titles and tracks.
inline UIColor accent() { return UIColor::colorWithRed(0.5, 0.3, 0.55, 1.0); }
/// The light purple of sheets and tinted titles.
inline UIColor lavender() { return UIColor::colorWithRed(0.7, 0.6, 0.8, 1.0); }

}  // namespace wispen::palette
