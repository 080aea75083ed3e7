// host/layout/content_mode.hpp: where a view's content lies within its bounds.
#pragma once

#include "host/layout/geometry.hpp"

namespace wispen::layout {

/// The platform's values.
enum class ContentMode {
  ScaleToFill = 0,
  ScaleAspectFit = 1,
  ScaleAspectFill = 2,
  Redraw = 3,
  Center = 4,
  Top = 5,
  Bottom = 6,
  Left = 7,
  Right = 8,
  TopLeft = 9,
  TopRight = 10,
  BottomLeft = 11,
  BottomRight = 12,
};

/// The rectangle that content of this size is drawn into; it may reach beyond the bounds. Content without a
/// size, or bounds without one, cannot keep a ratio: the aspect modes give an empty rectangle in the middle.
Rect content_rect(ContentMode mode, const Rect& bounds, Size content);

}  // namespace wispen::layout
