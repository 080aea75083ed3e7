// host/uikit/view/painting/painter.hpp: draws a tree of views.
#pragma once

#include <type_traits>
#include <vector>

#include "host/graphics/canvas.hpp"
#include "platform/UIKit.hpp"

namespace wispen::uikit {

class View;

/// Draws what is a class's own, over its background and below its subviews. `bounds` is the view's, as it is
/// seen at this moment; the canvas stands in its coordinates.
using ContentPainter = void (*)(const UIView& view, graphics::Canvas& canvas, const Rect& bounds);

/// Around all that such a painter touches, for one that reaches out of the bounds.
using ContentExtent = Rect (*)(const UIView& view, const Rect& bounds);

/// Less opacity than this is not seen, and on the platform not touched either.
inline constexpr double kInvisibleAlpha = 0.01;

/// How views of that class, and of its subclasses without a painter of their own, are drawn.
void set_painter(objc::ClassRef cls, ContentPainter painter, ContentExtent extent = nullptr);

/// The class of a pointer to one of its member functions.
template <class Member>
struct ClassOf;
template <class R, class Self, class... Args>
struct ClassOf<R (Self::*)(Args...)> {
  using Type = Self;
};
template <class R, class Self, class... Args>
struct ClassOf<R (Self::*)(Args...) const> {
  using Type = Self;
};

/// The same by members of the class's implementation, `void paint(graphics::Canvas&, const Rect& bounds)` and
/// `Rect extent(const Rect& bounds)`.
template <auto Paint, auto Extent = nullptr>
void set_painter() {
  using Self = typename ClassOf<decltype(Paint)>::Type;
  ContentExtent extent = nullptr;
  if constexpr (!std::is_null_pointer_v<decltype(Extent)>) {
    extent = [](const UIView& view, const Rect& bounds) {
      return (Self::in(objc::borrow(view)).*Extent)(bounds);
    };
  }
  set_painter(
      objc::class_for<typename Self::Receiver>(),
      [](const UIView& view, graphics::Canvas& canvas, const Rect& bounds) {
        (Self::in(objc::borrow(view)).*Paint)(canvas, bounds);
      },
      extent);
}

/// What views of that class and its subclasses draw over their subviews.
void set_overlay_painter(objc::ClassRef cls, ContentPainter painter);
template <auto Paint>
void set_overlay_painter() {
  using Self = typename ClassOf<decltype(Paint)>::Type;
  set_overlay_painter(objc::class_for<typename Self::Receiver>(),
                      [](const UIView& view, graphics::Canvas& canvas, const Rect& bounds) {
                        (Self::in(objc::borrow(view)).*Paint)(canvas, bounds);
                      });
}

/// Around all that the view itself paints with these bounds, in its own coordinates: its background, border,
/// shadow and content, but not its subviews. Empty where that is nothing.
Rect painted_extent(View& view, const Rect& bounds);

/// Draws the view, and all in it, where it lies in its superview's coordinates.
void paint_view(const UIView& view, graphics::Canvas& canvas);

/// Draws a rectangle of the screen anew, of whole pixels: only what collect_damage() has recorded as seen
/// there, and nothing that something opaque covers.
void paint_part(const std::vector<UIWindow>& windows, graphics::Canvas& canvas, const Rect& rect);

}  // namespace wispen::uikit
