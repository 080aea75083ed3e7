// host/graphics/canvas.cpp: what views are painted on.

#include "host/graphics/canvas.hpp"

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "host/graphics/canvas_state.hpp"

namespace wispen::graphics {

CairoSurface surface_over(const PixelView& pixels) {
  // The library has no word for memory that is only read.
  auto* data = const_cast<unsigned char*>(reinterpret_cast<const unsigned char*>(pixels.pixels));
  return CairoSurface(cairo_image_surface_create_for_data(
      data, CAIRO_FORMAT_ARGB32, pixels.width, pixels.height, static_cast<int>(pixels.stride * 4)));
}

DrawTarget draw_target(cairo_t* cairo) {
  DrawTarget target{cairo_get_group_target(cairo), 0, 0};
  cairo_surface_get_device_offset(target.surface, &target.offset_x, &target.offset_y);
  return target;
}

Rect device_bounds(cairo_t* cairo, const Rect& rect) {
  cairo_matrix_t matrix;
  cairo_get_matrix(cairo, &matrix);
  return AffineTransform{matrix.xx, matrix.yx, matrix.xy, matrix.yy, matrix.x0, matrix.y0}.apply(rect);
}

Canvas::Canvas(std::unique_ptr<State> state) : state_(std::move(state)) {}
Canvas::Canvas(Canvas&&) noexcept = default;
Canvas& Canvas::operator=(Canvas&&) noexcept = default;
Canvas::~Canvas() = default;

Result<Canvas> Canvas::with_state(std::unique_ptr<State> state) {
  state->surface = surface_over(state->target);
  state->cairo.reset(cairo_create(state->surface.get()));
  const cairo_status_t status = cairo_status(state->cairo.get());
  if (status != CAIRO_STATUS_SUCCESS) {
    return Error{std::string("a canvas cannot be made: ") + cairo_status_to_string(status)};
  }
  cairo_scale(state->cairo.get(), state->scale, state->scale);
  return Canvas(std::move(state));
}

Result<Canvas> Canvas::create(Size size, double scale, Appearance appearance) {
  constexpr double kMaximumSide = 32767;
  const double width = ceil_to_pixel(size.width, scale) * scale;
  const double height = ceil_to_pixel(size.height, scale) * scale;
  if (!(scale > 0) || !(width >= 0.5 && width <= kMaximumSide) ||
      !(height >= 0.5 && height <= kMaximumSide)) {
    return Error{"a canvas of " + std::to_string(size.width) + " x " + std::to_string(size.height) +
                 " points at scale " + std::to_string(scale) + " cannot be made"};
  }
  auto pixels = Pixels::create(std::llround(width), std::llround(height));
  if (!pixels) return pixels.error();
  auto state = std::make_unique<State>();
  state->own = *std::move(pixels);
  state->target = state->own->mutable_view();
  state->scale = scale;
  state->appearance = appearance;
  return with_state(std::move(state));
}

Result<Canvas> Canvas::over(const MutablePixelView& pixels, double scale, Appearance appearance) {
  if (pixels.empty() || !(scale > 0)) return Error{"a canvas needs pixels and a scale above 0"};
  auto state = std::make_unique<State>();
  state->target = pixels;
  state->scale = scale;
  state->appearance = appearance;
  return with_state(std::move(state));
}

Size Canvas::size() const {
  return {state_->target.width / state_->scale, state_->target.height / state_->scale};
}

double Canvas::scale() const { return state_->scale; }
Appearance Canvas::appearance() const { return state_->appearance; }
void Canvas::set_appearance(Appearance appearance) { state_->appearance = appearance; }
cairo_t* Canvas::native() const { return state_->cairo.get(); }

void Canvas::save() {
  cairo_save(native());
  state_->saved_appearances.push_back(state_->appearance);
}

void Canvas::restore() {
  if (state_->saved_appearances.empty()) return;
  cairo_restore(native());
  state_->appearance = state_->saved_appearances.back();
  state_->saved_appearances.pop_back();
}

void Canvas::transform(const AffineTransform& transform) {
  // The library refuses all further work after a transform that flattens the plane; nothing would show
  // anyway.
  if (!transform.inverted()) {
    clip(Rect{});
    return;
  }
  cairo_matrix_t matrix;
  cairo_matrix_init(&matrix, transform.a, transform.b, transform.c, transform.d, transform.tx, transform.ty);
  cairo_transform(native(), &matrix);
}

void Canvas::clip(const Rect& rect) {
  cairo_new_path(native());
  cairo_rectangle(native(), rect.min_x(), rect.min_y(), std::max(rect.width(), 0.0),
                  std::max(rect.height(), 0.0));
  cairo_clip(native());
}

void Canvas::clip(const Path& path) {
  add_path(path);
  cairo_clip(native());
}

Rect Canvas::clip_bounds() const {
  double left = 0, top = 0, right = 0, bottom = 0;
  cairo_clip_extents(native(), &left, &top, &right, &bottom);
  return Rect::make(left, top, right - left, bottom - top);
}

void Canvas::begin_group() {
  save();
  cairo_push_group(native());
}

void Canvas::begin_group(const Rect& around) {
  save();
  // Whole pixels, and one to spare: the clip must not soften an edge.
  const Rect pixels = device_bounds(native(), around).inset(-1, -1).pixel_aligned();
  cairo_matrix_t matrix;
  cairo_get_matrix(native(), &matrix);
  cairo_identity_matrix(native());
  clip(pixels);
  cairo_set_matrix(native(), &matrix);
  cairo_push_group(native());
}

void Canvas::end_group(double alpha) {
  cairo_pop_group_to_source(native());
  cairo_paint_with_alpha(native(), std::clamp(alpha, 0.0, 1.0));
  restore();
}

void Canvas::set_source(const Colour& colour) {
  const Rgba rgba = colour.rgba(state_->appearance);
  cairo_set_source_rgba(native(), rgba.red, rgba.green, rgba.blue, rgba.alpha);
}

void Canvas::add_path(const Path& path) {
  cairo_new_path(native());
  for (const Path::Element& element : path.elements()) {
    const auto& [a, b, c] = element.points;
    switch (element.verb) {
      case Path::Verb::Move:
        cairo_move_to(native(), a.x, a.y);
        break;
      case Path::Verb::Line:
        cairo_line_to(native(), a.x, a.y);
        break;
      case Path::Verb::Curve:
        cairo_curve_to(native(), a.x, a.y, b.x, b.y, c.x, c.y);
        break;
      case Path::Verb::Close:
        cairo_close_path(native());
        break;
    }
  }
}

void Canvas::clear() {
  cairo_save(native());
  cairo_set_operator(native(), CAIRO_OPERATOR_CLEAR);
  cairo_paint(native());
  cairo_restore(native());
}

void Canvas::fill(const Rect& rect, const Colour& colour) {
  if (rect.empty()) return;
  set_source(colour);
  cairo_new_path(native());
  cairo_rectangle(native(), rect.min_x(), rect.min_y(), rect.width(), rect.height());
  cairo_fill(native());
}

void Canvas::fill(const Path& path, const Colour& colour) {
  set_source(colour);
  add_path(path);
  cairo_fill(native());
}

void Canvas::fill_gradient(const Path& path, Point from, Point to, const std::vector<GradientStop>& stops) {
  const CairoPattern pattern(cairo_pattern_create_linear(from.x, from.y, to.x, to.y));
  for (const GradientStop& stop : stops) {
    const Rgba rgba = stop.colour.rgba(state_->appearance);
    cairo_pattern_add_color_stop_rgba(pattern.get(), stop.place, rgba.red, rgba.green, rgba.blue, rgba.alpha);
  }
  cairo_set_source(native(), pattern.get());
  add_path(path);
  cairo_fill(native());
}

void Canvas::stroke(const Path& path, const Colour& colour, const StrokeStyle& style) {
  if (!(style.width > 0)) return;
  set_source(colour);
  add_path(path);
  cairo_set_line_width(native(), style.width);
  cairo_set_line_cap(native(), style.round_caps ? CAIRO_LINE_CAP_ROUND : CAIRO_LINE_CAP_BUTT);
  cairo_set_line_join(native(), style.round_caps ? CAIRO_LINE_JOIN_ROUND : CAIRO_LINE_JOIN_MITER);
  cairo_set_dash(native(), style.dashes.data(), static_cast<int>(style.dashes.size()), 0);
  cairo_stroke(native());
}

PixelView Canvas::pixels() const {
  cairo_surface_flush(state_->surface.get());
  return state_->target;
}

Result<Image> Canvas::make_image() const {
  const PixelView source = pixels();
  auto copy = Pixels::create(source.width, source.height);
  if (!copy) return copy.error();
  for (int y = 0; y < source.height; ++y) {
    std::copy_n(source.row(y), source.width, copy->mutable_view().row(y));
  }
  return Image(std::make_shared<const Pixels>(*std::move(copy)), state_->scale);
}

}  // namespace wispen::graphics
