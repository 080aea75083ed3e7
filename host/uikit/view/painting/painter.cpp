// host/uikit/view/painting/painter.cpp: draws a tree of views.

#include "host/uikit/view/painting/painter.hpp"

#include <algorithm>
#include <array>
#include <unordered_map>

#include "host/uikit/values/color.hpp"
#include "host/uikit/view/layer.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

namespace {

struct Painters {
  ContentPainter content = nullptr;
  ContentPainter overlay = nullptr;
  ContentExtent extent = nullptr;
};

/// A rectangle of the screen that is painted, from the view on that covers what is painted before it.
struct PaintedPart {
  Rect rect;
  const View* cover;  // none once it is reached, or where there is none
};

/// What was set for a class itself.
std::unordered_map<const void*, Painters>& set_painters() {
  static std::unordered_map<const void*, Painters> all;
  return all;
}

/// The same with what classes have from those above them, found once for each.
std::unordered_map<const void*, Painters>& found_painters() {
  static std::unordered_map<const void*, Painters> all;
  return all;
}

const Painters& painters_of(const View& view) {
  const objc::ClassRef own = objc::class_of(view.self());
  auto& all = found_painters();
  if (const auto found = all.find(own.borrow()); found != all.end()) return found->second;
  Painters painters;
  for (objc::ClassRef cls = own; cls; cls = cls.superclass()) {
    const auto set = set_painters().find(cls.borrow());
    if (set == set_painters().end()) continue;
    if (!painters.content) {
      painters.content = set->second.content;
      painters.extent = set->second.extent;
    }
    if (!painters.overlay) painters.overlay = set->second.overlay;
  }
  return all[own.borrow()] = painters;
}

const LayerStyle& style_of(const View& view) {
  static const LayerStyle kPlain;
  const CALayer& layer = view.layer_if_made();
  return layer ? Layer::of(layer).style() : kPlain;
}

graphics::Path outline(const Rect& bounds, const LayerStyle& style) {
  if (style.corner_radius <= 0) return graphics::Path::rect(bounds);
  const auto radius = [&](NSUInteger corner) {
    return (style.masked_corners & corner) != 0 ? style.corner_radius : 0;
  };
  return graphics::Path::rounded_rect(bounds, std::array{radius(1), radius(2), radius(8), radius(4)});
}

void paint_shadow(graphics::Canvas& canvas, const graphics::Path& path, const LayerStyle& style) {
  if (style.shadow_opacity <= 0) return;
  const auto colour = style.shadow_colour ? colour_of(style.shadow_colour) : graphics::Colour::grey(0);
  const double alpha = colour.rgba(canvas.appearance()).alpha * style.shadow_opacity;
  canvas.draw_shadow(
      path,
      {.colour = colour.with_alpha(alpha), .sigma = style.shadow_radius, .offset = style.shadow_offset});
}

void paint_border(graphics::Canvas& canvas, const Rect& bounds, const LayerStyle& style) {
  const auto colour = style.border_colour ? colour_of(style.border_colour) : graphics::Colour::grey(0);
  // The two sides of a small view's border meet, and reach no further.
  if (style.border_width * 2 >= std::min(bounds.width(), bounds.height())) {
    canvas.fill(outline(bounds, style), colour);
    return;
  }
  LayerStyle inner = style;
  inner.corner_radius = std::max(0.0, style.corner_radius - style.border_width / 2);
  const Rect line = bounds.inset(style.border_width / 2, style.border_width / 2);
  canvas.stroke(outline(line, inner), colour, {.width = style.border_width});
}

/// Around the view's own and all in it, in its coordinates.
Rect whole_extent(View& view, const Rect& bounds) {
  Rect all;
  for (const UIView& handle : view.subviews()) {
    View& subview = View::of(handle);
    if (subview.isHidden()) continue;
    const Rect inner = subview.presented_bounds();
    const Point center = subview.presented_center();
    all = all.united(AffineTransform::translation(-inner.mid_x(), -inner.mid_y())
                         .then(subview.presented_transform())
                         .then(AffineTransform::translation(center.x, center.y))
                         .apply(whole_extent(subview, inner)));
  }
  if (view.clipsToBounds()) all = all.intersection(bounds);
  return all.united(painted_extent(view, bounds));
}

void paint(View& view, graphics::Canvas& canvas, PaintedPart* part);

/// The view's own, and all in it, with the canvas in its coordinates.
void paint_inside(View& view, graphics::Canvas& canvas, const Rect& bounds, PaintedPart* part) {
  const bool covered = part != nullptr && part->cover != nullptr;  // until the cover is reached
  const LayerStyle& style = style_of(view);
  const Painters& painters = painters_of(view);
  const bool plain = style.corner_radius <= 0 && style.shadow_opacity <= 0 && style.border_width <= 0;
  const graphics::Path path = plain ? graphics::Path() : outline(bounds, style);
  if (!covered) paint_shadow(canvas, path, style);
  const bool clips = view.clipsToBounds();
  if (clips) {
    canvas.save();
    style.corner_radius > 0 ? canvas.clip(path) : canvas.clip(bounds);
  }
  if (const UIColor background = covered ? UIColor() : view.presented_background()) {
    const graphics::Colour colour = colour_of(background);
    style.corner_radius > 0 ? canvas.fill(path, colour) : canvas.fill(bounds, colour);
  }
  if (painters.content != nullptr && !covered) painters.content(view.self(), canvas, bounds);
  for (const UIView& subview : view.subviews()) paint(View::of(subview), canvas, part);
  const bool still_covered = part != nullptr && part->cover != nullptr;
  if (painters.overlay != nullptr && !still_covered) painters.overlay(view.self(), canvas, bounds);
  if (clips) canvas.restore();
  if (style.border_width > 0 && !still_covered) paint_border(canvas, bounds, style);
}

/// The last view that is painted over all of the part, as an opaque rectangle: what comes before is not seen.
const View* cover_in(View& view, const Rect& rect, graphics::Appearance appearance) {
  const PaintRecord& record = view.record();
  if (!record.shown || record.alpha < 1 || !record.around.contains(rect)) return nullptr;
  const bool upright = record.place.b == 0 && record.place.c == 0;
  const bool rounded = style_of(view).corner_radius > 0;
  // Corners that are cut off, and slanted edges, might let something through.
  if (view.clipsToBounds() && (rounded || !upright)) return nullptr;
  for (std::size_t i = view.subviews().size(); i-- > 0;) {
    if (const View* const cover = cover_in(View::of(view.subviews()[i]), rect, appearance)) return cover;
  }
  if (rounded || !upright || !view.backgroundColor() ||
      (view.animations() && view.animations()->background)) {
    return nullptr;
  }
  // Whole pixels of the part, so that no soft edge of the view lies in it.
  if (!record.seen.contains(rect) || !record.place.apply(record.bounds).contains(rect)) return nullptr;
  return colour_of(view.backgroundColor()).rgba(appearance).alpha >= 1 ? &view : nullptr;
}

void paint(View& view, graphics::Canvas& canvas, PaintedPart* part) {
  if (view.isHidden()) return;
  if (part != nullptr) {
    if (!view.record().around.intersects(part->rect)) return;
    if (part->cover == &view) part->cover = nullptr;
  }
  const double alpha = view.presented_alpha();
  if (alpha < kInvisibleAlpha) return;
  const Rect bounds = view.presented_bounds();
  const Point center = view.presented_center();
  const AffineTransform transform = view.presented_transform();

  canvas.save();
  canvas.translate(center.x, center.y);
  if (!transform.is_identity()) canvas.transform(transform);
  canvas.translate(-bounds.mid_x(), -bounds.mid_y());
  if (view.is_elevated()) canvas.set_appearance(graphics::elevated(canvas.appearance()));
  // What lies outside of the clip is skipped with all in it, if nothing can stick out.
  const bool contained = view.clipsToBounds() && style_of(view).shadow_opacity <= 0;
  if (!contained || canvas.shows(bounds)) {
    // Under a cover there is no group of its own: what covers does not lie in a faint view.
    const bool apart = alpha < 1 && (part == nullptr || part->cover == nullptr);
    if (apart) canvas.begin_group(whole_extent(view, bounds));
    paint_inside(view, canvas, bounds, part);
    if (apart) canvas.end_group(alpha);
  }
  canvas.restore();
}

}  // namespace

void set_painter(objc::ClassRef cls, ContentPainter painter, ContentExtent extent) {
  found_painters().clear();
  Painters& painters = set_painters()[cls.borrow()];
  painters.content = painter;
  painters.extent = extent;
}
void set_overlay_painter(objc::ClassRef cls, ContentPainter painter) {
  found_painters().clear();
  set_painters()[cls.borrow()].overlay = painter;
}

Rect painted_extent(View& view, const Rect& bounds) {
  const LayerStyle& style = style_of(view);
  const Painters& painters = painters_of(view);
  Rect all;
  if (view.backgroundColor() || (view.animations() && view.animations()->background) ||
      painters.content != nullptr || painters.overlay != nullptr || style.border_width > 0) {
    all = bounds;
  }
  if (painters.extent != nullptr && !bounds.empty()) {
    const Rect content = painters.extent(view.self(), bounds);
    all = all.united(view.clipsToBounds() ? content.intersection(bounds) : content);
  }
  if (style.shadow_opacity > 0) {
    // As far as the blur reaches, and what it may be rounded up by on a screen with one pixel a point.
    const double reach = 3 * style.shadow_radius + 2;
    all = all.united(
        bounds.offset(style.shadow_offset.width, style.shadow_offset.height).inset(-reach, -reach));
  }
  return all;
}

void paint_view(const UIView& view, graphics::Canvas& canvas) { paint(View::of(view), canvas, nullptr); }

void paint_part(const std::vector<UIWindow>& windows, graphics::Canvas& canvas, const Rect& rect) {
  PaintedPart part{rect, nullptr};
  for (auto window = windows.rbegin(); window != windows.rend() && part.cover == nullptr; ++window) {
    part.cover = cover_in(View::of(*window), rect, canvas.appearance());
  }
  canvas.save();
  canvas.clip(rect);
  if (part.cover == nullptr) canvas.clear();
  for (const UIWindow& window : windows) paint(View::of(window), canvas, &part);
  canvas.restore();
}

}  // namespace wispen::uikit
