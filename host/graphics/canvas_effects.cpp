// host/graphics/canvas_effects.cpp: panes that blur what lies behind them.
#include <cairo.h>

#include <algorithm>
#include <cmath>

#include "host/graphics/blur.hpp"
#include "host/graphics/canvas.hpp"
#include "host/graphics/canvas_state.hpp"

namespace wispen::graphics {

namespace {

// Three box passes reach no further than this from a pixel.
constexpr double kReach = 3;

}  // namespace

double device_scale(cairo_t* cairo) {
  cairo_matrix_t matrix;
  cairo_get_matrix(cairo, &matrix);
  return std::sqrt(std::abs(matrix.xx * matrix.yy - matrix.xy * matrix.yx));
}

Rect device_clip(cairo_t* cairo) {
  cairo_save(cairo);
  cairo_identity_matrix(cairo);
  double left = 0, top = 0, right = 0, bottom = 0;
  cairo_clip_extents(cairo, &left, &top, &right, &bottom);
  cairo_restore(cairo);
  return Rect::make(left, top, right - left, bottom - top);
}

void paint_pixels_at(cairo_t* cairo, const PixelView& pixels, double x, double y) {
  const CairoSurface surface = surface_over(pixels);
  cairo_save(cairo);
  cairo_identity_matrix(cairo);
  cairo_set_source_surface(cairo, surface.get(), x, y);
  cairo_pattern_set_filter(cairo_get_source(cairo), CAIRO_FILTER_NEAREST);
  cairo_pattern_set_extend(cairo_get_source(cairo), CAIRO_EXTEND_PAD);
  cairo_paint(cairo);
  cairo_restore(cairo);
  // The state may still name the surface, whose pixels are about to go.
  cairo_set_source_rgba(cairo, 0, 0, 0, 0);
}

void Canvas::draw_material(const Path& path, const Material& material) {
  cairo_t* cairo = native();
  const DrawTarget target = draw_target(cairo);
  cairo_surface_flush(target.surface);
  const auto* data = cairo_image_surface_get_data(target.surface);
  if (data == nullptr) return;
  const PixelView drawn{
      reinterpret_cast<const std::uint32_t*>(data), cairo_image_surface_get_width(target.surface),
      cairo_image_surface_get_height(target.surface), cairo_image_surface_get_stride(target.surface) / 4};

  const double sigma = material.sigma * device_scale(cairo);
  const double margin = std::ceil(sigma * kReach);
  const Rect shown = device_bounds(cairo, path.bounds()).intersection(device_clip(cairo));
  if (shown.empty()) return;
  const Rect all = Rect::make(0, 0, drawn.width, drawn.height);
  const Rect pane = shown.offset(target.offset_x, target.offset_y).pixel_aligned().intersection(all);
  // The blur sees a margin around the pane, or a bright spot would appear only once the pane touches it.
  const Rect whole =
      device_bounds(cairo, path.bounds()).offset(target.offset_x, target.offset_y).pixel_aligned();
  const Rect area = (material.bounded ? whole : pane.inset(-margin, -margin)).intersection(all);
  auto softened = Pixels::create(std::llround(pane.width()), std::llround(pane.height()));
  if (!softened) return;
  const PixelView behind{drawn.row(static_cast<int>(area.min_y())) + static_cast<int>(area.min_x()),
                         static_cast<int>(area.width()), static_cast<int>(area.height()), drawn.stride};
  soften(behind, static_cast<int>(pane.min_x() - area.min_x()), static_cast<int>(pane.min_y() - area.min_y()),
         softened->mutable_view(), sigma, material.saturation);

  cairo_save(cairo);
  add_path(path);
  cairo_clip(cairo);
  cairo_save(cairo);
  // Replaced, not laid over: through a half transparent group the sharp picture would shine.
  cairo_set_operator(cairo, CAIRO_OPERATOR_SOURCE);
  paint_pixels_at(cairo, softened->view(), pane.min_x() - target.offset_x, pane.min_y() - target.offset_y);
  cairo_restore(cairo);
  set_source(material.tint);
  cairo_paint(cairo);
  cairo_restore(cairo);
}

}  // namespace wispen::graphics
