// host/graphics/text_layout.hpp: text set in lines, measured, and asked what lies where.
#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

#include "host/geometry/geometry.hpp"
#include "host/graphics/attributed_text.hpp"

namespace wispen::graphics {

/// The platform's numbers.
enum class TextAlignment : std::uint8_t { Left = 0, Centre = 1, Right = 2, Justified = 3, Natural = 4 };
enum class LineBreak : std::uint8_t {
  WordWrap = 0,
  CharacterWrap = 1,
  Clip = 2,
  TruncateHead = 3,
  TruncateTail = 4,
  TruncateMiddle = 5
};
/// Natural takes the direction of each paragraph's first letter, and left to right without one.
enum class WritingDirection : std::int8_t { Natural = -1, LeftToRight = 0, RightToLeft = 1 };

inline constexpr double kUnbounded = std::numeric_limits<double>::infinity();

/// How text is to be set.
struct TextConstraints {
  double width = kUnbounded;   ///< points
  double height = kUnbounded;  ///< points; lines that do not fit are dropped, but never the first
  int maximum_lines = 0;       ///< 0 for any number
  TextAlignment alignment = TextAlignment::Natural;
  LineBreak line_break = LineBreak::WordWrap;
  WritingDirection direction = WritingDirection::Natural;
  double line_spacing = 0;          ///< points between lines
  double paragraph_spacing = 0;     ///< points more after each paragraph
  double line_height_multiple = 0;  ///< factor of the lines' own height; 0 is 1
  friend bool operator==(const TextConstraints&, const TextConstraints&) = default;
};

/// One line as it is shown.
struct TextLine {
  Rect frame;           ///< from its first to its last glyph, as tall as its tallest font's line
  double baseline = 0;  ///< y
  TextRange range;  ///< what it was made of, without the line break; more than is seen where it is truncated
  bool right_to_left = false;
};

/// Text in lines, aligned in a box whose top left corner is the origin: as wide as the constraints, or as the
/// text where they do not bound the width. Immutable. It belongs to the thread that made it.
class TextLayout {
 public:
  static std::shared_ptr<const TextLayout> create(const AttributedText& text,
                                                  const TextConstraints& constraints);
  ~TextLayout();

  const AttributedText& text() const;
  const TextConstraints& constraints() const;
  /// What the lines take up, exactly.
  Size size() const;
  /// The same rounded up to whole pixels.
  Size size_on_grid(double scale) const;
  const std::vector<TextLine>& lines() const;
  /// y of the first and the last line's baseline.
  double first_baseline() const;
  double last_baseline() const;
  /// Whether anything is left out: by an ellipsis, or by lines that are not shown.
  bool truncated() const;
  /// How much the fonts were shrunk to fit: 1 when not at all.
  double font_scale() const;

  /// The place between characters that is nearest to a point; points outside count for the nearest line.
  std::size_t index_at(Point point) const;
  /// The character under a point; nothing where there is none.
  std::optional<std::size_t> character_at(Point point) const;
  /// A caret without width before the character at `index`, as tall as its line.
  Rect caret(std::size_t index) const;
  /// What a selection covers, line by line.
  std::vector<Rect> selection(TextRange range) const;

  struct Content;
  /// For the painter only.
  const Content& content() const { return *content_; }

 private:
  friend std::shared_ptr<const TextLayout> fit_text(const AttributedText&, const TextConstraints&, double);
  TextLayout();

  std::unique_ptr<Content> content_;
};

/// TextLayout::create(), through a cache of the thread's last layouts: the same question gives the same
/// object.
std::shared_ptr<const TextLayout> layout_text(const AttributedText& text, const TextConstraints& constraints);

/// Shrinks the fonts, down to `minimum_scale` (above 0, at most 1) of their size, until nothing is left out.
std::shared_ptr<const TextLayout> fit_text(const AttributedText& text, const TextConstraints& constraints,
                                           double minimum_scale);

}  // namespace wispen::graphics
