// host/graphics/canvas_text.cpp: text layouts on a canvas.
#include <cairo.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>

#include "host/graphics/canvas.hpp"
#include "host/graphics/canvas_state.hpp"
#include "host/graphics/text_content.hpp"
#include "host/graphics/text_engine.hpp"

namespace wispen::graphics {

namespace {

// Baselines on whole pixels keep the feet of letters sharp at every scale.
double on_pixel(cairo_t* cairo, double y) {
  double device_x = 0;
  cairo_matrix_t matrix;
  cairo_get_matrix(cairo, &matrix);
  if (matrix.xy != 0 || matrix.yx != 0) return y;
  cairo_user_to_device(cairo, &device_x, &y);
  y = std::round(y);
  cairo_device_to_user(cairo, &device_x, &y);
  return y;
}

// Weights that the stand-in family lacks: the outline is moved in or out by half of the difference, and the
// letters are stretched first by what that takes from their height.
void show_with_other_stem(cairo_t* cairo, PangoGlyphItem* run, double change, double cap_height) {
  const double stretch = (cap_height - change) / cap_height;
  cairo_push_group(cairo);
  double x = 0;
  double y = 0;
  cairo_get_current_point(cairo, &x, &y);
  cairo_save(cairo);
  cairo_translate(cairo, x, y - change / 2);
  cairo_scale(cairo, 1, stretch);
  cairo_new_path(cairo);
  cairo_move_to(cairo, 0, 0);
  pango_cairo_glyph_string_path(cairo, run->item->analysis.font, run->glyphs);
  cairo_restore(cairo);
  cairo_fill_preserve(cairo);
  cairo_set_line_width(cairo, std::abs(change));
  cairo_set_line_join(cairo, CAIRO_LINE_JOIN_MITER);
  if (change < 0) cairo_set_operator(cairo, CAIRO_OPERATOR_DEST_OUT);
  cairo_set_antialias(cairo, CAIRO_ANTIALIAS_BEST);
  cairo_stroke(cairo);
  cairo_pop_group_to_source(cairo);
  cairo_paint(cairo);
}

class TextPainter {
 public:
  TextPainter(cairo_t* cairo, const TextLayout::Content& content, const Colour& colour, Appearance appearance)
      : cairo_(cairo), content_(content), colour_(colour), appearance_(appearance) {}

  void paint(const TextLine& line, const SetLine& set, Point origin) {
    const double baseline = on_pixel(cairo_, origin.y + line.baseline);
    double x = origin.x + set.x;
    for (const GSList* each = set.line->runs; each != nullptr; each = each->next) {
      auto* run = static_cast<PangoGlyphItem*>(each->data);
      const double width = pango_units_to_double(pango_glyph_string_get_width(run->glyphs));
      const TextAttributes& attributes = content_.text.runs()[run_of_item(run->item)].attributes;
      if (attributes.background) {
        use(*attributes.background);
        cairo_rectangle(cairo_, x, origin.y + line.frame.min_y(), width, line.frame.height());
        cairo_fill(cairo_);
      }
      use(attributes.colour.value_or(colour_));
      const double y = baseline - attributes.baseline_offset;
      show(run, attributes, x, y);
      if (attributes.underline || attributes.strikethrough) decorate(attributes, x, y, width);
      x += width;
    }
  }

 private:
  void use(const Colour& colour) {
    const Rgba rgba = colour.rgba(appearance_);
    cairo_set_source_rgba(cairo_, rgba.red, rgba.green, rgba.blue, rgba.alpha);
  }

  void show(PangoGlyphItem* run, const TextAttributes& attributes, double x, double y) {
    cairo_new_path(cairo_);
    cairo_move_to(cairo_, x, y);
    const double stem = TextEngine::adjustment(attributes.font).stem * attributes.font.size();
    if (stem == 0) {
      pango_cairo_show_glyph_string(cairo_, run->item->analysis.font, run->glyphs);
    } else {
      cairo_save(cairo_);
      show_with_other_stem(cairo_, run, stem, attributes.font.metrics().cap_height);
      cairo_restore(cairo_);
    }
    cairo_new_path(cairo_);
  }

  void decorate(const TextAttributes& attributes, double x, double y, double width) {
    const double size = attributes.font.size();
    const double thickness = std::max(size / 16, 0.5);
    if (attributes.underline) {
      cairo_rectangle(cairo_, x, on_pixel(cairo_, y + size * 0.11), width, thickness);
    }
    if (attributes.strikethrough) {
      const double middle = y - attributes.font.metrics().x_height / 2;
      cairo_rectangle(cairo_, x, on_pixel(cairo_, middle - thickness / 2), width, thickness);
    }
    cairo_fill(cairo_);
  }

  cairo_t* cairo_;
  const TextLayout::Content& content_;
  Colour colour_;
  Appearance appearance_;
};

}  // namespace

void Canvas::draw(const TextLayout& text, Point origin, const Colour& colour) {
  const TextLayout::Content& content = text.content();
  const Rect visible = clip_bounds();
  TextPainter painter(native(), content, colour, state_->appearance);
  for (std::size_t i = 0; i < content.lines.size(); ++i) {
    const TextLine& line = content.lines[i];
    // Marks and slanted letters reach out of a line's box, by less than its height.
    const Rect reach =
        line.frame.offset(origin.x, origin.y).inset(-line.frame.height(), -line.frame.height() / 2);
    if (visible.intersects(reach)) painter.paint(line, content.set_lines[i], origin);
  }
}

}  // namespace wispen::graphics
