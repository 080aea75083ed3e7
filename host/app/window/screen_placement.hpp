// host/app/window/screen_placement.hpp: where in a window the device's screen lies, and at which size.
#pragma once

#include "host/geometry/geometry.hpp"

namespace wispen {

/// Pixels of the window, and points of the device's screen.
struct ScreenPlacement {
  double scale = 1;    ///< pixels a point
  Point origin;        ///< of the screen, in whole pixels
  double density = 1;  ///< pixels of the window for one unit of the mouse's places
  Rect toolbar;        ///< in pixels; as wide as the window

  /// The screen as large as the window has room for under the toolbar, in the middle. Every window has room
  /// for something: the scale stays between 0.1 and 4.
  static ScreenPlacement fit(Size window_pixels, double density, Size screen);

  Point to_screen(Point mouse) const {
    return {(mouse.x * density - origin.x) / scale, (mouse.y * density - origin.y) / scale};
  }
  Point to_pixels(Point mouse) const { return {mouse.x * density, mouse.y * density}; }
};

inline constexpr double kToolbarHeight = 30;  ///< in units of the mouse's places

/// How large a window shows the screen at its own size, or smaller where the desktop has less room. In units
/// of the mouse's places.
Size window_size_for(Size screen, Size desktop);

}  // namespace wispen
