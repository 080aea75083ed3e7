// host/graphics/text_content.hpp: what a text layout is made of, for those that set and paint it.
#pragma once

#include <vector>

#include "host/graphics/gobject_ref.hpp"
#include "host/graphics/text_layout.hpp"

namespace wispen::graphics {

/// A stretch of the text that the text library sets by itself: all of it, or the end that is truncated.
struct TextPiece {
  GObjectRef<PangoLayout> layout;
  std::size_t utf8_start = 0;
  std::size_t utf8_length = 0;
};

struct SetLine {
  PangoLayoutLine* line = nullptr;  ///< the piece's layout owns it
  std::size_t piece = 0;
  double x = 0;  ///< of the line's own origin
};

struct TextLayout::Content {
  AttributedText text;
  TextConstraints constraints;
  std::vector<TextPiece> pieces;
  std::vector<TextLine> lines;
  std::vector<SetLine> set_lines;
  Size size;
  bool truncated = false;
  double font_scale = 1;
};

/// How much wider than it turns out to be the text library takes a line for where it breaks lines, in points:
/// the room after each character counts there also for the last one.
double break_slack(const AttributedText& text);

/// The number of the text's run that a piece of a line belongs to.
std::size_t run_of_item(const PangoItem* item);

/// Sets part of the text: all attributes, each run marked so that run_of_item() finds it.
GObjectRef<PangoLayout> make_pango_layout(const AttributedText& text, std::size_t utf8_start,
                                          std::size_t utf8_length, const TextConstraints& constraints,
                                          bool with_trailing_ellipsis);

}  // namespace wispen::graphics
