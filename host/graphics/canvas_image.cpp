// host/graphics/canvas_image.cpp: images on a canvas, scaled, tinted and with caps that keep their size.
#include <cairo.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "host/graphics/canvas.hpp"
#include "host/graphics/canvas_state.hpp"
#include "host/graphics/resample.hpp"
#include "host/graphics/scaled_pixels.hpp"

namespace wispen::graphics {

namespace {

bool keeps_axes(const cairo_matrix_t& matrix) {
  return matrix.xy == 0 && matrix.yx == 0 && matrix.xx > 0 && matrix.yy > 0;
}

// A rectangle that misses the pixel grid by rounding error alone is put on it, or a copy would be blurred.
Rect on_grid(const Rect& rect) {
  const auto snap = [](double value) {
    const double nearest = std::round(value);
    return std::abs(value - nearest) < 1e-3 ? nearest : value;
  };
  const double left = snap(rect.min_x()), top = snap(rect.min_y());
  return Rect::make(left, top, snap(rect.max_x()) - left, snap(rect.max_y()) - top);
}

// No canvas is wider than this many pixels, so more tiles could not be told apart.
int tile_count(double length, double tile) {
  constexpr double kMost = 32767;
  return static_cast<int>(std::min(std::ceil(length / tile - 1e-6), kMost));
}

}  // namespace

void Canvas::draw(const Image& image, const Rect& where, const std::optional<Colour>& tint) {
  if (image.empty() || where.empty() || !shows(where)) return;
  std::optional<Colour> stencil;
  if (image.is_template()) stencil = tint.value_or(Colour::grey(0));
  if (image.resizing() && where.size != image.size()) {
    draw_resizable(image, where, stencil);
  } else {
    draw_pixels(image.upright_pixels(), where, stencil);
  }
}

void Canvas::draw_pixels(const PixelsRef& pixels, const Rect& where, const std::optional<Colour>& tint) {
  cairo_t* cairo = native();
  cairo_matrix_t matrix;
  cairo_get_matrix(cairo, &matrix);
  PixelsRef ready = pixels;
  cairo_save(cairo);
  double x = 0;
  double y = 0;
  if (keeps_axes(matrix)) {
    const Rect device = on_grid(device_bounds(cairo, where));
    const Rect whole = device.pixel_aligned();
    ready = scaled_pixels(pixels, device.offset(-whole.min_x(), -whole.min_y()), whole.size);
    cairo_identity_matrix(cairo);
    x = whole.min_x();
    y = whole.min_y();
  } else {
    cairo_translate(cairo, where.min_x(), where.min_y());
    cairo_scale(cairo, where.width() / pixels->width(), where.height() / pixels->height());
  }
  if (ready != nullptr) {
    const CairoSurface surface = surface_over(ready->view());
    const CairoPattern pattern(cairo_pattern_create_for_surface(surface.get()));
    cairo_matrix_t placed;
    cairo_matrix_init_translate(&placed, -x, -y);
    cairo_pattern_set_matrix(pattern.get(), &placed);
    cairo_pattern_set_filter(pattern.get(), keeps_axes(matrix) ? CAIRO_FILTER_NEAREST : CAIRO_FILTER_GOOD);
    if (tint) {
      set_source(*tint);
      cairo_mask(cairo, pattern.get());
    } else {
      cairo_set_source(cairo, pattern.get());
      cairo_paint(cairo);
    }
    cairo_set_source_rgba(cairo, 0, 0, 0, 0);
  }
  cairo_restore(cairo);
}

void Canvas::draw_resizable(const Image& image, const Rect& where, const std::optional<Colour>& tint) {
  const PixelsRef& upright = image.upright_pixels();
  const double scale = image.scale();
  const EdgeInsets& caps = image.resizing()->caps;
  const auto pixel = [scale](double points, int most) {
    return std::clamp(static_cast<int>(std::lround(points * scale)), 0, most);
  };
  // Edges of the three columns and rows, in the image's pixels and on the canvas.
  const int left = pixel(caps.left, upright->width());
  const int right = std::max(left, upright->width() - pixel(caps.right, upright->width()));
  const int top = pixel(caps.top, upright->height());
  const int bottom = std::max(top, upright->height() - pixel(caps.bottom, upright->height()));
  const std::array<int, 4> from_x{0, left, right, upright->width()};
  const std::array<int, 4> from_y{0, top, bottom, upright->height()};
  const auto between = [](double low, double value, double high) {
    return std::max(low, std::min(value, high));
  };
  const double end_x = between(where.min_x(), where.min_x() + caps.left, where.max_x());
  const double end_y = between(where.min_y(), where.min_y() + caps.top, where.max_y());
  const std::array<double, 4> to_x{where.min_x(), end_x, std::max(end_x, where.max_x() - caps.right),
                                   where.max_x()};
  const std::array<double, 4> to_y{where.min_y(), end_y, std::max(end_y, where.max_y() - caps.bottom),
                                   where.max_y()};
  const bool tiles = image.resizing()->mode == ResizingMode::Tile;

  for (std::size_t row = 0; row < 3; ++row) {
    for (std::size_t column = 0; column < 3; ++column) {
      const int width = from_x[column + 1] - from_x[column];
      const int height = from_y[row + 1] - from_y[row];
      const Rect part =
          Rect::make(to_x[column], to_y[row], to_x[column + 1] - to_x[column], to_y[row + 1] - to_y[row]);
      if (width <= 0 || height <= 0 || part.empty()) continue;
      auto piece = Pixels::create(width, height);
      if (!piece) continue;
      for (int y = 0; y < height; ++y) {
        const std::uint32_t* source = upright->view().row(from_y[row] + y) + from_x[column];
        std::copy_n(source, width, piece->mutable_view().row(y));
      }
      const auto shared = std::make_shared<const Pixels>(*std::move(piece));
      const double tile_width = tiles && column == 1 ? width / scale : part.width();
      const double tile_height = tiles && row == 1 ? height / scale : part.height();
      save();
      clip(part);
      const int across = tile_count(part.width(), tile_width);
      const int down = tile_count(part.height(), tile_height);
      for (int j = 0; j < down; ++j) {
        for (int i = 0; i < across; ++i) {
          const Rect tile = Rect::make(part.min_x() + i * tile_width, part.min_y() + j * tile_height,
                                       tile_width, tile_height);
          if (shows(tile)) draw_pixels(shared, tile, tint);
        }
      }
      restore();
    }
  }
}

}  // namespace wispen::graphics
