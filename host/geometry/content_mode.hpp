// host/geometry/content_mode.hpp: where content of one size lies in a box of another.
#pragma once

#include <cstdint>

#include "host/geometry/geometry.hpp"

namespace wispen {

/// The platform's numbers.
enum class ContentMode : std::uint8_t {
  ScaleToFill = 0,
  AspectFit = 1,
  AspectFill = 2,
  Redraw = 3,
  Centre = 4,
  Top = 5,
  Bottom = 6,
  Left = 7,
  Right = 8,
  TopLeft = 9,
  TopRight = 10,
  BottomLeft = 11,
  BottomRight = 12
};

/// Where content lies; it may reach out of the box. Redraw lies as ScaleToFill does. Content without a size,
/// or a box without one, cannot keep a ratio: the aspect modes give an empty rectangle in the middle.
Rect content_rect(ContentMode mode, Size content, const Rect& box);

}  // namespace wispen
