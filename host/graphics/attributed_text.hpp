// host/graphics/attributed_text.hpp: text, and what each part of it looks like.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/graphics/colour.hpp"
#include "host/graphics/font.hpp"

namespace wispen::graphics {

/// Places and lengths in text count UTF-16 units, as the platform's do.
struct TextRange {
  std::size_t location = 0;
  std::size_t length = 0;
  std::size_t end() const { return location + length; }
  friend bool operator==(const TextRange&, const TextRange&) = default;
};

struct TextAttributes {
  Font font;
  std::optional<Colour> colour;      ///< none: the colour that the text is drawn with
  std::optional<Colour> background;  ///< behind the run, as tall as its line
  double kern = 0;                   ///< points added between characters, and none at the ends of a line
  double baseline_offset = 0;        ///< points, upwards
  bool underline = false;
  bool strikethrough = false;
  friend bool operator==(const TextAttributes&, const TextAttributes&) = default;
};

struct TextRun {
  TextRange range;
  TextAttributes attributes;
  friend bool operator==(const TextRun&, const TextRun&) = default;
};

/// Text in runs that cover all of it without gaps. Units that are no valid text are replaced one by one, so
/// that places keep their meaning.
class AttributedText {
 public:
  AttributedText() = default;
  /// From UTF-8.
  explicit AttributedText(std::string_view text, const TextAttributes& attributes = {});
  explicit AttributedText(std::u16string_view text, const TextAttributes& attributes = {});

  bool empty() const { return text_.empty(); }
  /// In UTF-16 units.
  std::size_t length() const { return length_; }
  const std::string& utf8() const { return text_; }
  const std::vector<TextRun>& runs() const { return runs_; }

  /// Lets `change` edit the attributes of a range, which is cut to the text. Neighbours that end up alike
  /// join.
  void edit(TextRange range, const std::function<void(TextAttributes&)>& change);
  void set_font(TextRange range, const Font& font);
  void set_colour(TextRange range, const Colour& colour);
  /// Joins other text to the end, with its runs.
  void append(const AttributedText& other);
  /// The attributes at a place; those of the last character at the end; the defaults of an empty text.
  const TextAttributes& attributes_at(std::size_t index) const;

  /// Byte offset of a place, and back. A place inside a character means its beginning; one beyond the end the
  /// end.
  std::size_t utf8_offset(std::size_t index) const;
  std::size_t index_of(std::size_t utf8_offset) const;

  friend bool operator==(const AttributedText&, const AttributedText&) = default;
  std::size_t hash() const;

 private:
  std::string text_;
  std::size_t length_ = 0;
  TextAttributes empty_attributes_;
  std::vector<TextRun> runs_;
};

}  // namespace wispen::graphics
