// bench/bare_page.cpp: the shapes and texts of a page, drawn by the drawing library alone.

#include "bench/bare_page.hpp"

#include <pango/pangocairo.h>

#include <algorithm>
#include <numbers>

#include "host/graphics/text_content.hpp"

namespace wispen::bench {

namespace {

constexpr double kScale = 2;
constexpr int kShadowSize = 92;  // pixels: a thumb and three times its blur around it
constexpr double kSeparatorInset = 16;

void add_rounded(cairo_t* cairo, const CGRect& rect, double radius, NSUInteger corners) {
  using std::numbers::pi;
  const double left = rect.origin.x, top = rect.origin.y;
  const double right = left + rect.size.width, bottom = top + rect.size.height;
  radius = std::min({radius, rect.size.width / 2, rect.size.height / 2});
  const auto corner = [&](NSUInteger bit, double x, double y, double dx, double dy, double from) {
    if ((corners & bit) == 0) return cairo_line_to(cairo, x, y);
    cairo_arc(cairo, x + dx * radius, y + dy * radius, radius, from, from + pi / 2);
  };
  cairo_new_path(cairo);
  corner(kCALayerMinXMinYCorner, left, top, 1, 1, pi);
  corner(kCALayerMaxXMinYCorner, right, top, -1, 1, 1.5 * pi);
  corner(kCALayerMaxXMaxYCorner, right, bottom, -1, -1, 0);
  corner(kCALayerMinXMaxYCorner, left, bottom, 1, -1, pi / 2);
  cairo_close_path(cairo);
}

}  // namespace

BarePage::BarePage(const UIWindow& window) {
  surface_ = graphics::CairoSurface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 780, 1688));
  cairo_ = graphics::CairoContext(cairo_create(surface_.get()));
  cairo_scale(cairo_.get(), kScale, kScale);
  make_shadow();
  take(window, {0, 0});
}

BarePage::Colour BarePage::colour_from(const UIColor& colour) {
  Colour parts;
  objc::send<"getRed:green:blue:alpha:", bool>(colour, &parts.red, &parts.green, &parts.blue, &parts.alpha);
  return parts;
}

void BarePage::make_shadow() {
  shadow_ = graphics::CairoSurface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kShadowSize, kShadowSize));
  const graphics::CairoContext soft(cairo_create(shadow_.get()));
  constexpr double kMiddle = kShadowSize / 2.0;
  cairo_pattern_t* fade = cairo_pattern_create_radial(kMiddle, kMiddle, 10, kMiddle, kMiddle, kMiddle);
  cairo_pattern_add_color_stop_rgba(fade, 0, 0, 0, 0, 0.15);
  cairo_pattern_add_color_stop_rgba(fade, 1, 0, 0, 0, 0);
  cairo_set_source(soft.get(), fade);
  cairo_paint(soft.get());
  cairo_pattern_destroy(fade);
}

void BarePage::take(const UIView& view, CGPoint origin) {
  if (view.isHidden() || view.alpha() < 0.01) return;
  const CGRect frame = view.frame();
  const CGRect place{{origin.x + frame.origin.x, origin.y + frame.origin.y}, frame.size};
  if (place.origin.y > 844 || place.origin.y + place.size.height < 0) return;
  const CALayer layer = view.layer();
  if (const UIColor background = view.backgroundColor()) {
    const Shape shape{place, colour_from(background), layer.cornerRadius(), layer.maskedCorners(),
                      layer.shadowOpacity() > 0};
    // What is covered whole nobody would draw.
    const bool covers = shape.colour.alpha == 1 && shape.radius == 0 && place.origin.x <= 0 &&
                        place.origin.y <= 0 && place.origin.x + place.size.width >= 390 &&
                        place.origin.y + place.size.height >= 844;
    if (covers) shapes_.clear();
    if (shape.colour.alpha > 0) shapes_.push_back(shape);
  }
  if (const auto label = objc::cast_or_nil<UILabel>(view)) take_text(label, place.origin);
  const CGPoint inside = view.bounds().origin;
  const NSArray subviews = view.subviews();
  for (NSUInteger i = 0; i < subviews.count(); ++i) {
    take(subviews.objectAtIndex<UIView>(i), {place.origin.x - inside.x, place.origin.y - inside.y});
  }
  if (objc::cast_or_nil<UITableViewCell>(view)) {
    const double bottom = place.origin.y + place.size.height;
    shapes_.push_back(
        {{{place.origin.x + kSeparatorInset, bottom - 0.5}, {place.size.width - kSeparatorInset, 0.5}},
         colour_from(objc::send<"separatorColor", UIColor>(objc::class_for<UIColor>())),
         0,
         0,
         false});
  }
}

void BarePage::take_text(const UILabel& label, CGPoint origin) {
  const NSString text = label.text();
  if (!text || text.length() == 0) return;
  graphics::TextAttributes attributes;
  attributes.font = graphics::Font::system(objc::send<"pointSize", double>(label.font()));
  graphics::TextConstraints constraints;
  constraints.width = label.bounds().size.width;
  constraints.maximum_lines = static_cast<int>(label.numberOfLines());
  const auto set = graphics::layout_text(graphics::AttributedText(text.utf8(), attributes), constraints);
  const double spare = label.bounds().size.height - set->size().height;
  texts_.push_back({set, {origin.x, origin.y + spare / 2}, colour_from(label.textColor())});
}

void BarePage::paint(const Shape& shape) const {
  cairo_t* const cairo = cairo_.get();
  const CGRect& rect = shape.rect;
  if (shape.shadow) {
    constexpr double kSide = kShadowSize / kScale;
    cairo_save(cairo);
    cairo_translate(cairo, rect.origin.x + (rect.size.width - kSide) / 2,
                    rect.origin.y + 3 + (rect.size.height - kSide) / 2);
    cairo_scale(cairo, 1 / kScale, 1 / kScale);
    cairo_set_source_surface(cairo, shadow_.get(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(cairo), CAIRO_FILTER_NEAREST);
    cairo_paint(cairo);
    cairo_restore(cairo);
  }
  cairo_set_source_rgba(cairo, shape.colour.red, shape.colour.green, shape.colour.blue, shape.colour.alpha);
  if (shape.radius > 0) {
    add_rounded(cairo, rect, shape.radius, shape.corners);
  } else {
    cairo_rectangle(cairo, rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
  }
  cairo_fill(cairo);
}

void BarePage::paint() const {
  cairo_t* const cairo = cairo_.get();
  for (const Shape& shape : shapes_) paint(shape);
  for (const Text& text : texts_) {
    cairo_set_source_rgba(cairo, text.colour.red, text.colour.green, text.colour.blue, text.colour.alpha);
    const auto& lines = text.set->lines();
    for (std::size_t i = 0; i < lines.size(); ++i) {
      cairo_move_to(cairo, text.origin.x + text.set->content().set_lines[i].x,
                    text.origin.y + lines[i].baseline);
      pango_cairo_show_layout_line(cairo, text.set->content().set_lines[i].line);
    }
  }
  cairo_surface_flush(surface_.get());
}

}  // namespace wispen::bench
