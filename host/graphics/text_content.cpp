// host/graphics/text_content.cpp: what a text layout is made of, for those that set and paint it.

#include "host/graphics/text_content.hpp"

#include <algorithm>
#include <cmath>
#include <string>

#include "host/graphics/text_engine.hpp"

namespace wispen::graphics {

namespace {

// Lines come apart where a colour changes, so a run's number travels as a colour. The true colours are looked
// up when it is drawn, for the appearance of that moment.
PangoAttribute* run_mark(std::size_t run) {
  return pango_attr_foreground_new(static_cast<guint16>(run >> 16), static_cast<guint16>(run & 0xFFFF), 0);
}

void add(PangoAttrList* list, PangoAttribute* attribute, std::size_t start, std::size_t end) {
  attribute->start_index = static_cast<guint>(start);
  attribute->end_index = static_cast<guint>(end);
  pango_attr_list_insert(list, attribute);
}

/// Points after each character.
double letter_spacing(const TextAttributes& attributes) {
  return attributes.kern + TextEngine::adjustment(attributes.font).tracking * attributes.font.size();
}

void add_run(PangoAttrList* list, const TextAttributes& attributes, std::size_t run, std::size_t start,
             std::size_t end) {
  const PangoDescription description = TextEngine::description(attributes.font);
  add(list, pango_attr_font_desc_new(description.get()), start, end);
  add(list, run_mark(run), start, end);
  const double spacing = letter_spacing(attributes);
  if (spacing != 0) {
    add(list, pango_attr_letter_spacing_new(static_cast<int>(std::lround(spacing * PANGO_SCALE))), start,
        end);
  }
  if (attributes.font.has_monospaced_digits()) add(list, pango_attr_font_features_new("tnum"), start, end);
}

}  // namespace

double break_slack(const AttributedText& text) {
  double slack = 0;
  for (const auto& run : text.runs()) slack = std::max(slack, letter_spacing(run.attributes));
  return slack;
}

std::size_t run_of_item(const PangoItem* item) {
  for (const GSList* each = item->analysis.extra_attrs; each != nullptr; each = each->next) {
    auto* attribute = static_cast<PangoAttribute*>(each->data);
    if (attribute->klass->type != PANGO_ATTR_FOREGROUND) continue;
    const PangoColor& mark = pango_attribute_as_color(attribute)->color;
    return static_cast<std::size_t>(mark.red) << 16 | mark.green;
  }
  return 0;
}

GObjectRef<PangoLayout> make_pango_layout(const AttributedText& text, std::size_t utf8_start,
                                          std::size_t utf8_length, const TextConstraints& constraints,
                                          bool with_trailing_ellipsis) {
  const bool right_to_left = constraints.direction == WritingDirection::RightToLeft;
  const TextEngine& engine = TextEngine::current();
  GObjectRef<PangoLayout> layout(
      pango_layout_new(engine.context(right_to_left ? PANGO_DIRECTION_RTL : PANGO_DIRECTION_LTR)));
  pango_layout_set_auto_dir(layout.get(), constraints.direction == WritingDirection::Natural);

  std::string part = text.utf8().substr(utf8_start, utf8_length);
  if (with_trailing_ellipsis) part += "\u2026";
  const PangoAttributes attributes(pango_attr_list_new());
  std::size_t run_number = 0;
  for (const TextRun& run : text.runs()) {
    const std::size_t start = std::max(text.utf8_offset(run.range.location), utf8_start);
    std::size_t end = std::min(text.utf8_offset(run.range.end()), utf8_start + utf8_length);
    if (end == utf8_start + utf8_length) end = utf8_start + part.size();
    if (start < end) {
      add_run(attributes.get(), run.attributes, run_number, start - utf8_start, end - utf8_start);
    }
    ++run_number;
  }
  // What an empty line is measured by.
  const PangoDescription fallback =
      TextEngine::description(text.attributes_at(text.index_of(utf8_start)).font);
  pango_layout_set_font_description(layout.get(), fallback.get());
  pango_layout_set_text(layout.get(), part.c_str(), static_cast<int>(part.size()));
  pango_layout_set_attributes(layout.get(), attributes.get());
  return layout;
}

}  // namespace wispen::graphics
