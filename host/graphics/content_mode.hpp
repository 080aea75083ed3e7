// host/graphics/content_mode.hpp: where content of one size lies in a box of another.
#pragma once

#include <cstdint>

#include "host/graphics/geometry.hpp"

namespace wispen::graphics {

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

/// Where content lies; it may reach out of the box. Redraw lies as ScaleToFill does.
Rect content_rect(ContentMode mode, Size content, const Rect& box);

}  // namespace wispen::graphics
