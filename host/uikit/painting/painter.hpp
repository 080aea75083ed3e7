// host/uikit/painting/painter.hpp: draws a tree of views.
#pragma once

#include <vector>

#include "host/graphics/canvas.hpp"
#include "host/uikit/views/view.hpp"

namespace wispen::uikit {

class Window;

/// Draws what is a class's own, over its background and below its subviews. `bounds` is the view's, as it is
/// seen at this moment; the canvas stands in its coordinates.
using ContentPainter = void (*)(const View& view, graphics::Canvas& canvas, const Rect& bounds);

/// Around all that such a painter touches, for one that reaches out of the bounds.
using ContentExtent = Rect (*)(const View& view, const Rect& bounds);

/// Less opacity than this is not seen, and on the platform not touched either.
inline constexpr double kInvisibleAlpha = 0.01;

/// How views of that class, and of its subclasses without a painter of their own, are drawn.
void set_painter(objc::ClassRef cls, ContentPainter painter, ContentExtent extent = nullptr);

/// What views of that class and its subclasses draw over their subviews.
void set_overlay_painter(objc::ClassRef cls, ContentPainter painter);

/// Around all that the view itself paints with these bounds, in its own coordinates: its background, border,
/// shadow and content, but not its subviews. Empty where that is nothing.
Rect painted_extent(const View& view, const Rect& bounds);

/// Draws the view, and all in it, where it lies in its superview's coordinates.
void paint_view(const View& view, graphics::Canvas& canvas);

/// Draws a rectangle of the screen anew, of whole pixels: only what collect_damage() has recorded as seen
/// there, and nothing that something opaque covers.
void paint_part(const std::vector<Window>& windows, graphics::Canvas& canvas, const Rect& rect);

}  // namespace wispen::uikit
