// host/uikit/painting/painter.cpp: draws a tree of views.

#include "host/uikit/painting/painter.hpp"

#include <array>
#include <unordered_map>

#include "host/uikit/values/color.hpp"
#include "host/uikit/views/view_state.hpp"

namespace wispen::uikit {

namespace {

// Less than this is not seen, and on the platform not touched either.
constexpr double kInvisible = 0.01;

using Painters = std::unordered_map<objc::abi::Class, ContentPainter>;

Painters& painters() {
  static Painters all;
  return all;
}

Painters& overlay_painters() {
  static Painters all;
  return all;
}

ContentPainter painter_of(const View& view, Painters& known) {
  const objc::ClassRef own = objc::class_of(view);
  for (objc::ClassRef cls = own; cls; cls = cls.superclass()) {
    const auto found = known.find(cls.borrow());
    if (found == known.end()) continue;
    const ContentPainter painter = found->second;
    if (cls != own) known.emplace(own.borrow(), painter);
    return painter;
  }
  known.emplace(own.borrow(), nullptr);
  return nullptr;
}

void set(Painters& all, objc::ClassRef cls, ContentPainter painter) {
  // What subclasses found before may not hold any more.
  std::erase_if(all, [](const auto& entry) { return entry.second == nullptr; });
  all[cls.borrow()] = painter;
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

void paint_inside(const View& view, graphics::Canvas& canvas, const Rect& bounds) {
  static const LayerStyle kPlain;
  const ViewState& state = view.parts();
  const LayerStyle& style = state.layer ? state.layer.style() : kPlain;
  const graphics::Path path = outline(bounds, style);
  paint_shadow(canvas, path, style);
  const bool clips = state.clips;
  if (clips) {
    canvas.save();
    style.corner_radius > 0 ? canvas.clip(path) : canvas.clip(bounds);
  }
  if (const UIColor background = view.presented_background()) {
    const graphics::Colour colour = colour_of(background);
    style.corner_radius > 0 ? canvas.fill(path, colour) : canvas.fill(bounds, colour);
  }
  if (const ContentPainter painter = painter_of(view, painters())) painter(view, canvas, bounds);
  for (const View& subview : view.subviews()) paint_view(subview, canvas);
  if (const ContentPainter painter = painter_of(view, overlay_painters())) painter(view, canvas, bounds);
  if (clips) canvas.restore();
  if (style.border_width > 0) {
    LayerStyle inner = style;
    inner.corner_radius = std::max(0.0, style.corner_radius - style.border_width / 2);
    const Rect line = bounds.inset(style.border_width / 2, style.border_width / 2);
    const auto colour = style.border_colour ? colour_of(style.border_colour) : graphics::Colour::grey(0);
    canvas.stroke(outline(line, inner), colour, {.width = style.border_width});
  }
}

}  // namespace

void set_painter(objc::ClassRef cls, ContentPainter painter) { set(painters(), cls, painter); }
void set_overlay_painter(objc::ClassRef cls, ContentPainter painter) {
  set(overlay_painters(), cls, painter);
}

void paint_view(const View& view, graphics::Canvas& canvas) {
  const ViewState& state = view.parts();
  if (state.hidden) return;
  const double alpha = view.presented_alpha();
  if (alpha < kInvisible) return;
  const Rect bounds = view.presented_bounds();
  const Point center = view.presented_center();
  const AffineTransform transform = view.presented_transform();

  canvas.save();
  canvas.translate(center.x, center.y);
  if (!transform.is_identity()) canvas.transform(transform);
  canvas.translate(-bounds.mid_x(), -bounds.mid_y());
  if (state.elevated) canvas.set_appearance(graphics::elevated(canvas.appearance()));
  // What lies outside of the clip is skipped with all in it, if nothing can stick out.
  const bool contained = state.clips && !(state.layer && state.layer.style().shadow_opacity > 0);
  if (!contained || canvas.shows(bounds)) {
    const bool apart = alpha < 1;
    if (apart) canvas.begin_group();
    paint_inside(view, canvas, bounds);
    if (apart) canvas.end_group(alpha);
  }
  canvas.restore();
}

}  // namespace wispen::uikit
