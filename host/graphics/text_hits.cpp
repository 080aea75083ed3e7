// host/graphics/text_hits.cpp: what a text layout answers about places.
#include <algorithm>
#include <optional>

#include "host/graphics/text_content.hpp"

namespace wispen::graphics {

namespace {

int to_pango(double points) { return static_cast<int>(points * PANGO_SCALE); }

std::size_t nearest_line(const std::vector<TextLine>& lines, double y) {
  std::size_t line = 0;
  while (line + 1 < lines.size() && y >= lines[line].frame.max_y()) ++line;
  return line;
}

// The last line that begins at or before the place.
std::size_t line_of(const std::vector<TextLine>& lines, std::size_t index) {
  std::size_t line = 0;
  while (line + 1 < lines.size() && lines[line + 1].range.location <= index) ++line;
  return line;
}

}  // namespace

std::size_t TextLayout::index_at(Point point) const {
  const Content& content = *content_;
  if (content.lines.empty()) return 0;
  const std::size_t line = nearest_line(content.lines, point.y);
  const SetLine& set = content.set_lines[line];
  const TextPiece& piece = content.pieces[set.piece];
  int byte = 0;
  int trailing = 0;
  pango_layout_line_x_to_index(set.line, to_pango(point.x - set.x), &byte, &trailing);
  std::size_t offset = piece.utf8_start + static_cast<std::size_t>(byte);
  const std::string& utf8 = content.text.utf8();
  while (trailing-- > 0 && offset < utf8.size()) {
    offset += static_cast<std::size_t>(g_utf8_next_char(utf8.c_str() + offset) - (utf8.c_str() + offset));
  }
  return content.text.index_of(std::min(offset, piece.utf8_start + piece.utf8_length));
}

std::optional<std::size_t> TextLayout::character_at(Point point) const {
  const Content& content = *content_;
  for (std::size_t line = 0; line < content.lines.size(); ++line) {
    if (!content.lines[line].frame.contains(point)) continue;
    const SetLine& set = content.set_lines[line];
    const TextPiece& piece = content.pieces[set.piece];
    int byte = 0;
    int trailing = 0;
    if (pango_layout_line_x_to_index(set.line, to_pango(point.x - set.x), &byte, &trailing) == FALSE) {
      continue;
    }
    if (static_cast<std::size_t>(byte) >= piece.utf8_length) continue;
    return content.text.index_of(piece.utf8_start + static_cast<std::size_t>(byte));
  }
  return std::nullopt;
}

Rect TextLayout::caret(std::size_t index) const {
  const Content& content = *content_;
  if (content.lines.empty()) return {};
  const std::size_t line = line_of(content.lines, index);
  const SetLine& set = content.set_lines[line];
  const TextPiece& piece = content.pieces[set.piece];
  const std::size_t offset =
      std::clamp(content.text.utf8_offset(index), piece.utf8_start, piece.utf8_start + piece.utf8_length);
  int x = 0;
  pango_layout_line_index_to_x(set.line, static_cast<int>(offset - piece.utf8_start), FALSE, &x);
  const Rect& frame = content.lines[line].frame;
  return Rect::make(set.x + pango_units_to_double(x), frame.min_y(), 0, frame.height());
}

std::vector<Rect> TextLayout::selection(TextRange range) const {
  const Content& content = *content_;
  std::vector<Rect> rects;
  for (std::size_t i = 0; i < content.lines.size(); ++i) {
    const SetLine& set = content.set_lines[i];
    const TextPiece& piece = content.pieces[set.piece];
    const auto start = static_cast<int>(std::max(content.text.utf8_offset(range.location), piece.utf8_start) -
                                        piece.utf8_start);
    const std::size_t end_offset = std::max(content.text.utf8_offset(range.end()), piece.utf8_start);
    const auto end = static_cast<int>(end_offset - piece.utf8_start);
    const Rect& frame = content.lines[i].frame;
    int run_x = 0;
    for (const GSList* each = set.line->runs; each != nullptr; each = each->next) {
      auto* run = static_cast<PangoGlyphItem*>(each->data);
      PangoItem* item = run->item;
      const int from = std::max(start, item->offset);
      const int to = std::min(end, item->offset + item->length);
      if (from < to) {
        const char* text = pango_layout_get_text(piece.layout.get()) + item->offset;
        int first = 0;
        int last = 0;
        pango_glyph_string_index_to_x(run->glyphs, text, item->length, &item->analysis, from - item->offset,
                                      FALSE, &first);
        pango_glyph_string_index_to_x(run->glyphs, text, item->length, &item->analysis, to - item->offset,
                                      FALSE, &last);
        const double left = set.x + pango_units_to_double(run_x + std::min(first, last));
        const double width = pango_units_to_double(std::abs(last - first));
        if (!rects.empty() && rects.back().min_y() == frame.min_y() &&
            std::abs(rects.back().max_x() - left) < 0.01) {
          rects.back().size.width += width;  // runs that touch are one stretch to the eye
        } else {
          rects.push_back(Rect::make(left, frame.min_y(), width, frame.height()));
        }
      }
      run_x += pango_glyph_string_get_width(run->glyphs);
    }
  }
  return rects;
}

}  // namespace wispen::graphics
