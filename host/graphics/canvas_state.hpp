// host/graphics/canvas_state.hpp: what a canvas is made of, for the files that implement it.
#pragma once

#include <optional>
#include <vector>

#include "host/graphics/canvas.hpp"
#include "host/graphics/gobject_ref.hpp"

namespace wispen::graphics {

struct Canvas::State {
  std::optional<Pixels> own;
  MutablePixelView target;
  double scale = 1;
  Appearance appearance = Appearance::Light;
  std::vector<Appearance> saved_appearances;
  CairoSurface surface;
  CairoContext cairo;
};

/// Wraps pixels for reading; they must outlive the surface.
CairoSurface surface_over(const PixelView& pixels);

/// The surface of the innermost group, or the canvas's own, and where the device's origin lies on it.
struct DrawTarget {
  cairo_surface_t* surface;
  double offset_x;
  double offset_y;
};
DrawTarget draw_target(cairo_t* cairo);

/// Pixels a unit of the current user space, by area.
double device_scale(cairo_t* cairo);
/// The clip in device pixels.
Rect device_clip(cairo_t* cairo);
/// Lays pixels over what is there, with their corner at that device pixel. They may go afterwards.
void paint_pixels_at(cairo_t* cairo, const PixelView& pixels, double x, double y);

/// The bounds of a rectangle of the current user space in device pixels.
Rect device_bounds(cairo_t* cairo, const Rect& rect);

}  // namespace wispen::graphics
