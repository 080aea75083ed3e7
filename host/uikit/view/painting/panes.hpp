// host/uikit/view/painting/panes.hpp: views that show what lies behind them, softened.
//
// Their pixels depend on all that is behind the whole of them: when a part of that changes, the whole pane is
// to be painted anew.
#pragma once

#include "host/uikit/view/painting/painter.hpp"

namespace wispen::uikit {

/// Lays the material over what is painted so far, inside the view's bounds and corners.
void paint_pane(const UIView& view, graphics::Canvas& canvas, const Rect& bounds,
                const graphics::Material& material);

/// To be said whenever such a view has come into a window or left it.
void note_pane(const UIView& view);

/// Where such views were in the last frame that was collected, in the screen's coordinates: all of each, also
/// what something around it hides, since what lies behind that shows in the rest.
std::vector<Rect> panes_in(const UIWindow& window);

/// The rectangle, grown until it holds every pane that it touches whole.
Rect around_panes(Rect rect, const std::vector<Rect>& panes);

}  // namespace wispen::uikit
