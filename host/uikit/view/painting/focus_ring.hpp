// host/uikit/view/painting/focus_ring.hpp: shows which view the keyboard is talking to.
#pragma once

#include "host/uikit/view/painting/painter.hpp"

namespace wispen::uikit {

/// How far a ring can reach beyond its view, in points.
inline constexpr double kFocusRingReach = 6;

/// Around the ring, in the screen's coordinates; empty where none is shown.
Rect focus_ring_place();

/// Over all else in the window that holds the view with the focus.
void paint_focus_ring(const UIView& window, graphics::Canvas& canvas, const Rect& bounds);

}  // namespace wispen::uikit
