// host/graphics/canvas_shadow.cpp: shadows, and the last of them, since rows of a page throw the same ones.
#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <list>

#include "host/graphics/blur.hpp"
#include "host/graphics/canvas.hpp"
#include "host/graphics/canvas_state.hpp"

namespace wispen::graphics {

namespace {

// Three box passes reach no further than this from a pixel.
constexpr double kReach = 3;
// Larger shadows are few, and are made as far as they are seen.
constexpr double kMostCachedPixels = 512.0 * 512;

/// A shape on the device's pixels, near their origin, and what its shadow looks like.
struct ShadowKey {
  Path path;
  double sigma;
  Rgba colour;
  friend bool operator==(const ShadowKey&, const ShadowKey&) = default;
};

PixelsRef make_shadow(const ShadowKey& key, const Rect& area) {
  auto pixels = Pixels::create(std::llround(area.width()), std::llround(area.height()));
  if (!pixels) return nullptr;
  {
    auto soft = Canvas::over(pixels->mutable_view(), 1);
    if (!soft) return nullptr;
    soft->translate(-area.min_x(), -area.min_y());
    soft->fill(key.path, Colour::rgb(key.colour.red, key.colour.green, key.colour.blue, key.colour.alpha));
    cairo_surface_flush(cairo_get_target(soft->native()));
  }
  blur(pixels->mutable_view(), key.sigma);
  return std::make_shared<const Pixels>(*std::move(pixels));
}

class ShadowCache {
 public:
  static ShadowCache& current() {
    thread_local ShadowCache cache;
    return cache;
  }

  PixelsRef get(const ShadowKey& key, const Rect& area) {
    const auto known = std::ranges::find(entries_, key, &Entry::key);
    if (known != entries_.end()) {
      entries_.splice(entries_.begin(), entries_, known);
      return known->pixels;
    }
    entries_.push_front({key, make_shadow(key, area)});
    if (entries_.size() > kCapacity) entries_.pop_back();
    return entries_.front().pixels;
  }

 private:
  // The thumbs of a page's switches and sliders, in the few places between pixels that they stand at.
  static constexpr std::size_t kCapacity = 24;
  struct Entry {
    ShadowKey key;
    PixelsRef pixels;
  };
  std::list<Entry> entries_;
};

// The drawing library's own grid: what is nearer than this is drawn alike, and should be found alike.
Path on_grid(const Path& path) {
  constexpr double kGrid = 256;
  const auto snap = [](Point point) {
    return Point{std::round(point.x * kGrid) / kGrid, std::round(point.y * kGrid) / kGrid};
  };
  Path snapped;
  for (const Path::Element& element : path.elements()) {
    const auto& [a, b, c] = element.points;
    switch (element.verb) {
      case Path::Verb::Move:
        snapped.move_to(snap(a));
        break;
      case Path::Verb::Line:
        snapped.line_to(snap(a));
        break;
      case Path::Verb::Curve:
        snapped.curve_to(snap(a), snap(b), snap(c));
        break;
      case Path::Verb::Close:
        snapped.close();
        break;
    }
  }
  return snapped;
}

}  // namespace

void Canvas::draw_shadow(const Path& path, const Shadow& shadow) {
  cairo_t* cairo = native();
  const double sigma = shadow.sigma * device_scale(cairo);
  const double margin = std::ceil(sigma * kReach) + 1;
  cairo_matrix_t matrix;
  cairo_get_matrix(cairo, &matrix);
  const Path placed =
      path.transformed(AffineTransform::translation(shadow.offset.width, shadow.offset.height)
                           .then({matrix.xx, matrix.yx, matrix.xy, matrix.yy, matrix.x0, matrix.y0}));
  const Rect bounds = placed.bounds();
  const double left = std::floor(bounds.min_x());
  const double top = std::floor(bounds.min_y());
  const ShadowKey key{on_grid(placed.transformed(AffineTransform::translation(-left, -top))), sigma,
                      shadow.colour.rgba(state_->appearance)};
  const Rect visible = device_clip(cairo).offset(-left, -top);
  Rect area = key.path.bounds().inset(-margin, -margin).pixel_aligned();
  if (!area.intersects(visible)) return;
  PixelsRef pixels;
  if (area.width() * area.height() <= kMostCachedPixels) {
    pixels = ShadowCache::current().get(key, area);
  } else {
    area = area.intersection(visible.inset(-margin, -margin).pixel_aligned());
    pixels = make_shadow(key, area);
  }
  if (!pixels) return;
  cairo_save(cairo);
  cairo_identity_matrix(cairo);
  cairo_rectangle(cairo, area.min_x() + left, area.min_y() + top, area.width(), area.height());
  cairo_clip(cairo);
  paint_pixels_at(cairo, pixels->view(), area.min_x() + left, area.min_y() + top);
  cairo_restore(cairo);
}

}  // namespace wispen::graphics
