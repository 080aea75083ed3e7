// host/uikit/painting/painter.hpp: draws a tree of views.
#pragma once

#include "host/graphics/canvas.hpp"
#include "host/uikit/views/view.hpp"

namespace wispen::uikit {

/// Draws what is a class's own, over its background and below its subviews. `bounds` is the view's, as it is
/// seen at this moment; the canvas stands in its coordinates.
using ContentPainter = void (*)(const View& view, graphics::Canvas& canvas, const Rect& bounds);

/// How views of that class, and of its subclasses without a painter of their own, are drawn.
void set_painter(objc::ClassRef cls, ContentPainter painter);

/// What views of that class and its subclasses draw over their subviews.
void set_overlay_painter(objc::ClassRef cls, ContentPainter painter);

/// Draws the view, and all in it, where it lies in its superview's coordinates.
void paint_view(const View& view, graphics::Canvas& canvas);

}  // namespace wispen::uikit
