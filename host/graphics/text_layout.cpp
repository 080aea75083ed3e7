// host/graphics/text_layout.cpp: text set in lines, measured, and asked what lies where.

#include "host/graphics/text_layout.hpp"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "host/graphics/text_content.hpp"

namespace wispen::graphics {

namespace {

// Lines that miss the bound by rounding alone still fit.
constexpr double kFitSlack = 1.0 / 64;

bool truncates(LineBreak line_break) {
  return line_break == LineBreak::TruncateHead || line_break == LineBreak::TruncateTail ||
         line_break == LineBreak::TruncateMiddle;
}

// Only a single line is truncated or clipped where it leaves the box; several wrap, and the last is cut.
bool wraps(const TextConstraints& constraints) {
  const bool by_mode =
      constraints.line_break == LineBreak::WordWrap || constraints.line_break == LineBreak::CharacterWrap;
  return by_mode || constraints.maximum_lines != 1;
}

int pango_width(double width) {
  constexpr double kMaximum = 1 << 20;
  if (!(width < kMaximum)) return -1;
  return static_cast<int>(std::ceil((std::max(width, 0.0) + kFitSlack) * PANGO_SCALE));
}

// Bytes of a text with long words that are set at a time; some lines of a phone.
constexpr std::size_t kStretch = 256;
constexpr std::size_t kLongWord = 512;

bool has_long_word(std::string_view utf8) {
  while (utf8.size() >= kLongWord) {
    const std::size_t end = utf8.find_first_of(" \t\r\n");
    if (std::min(end, utf8.size()) >= kLongWord) return true;
    utf8.remove_prefix(end + 1);
  }
  return false;
}

PangoEllipsizeMode ellipsize_mode(LineBreak line_break) {
  switch (line_break) {
    case LineBreak::TruncateHead:
      return PANGO_ELLIPSIZE_START;
    case LineBreak::TruncateMiddle:
      return PANGO_ELLIPSIZE_MIDDLE;
    default:
      return PANGO_ELLIPSIZE_END;
  }
}

struct LineHeights {
  double ascent = 0;
  double height = 0;
};

LineHeights heights(const AttributedText& text, const PangoLayoutLine* line, std::size_t utf8_start,
                    double multiple) {
  LineHeights result;
  double below = 0;
  const auto include = [&](const TextAttributes& attributes) {
    const FontMetrics metrics = attributes.font.metrics();
    result.ascent = std::max(result.ascent, metrics.ascender + attributes.baseline_offset);
    below = std::max(below, metrics.line_height - metrics.ascender - attributes.baseline_offset);
  };
  for (const GSList* each = line->runs; each != nullptr; each = each->next) {
    const auto* run = static_cast<const PangoGlyphItem*>(each->data);
    include(text.runs()[run_of_item(run->item)].attributes);
  }
  if (line->runs == nullptr) {
    include(text.attributes_at(text.index_of(utf8_start + static_cast<std::size_t>(line->start_index))));
  }
  result.height = result.ascent + below;
  if (multiple > 0) {
    // The platform gives the room above the letters.
    result.ascent += result.height * (multiple - 1);
    result.height *= multiple;
  }
  return result;
}

// The text library widens the ellipsis until the line fills its box, which leaves a hole in the text.
void tighten_ellipsis(const PangoLayoutLine* line) {
  for (const GSList* each = line->runs; each != nullptr; each = each->next) {
    const auto* run = static_cast<const PangoGlyphItem*>(each->data);
    if ((run->item->analysis.flags & PANGO_ANALYSIS_FLAG_IS_ELLIPSIS) == 0) continue;
    for (int i = 0; i < run->glyphs->num_glyphs; ++i) {
      PangoRectangle logical{};
      PangoGlyphInfo& glyph = run->glyphs->glyphs[i];
      pango_font_get_glyph_extents(run->item->analysis.font, glyph.glyph, nullptr, &logical);
      glyph.geometry.width = std::min(glyph.geometry.width, logical.width);
      glyph.geometry.x_offset = 0;
    }
  }
}

/// Sets text line by line into a layout's content.
class Setter {
 public:
  explicit Setter(TextLayout::Content& content) : content_(content), constraints_(content.constraints) {}

  void set() {
    const std::string& utf8 = content_.text.utf8();
    const bool wrapping = wraps(constraints_);
    if (wrapping && has_long_word(utf8)) {
      set_in_stretches();
    } else {
      append_lines(add_piece(0, utf8.size(), constraints_, false), wrapping, nullptr);
    }
    const bool too_wide = !wrapping && !content_.lines.empty() &&
                          content_.lines.back().frame.width() > constraints_.width + kFitSlack;
    content_.truncated = content_.truncated || too_wide;
    if (content_.truncated && truncates(constraints_.line_break)) truncate_last_line();
    align();
  }

 private:
  std::size_t add_piece(std::size_t start, std::size_t length, const TextConstraints& constraints,
                        bool with_ellipsis) {
    content_.pieces.push_back(
        {make_pango_layout(content_.text, start, length, constraints, with_ellipsis), start, length});
    return content_.pieces.size() - 1;
  }

  /// The lines of a piece, broken where it wraps; with `next`, all but the last, whose start goes there.
  /// False where there is no more room.
  bool append_lines(std::size_t piece, bool wrapping, std::size_t* next) {
    PangoLayout* layout = content_.pieces[piece].layout.get();
    if (wrapping) {
      pango_layout_set_width(layout, pango_width(constraints_.width + break_slack(content_.text)));
      const bool by_character = constraints_.line_break == LineBreak::CharacterWrap;
      pango_layout_set_wrap(layout, by_character ? PANGO_WRAP_CHAR : PANGO_WRAP_WORD_CHAR);
      pango_layout_set_justify(layout, constraints_.alignment == TextAlignment::Justified);
    }
    for (const GSList* each = pango_layout_get_lines_readonly(layout); each != nullptr; each = each->next) {
      auto* line = static_cast<PangoLayoutLine*>(each->data);
      if (next != nullptr && each->next == nullptr) {
        *next = content_.pieces[piece].utf8_start + static_cast<std::size_t>(line->start_index);
        break;
      }
      if (!has_room_for(line, piece)) {
        content_.truncated = true;
        return false;
      }
      append(line, piece);
    }
    return true;
  }

  /// The text library shapes the rest of a word again for each of its lines. So a text with words of many
  /// lines is given to it in stretches of a few: each goes on with the last line of the one before, which was
  /// not whole.
  void set_in_stretches() {
    const std::string& utf8 = content_.text.utf8();
    std::size_t start = 0;
    bool room = true;
    while (room) {
      int delimiter = 0;
      int next = 0;
      pango_find_paragraph_boundary(utf8.c_str() + start, static_cast<int>(utf8.size() - start), &delimiter,
                                    &next);
      room = set_paragraph(start, start + static_cast<std::size_t>(delimiter));
      if (delimiter == next) break;  // the text ends without a line break
      start += static_cast<std::size_t>(next);
    }
  }

  bool set_paragraph(std::size_t start, std::size_t end) {
    TextConstraints constraints = constraints_;
    std::size_t length = kStretch;
    for (;;) {
      const std::size_t stop = length < end - start ? character_boundary(start + length) : end;
      const std::size_t piece = add_piece(start, stop - start, constraints, false);
      if (stop == end) return append_lines(piece, true, nullptr);
      std::size_t next = start;
      if (!append_lines(piece, true, &next)) return false;
      if (next == start) {
        content_.pieces.pop_back();  // all of it fits one line, which may be longer still
        length *= 2;
        continue;
      }
      // What the paragraph's first letters decided holds for its later lines.
      if (constraints.direction == WritingDirection::Natural) {
        constraints.direction = content_.lines.back().right_to_left ? WritingDirection::RightToLeft
                                                                    : WritingDirection::LeftToRight;
      }
      start = next;
      goes_on_at_ = start;
      length = kStretch;
    }
  }

  std::size_t character_boundary(std::size_t at) const {
    const std::string& utf8 = content_.text.utf8();
    while (at < utf8.size() && (static_cast<unsigned char>(utf8[at]) & 0xC0U) == 0x80U) ++at;
    return at;
  }

  bool has_room_for(const PangoLayoutLine* line, std::size_t piece) const {
    if (content_.lines.empty()) return true;
    if (constraints_.maximum_lines > 0 &&
        content_.lines.size() >= static_cast<std::size_t>(constraints_.maximum_lines)) {
      return false;
    }
    const std::size_t start = content_.pieces[piece].utf8_start;
    const double height = heights(content_.text, line, start, constraints_.line_height_multiple).height;
    return next_top(line, start) + height <= constraints_.height + kFitSlack;
  }

  double next_top(const PangoLayoutLine* line, std::size_t piece_start) const {
    if (content_.lines.empty()) return 0;
    const bool goes_on = piece_start + static_cast<std::size_t>(line->start_index) == goes_on_at_;
    const double gap = line->is_paragraph_start && !goes_on ? constraints_.paragraph_spacing : 0;
    return content_.lines.back().frame.max_y() + constraints_.line_spacing + gap;
  }

  void append(PangoLayoutLine* line, std::size_t piece) {
    const std::size_t start = content_.pieces[piece].utf8_start;
    const LineHeights tall = heights(content_.text, line, start, constraints_.line_height_multiple);
    PangoRectangle logical{};
    pango_layout_line_get_extents(line, nullptr, &logical);
    TextLine shown;
    const double top = next_top(line, start);
    shown.frame = Rect::make(0, top, pango_units_to_double(logical.width), tall.height);
    shown.baseline = top + tall.ascent;
    const std::size_t from = start + static_cast<std::size_t>(line->start_index);
    const std::size_t to =
        std::min(from + static_cast<std::size_t>(line->length), start + content_.pieces[piece].utf8_length);
    const std::size_t location = content_.text.index_of(from);
    shown.range = {location, content_.text.index_of(to) - location};
    shown.right_to_left = line->resolved_dir == PANGO_DIRECTION_RTL;
    content_.lines.push_back(shown);
    content_.set_lines.push_back({line, piece, -pango_units_to_double(logical.x)});
  }

  // The last line is set again from its first character on, with the rest of its paragraph behind it.
  void truncate_last_line() {
    const std::string& utf8 = content_.text.utf8();
    const SetLine& last = content_.set_lines.back();
    const std::size_t start =
        content_.pieces[last.piece].utf8_start + static_cast<std::size_t>(last.line->start_index);
    int delimiter = 0;
    int next = 0;
    pango_find_paragraph_boundary(utf8.c_str() + start, static_cast<int>(utf8.size() - start), &delimiter,
                                  &next);
    const bool more_follows = start + static_cast<std::size_t>(next) < utf8.size();
    const bool with_ellipsis = more_follows && constraints_.line_break == LineBreak::TruncateTail;
    content_.lines.pop_back();
    content_.set_lines.pop_back();
    add_piece(start, static_cast<std::size_t>(delimiter), constraints_, with_ellipsis);
    PangoLayout* layout = content_.pieces.back().layout.get();
    pango_layout_set_width(layout, pango_width(constraints_.width));
    pango_layout_set_height(layout, -1);
    pango_layout_set_ellipsize(layout, ellipsize_mode(constraints_.line_break));
    PangoLayoutLine* line = pango_layout_get_line(layout, 0);  // not the read-only one: its glyphs are moved
    tighten_ellipsis(line);
    append(line, content_.pieces.size() - 1);
  }

  void align() {
    double widest = 0;
    for (const TextLine& line : content_.lines) widest = std::max(widest, line.frame.width());
    content_.size = {widest, content_.lines.empty() ? 0 : content_.lines.back().frame.max_y()};
    const double box = std::isfinite(constraints_.width) ? std::max(constraints_.width, 0.0) : widest;
    for (std::size_t i = 0; i < content_.lines.size(); ++i) {
      TextLine& line = content_.lines[i];
      const double room = box - line.frame.width();
      double x = 0;
      if (constraints_.alignment == TextAlignment::Centre) {
        x = room / 2;
      } else if (constraints_.alignment == TextAlignment::Right ||
                 (constraints_.alignment != TextAlignment::Left && line.right_to_left)) {
        x = room;
      }
      line.frame.origin.x = x;
      content_.set_lines[i].x += x;
    }
  }

  TextLayout::Content& content_;
  const TextConstraints& constraints_;
  std::size_t goes_on_at_ = 0;  // where a stretch begins in the middle of its paragraph
};

}  // namespace

TextLayout::TextLayout() : content_(std::make_unique<Content>()) {}
TextLayout::~TextLayout() = default;

std::shared_ptr<const TextLayout> TextLayout::create(const AttributedText& text,
                                                     const TextConstraints& constraints) {
  const std::shared_ptr<TextLayout> layout(new TextLayout());  // NOLINT: the constructor is private
  layout->content_->text = text;
  layout->content_->constraints = constraints;
  if (!text.empty()) Setter(*layout->content_).set();
  return layout;
}

const AttributedText& TextLayout::text() const { return content_->text; }
const TextConstraints& TextLayout::constraints() const { return content_->constraints; }
Size TextLayout::size() const { return content_->size; }
const std::vector<TextLine>& TextLayout::lines() const { return content_->lines; }
bool TextLayout::truncated() const { return content_->truncated; }
double TextLayout::font_scale() const { return content_->font_scale; }

Size TextLayout::size_on_grid(double scale) const {
  return {ceil_to_pixel(size().width, scale), ceil_to_pixel(size().height, scale)};
}

double TextLayout::first_baseline() const { return lines().empty() ? 0 : lines().front().baseline; }
double TextLayout::last_baseline() const { return lines().empty() ? 0 : lines().back().baseline; }

std::shared_ptr<const TextLayout> fit_text(const AttributedText& text, const TextConstraints& constraints,
                                           double minimum_scale) {
  auto whole = layout_text(text, constraints);
  if (!whole->truncated() || !(minimum_scale > 0 && minimum_scale < 1)) return whole;
  const auto shrunk = [&](double scale) {
    AttributedText smaller = text;
    smaller.edit({0, text.length()}, [scale](TextAttributes& attributes) {
      attributes.font = attributes.font.with_size(attributes.font.size() * scale);
    });
    std::shared_ptr<const TextLayout> layout = TextLayout::create(smaller, constraints);
    layout->content_->font_scale = scale;
    return layout;
  };
  double too_large = 1;
  double scale = minimum_scale;
  std::shared_ptr<const TextLayout> best = shrunk(scale);
  if (best->truncated()) return best;
  // Eight halvings come within a fifth of a percent of the largest size that fits.
  for (int step = 0; step < 8; ++step) {
    const double middle = (scale + too_large) / 2;
    auto layout = shrunk(middle);
    if (layout->truncated()) {
      too_large = middle;
    } else {
      scale = middle;
      best = std::move(layout);
    }
  }
  return best;
}

}  // namespace wispen::graphics
