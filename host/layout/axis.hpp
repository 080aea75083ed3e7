// host/layout/axis.hpp: the two axes of a layout, and the direction of reading.
#pragma once

namespace wispen::layout {

enum class Axis { Horizontal = 0, Vertical = 1 };

enum class Direction { LeftToRight, RightToLeft };

}  // namespace wispen::layout
