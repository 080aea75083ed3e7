// tests/host/graphics/text_layout_test.cpp: text set in lines, measured, and asked what lies where.

#include "host/graphics/text_layout.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace wispen::graphics {
namespace {

const char* const kWords = "Dynamic colour will tint the bold separators with the colour of the icon";
const char* const kArabic = "\u0627\u0644\u0625\u0639\u062F\u0627\u062F\u0627\u062A";

std::shared_ptr<const TextLayout> set(const char* text, const TextConstraints& constraints = {},
                                      const Font& font = {}) {
  TextAttributes attributes;
  attributes.font = font;
  return TextLayout::create(AttributedText(text, attributes), constraints);
}

TextConstraints one_line(double width, LineBreak line_break) {
  TextConstraints constraints;
  constraints.width = width;
  constraints.maximum_lines = 1;
  constraints.line_break = line_break;
  return constraints;
}

TEST(TextLayouts, AreAsTallAsThePlatformsLines) {
  EXPECT_NEAR(set("Label")->size().height, 20.287, 0.001);
  EXPECT_EQ(set("Label")->size_on_grid(2).height, 20.5);
  EXPECT_NEAR(set("\u0627\u8BBE\U0001F642")->size().height, 20.287, 0.001);  // fallback fonts do not count
}

TEST(TextLayouts, AreAboutAsWideAsOnThePlatform) {
  EXPECT_NEAR(set("Label")->size().width, 41.5, 0.8);
  EXPECT_NEAR(set("Cancel")->size().width, 53, 1);
}

TEST(TextLayouts, TakeNoRoomWithoutText) {
  EXPECT_EQ(set("")->size(), (Size{}));
  EXPECT_EQ(set("")->index_at({5, 5}), 0u);
  EXPECT_FALSE(set("")->truncated());
}

TEST(TextLayouts, WrapBetweenWordsAndInsideThoseThatAreTooLong) {
  TextConstraints constraints;
  constraints.width = 120;
  const auto layout = set(kWords, constraints);
  EXPECT_GT(layout->lines().size(), 3u);
  for (const TextLine& line : layout->lines()) EXPECT_LE(line.frame.width(), 120.1);
  EXPECT_EQ(set("Donaudampfschifffahrtsgesellschaft", constraints)->lines().size(), 3u);
}

TEST(TextLayouts, CoverAllTextWithTheirLines) {
  TextConstraints constraints;
  constraints.width = 100;
  const auto layout = set("one two three\nfour five six\n\nseven", constraints);
  std::size_t next = 0;
  for (const TextLine& line : layout->lines()) {
    EXPECT_GE(line.range.location, next);
    next = line.range.end();
  }
  EXPECT_EQ(next, layout->text().length());
}

TEST(TextLayouts, KeepEmptyLines) {
  EXPECT_EQ(set("a\n\nb\n")->lines().size(), 4u);
  EXPECT_NEAR(set("a\n\nb\n")->size().height, 4 * 20.287, 0.01);
}

TEST(TextLayouts, DropLinesBeyondTheirNumberWithoutAnEllipsisWhenTheyWrap) {
  TextConstraints constraints;
  constraints.width = 120;
  constraints.maximum_lines = 2;
  const auto layout = set(kWords, constraints);
  EXPECT_EQ(layout->lines().size(), 2u);
  EXPECT_TRUE(layout->truncated());
  EXPECT_LT(layout->lines()[1].range.end(), layout->text().length());
}

TEST(TextLayouts, TruncateTheLastLineAndReachToTheEndOfTheText) {
  for (const LineBreak mode : {LineBreak::TruncateHead, LineBreak::TruncateMiddle, LineBreak::TruncateTail}) {
    for (const int lines : {1, 2}) {
      TextConstraints constraints = one_line(150, mode);
      constraints.maximum_lines = lines;
      const auto layout = set(kWords, constraints);
      EXPECT_EQ(layout->lines().size(), static_cast<std::size_t>(lines));
      EXPECT_TRUE(layout->truncated());
      EXPECT_LE(layout->lines().back().frame.width(), 150.1);
      EXPECT_GT(layout->lines().back().frame.width(), 120);
      EXPECT_EQ(layout->lines().back().range.end(), layout->text().length());
    }
  }
}

TEST(TextLayouts, ShowAnEllipsisWhereAParagraphIsLeftOut) {
  const auto whole = set("first");
  const auto cut = set("first\nsecond", one_line(kUnbounded, LineBreak::TruncateTail));
  EXPECT_TRUE(cut->truncated());
  EXPECT_GT(cut->size().width, whole->size().width + 5);
  EXPECT_EQ(cut->lines().size(), 1u);
}

TEST(TextLayouts, DoNotTruncateWhatFitsExactly) {
  const double width = set("Label")->size().width;
  EXPECT_FALSE(set("Label", one_line(width, LineBreak::TruncateTail))->truncated());
  EXPECT_TRUE(set("Label", one_line(width - 1, LineBreak::TruncateTail))->truncated());
}

TEST(TextLayouts, KeepToTheHeightButShowOneLineAtLeast) {
  TextConstraints constraints;
  constraints.width = 120;
  constraints.height = 45;
  EXPECT_EQ(set(kWords, constraints)->lines().size(), 2u);
  constraints.height = 1;
  EXPECT_EQ(set(kWords, constraints)->lines().size(), 1u);
}

TEST(TextLayouts, AlignInTheirBox) {
  TextConstraints constraints;
  constraints.width = 200;
  constraints.alignment = TextAlignment::Centre;
  const auto centred = set("Label", constraints);
  EXPECT_NEAR(centred->lines()[0].frame.mid_x(), 100, 0.01);
  constraints.alignment = TextAlignment::Right;
  EXPECT_NEAR(set("Label", constraints)->lines()[0].frame.max_x(), 200, 0.01);
  constraints.alignment = TextAlignment::Justified;
  constraints.width = 120;
  const auto justified = set(kWords, constraints);
  EXPECT_NEAR(justified->lines()[0].frame.width(), 120, 0.1);
  EXPECT_LT(justified->lines().back().frame.width(), 119);
}

TEST(TextLayouts, StartArabicAtTheRight) {
  TextConstraints constraints;
  constraints.width = 200;
  const auto layout = set(kArabic, constraints);
  EXPECT_TRUE(layout->lines()[0].right_to_left);
  EXPECT_NEAR(layout->lines()[0].frame.max_x(), 200, 0.01);
  EXPECT_NEAR(layout->caret(0).min_x(), 200, 0.1);
  constraints.alignment = TextAlignment::Left;
  EXPECT_EQ(set(kArabic, constraints)->lines()[0].frame.min_x(), 0);
  constraints = {};
  constraints.width = 200;
  constraints.direction = WritingDirection::RightToLeft;
  EXPECT_NEAR(set("Label", constraints)->lines()[0].frame.max_x(), 200, 0.01);
}

TEST(TextLayouts, FindTheirWayFromACaretToAPointAndBack) {
  TextConstraints constraints;
  constraints.width = 120;
  const auto layout = set("Gr\u00FC\u00DFe \U0001F642 and some more words to wrap", constraints);
  for (std::size_t index = 0; index < layout->text().length(); ++index) {
    if (layout->text().index_of(layout->text().utf8_offset(index)) != index) continue;  // inside a pair
    const Rect caret = layout->caret(index);
    EXPECT_EQ(layout->index_at({caret.min_x() + 0.05, caret.mid_y()}), index);
  }
  EXPECT_EQ(layout->index_at({-50, -50}), 0u);
  EXPECT_EQ(layout->index_at({500, 500}), layout->text().length());
}

TEST(TextLayouts, TellTheCharacterUnderAPointOnlyWhereThereIsOne) {
  const auto layout = set("ab");
  EXPECT_EQ(layout->character_at({1, 5}), 0u);
  EXPECT_FALSE(layout->character_at({100, 5}));
}

TEST(TextLayouts, SelectLineByLine) {
  TextConstraints constraints;
  constraints.width = 120;
  const auto layout = set(kWords, constraints);
  const auto all = layout->selection({0, layout->text().length()});
  EXPECT_EQ(all.size(), layout->lines().size());
  EXPECT_NEAR(all[0].width(), layout->lines()[0].frame.width(), 0.1);
  EXPECT_TRUE(layout->selection({3, 0}).empty());
  const auto part = set("Label")->selection({1, 2});
  ASSERT_EQ(part.size(), 1u);
  EXPECT_NEAR(part[0].min_x(), set("Label")->caret(1).min_x(), 0.01);
}

TEST(TextLayouts, GrowWithKernAndLineSpacing) {
  AttributedText kerned("Label");
  kerned.edit({0, 5}, [](TextAttributes& attributes) { attributes.kern = 2; });
  EXPECT_NEAR(TextLayout::create(kerned, {})->size().width, set("Label")->size().width + 4 * 2, 0.1);
  TextConstraints constraints;
  constraints.line_spacing = 5;
  EXPECT_NEAR(set("a\nb", constraints)->size().height, 2 * 20.287 + 5, 0.01);
  constraints.line_spacing = 0;
  constraints.line_height_multiple = 1.5;
  EXPECT_NEAR(set("a\nb", constraints)->size().height, 3 * 20.287, 0.01);
}

TEST(TextLayouts, MixFontsOnOneBaseline) {
  AttributedText text("small large");
  text.set_font({6, 5}, Font::system(34));
  const auto layout = TextLayout::create(text, {});
  EXPECT_NEAR(layout->first_baseline(), Font::system(34).metrics().ascender, 0.001);
  EXPECT_NEAR(layout->size().height, Font::system(34).metrics().line_height, 0.001);
}

TEST(TextLayouts, GiveMonospacedDigitsOneWidth) {
  EXPECT_NEAR(set("1111", {}, Font::monospaced_digits(10))->size().width,
              set("8888", {}, Font::monospaced_digits(10))->size().width, 0.01);
  EXPECT_LT(set("1111", {}, Font::system(10))->size().width,
            set("8888", {}, Font::system(10))->size().width - 1);
}

TEST(TextLayouts, ShrinkToFitNoFurtherThanTheyMay) {
  const AttributedText text("A rather long title");
  const double natural = TextLayout::create(text, {})->size().width;
  const auto fitted = fit_text(text, one_line(natural * 0.8, LineBreak::TruncateTail), 0.5);
  EXPECT_FALSE(fitted->truncated());
  EXPECT_NEAR(fitted->font_scale(), 0.8, 0.03);
  const auto too_small = fit_text(text, one_line(natural * 0.3, LineBreak::TruncateTail), 0.5);
  EXPECT_TRUE(too_small->truncated());
  EXPECT_EQ(too_small->font_scale(), 0.5);
}

TEST(TextLayouts, AreSharedWhenAskedForAgain) {
  const AttributedText text("the same");
  EXPECT_EQ(layout_text(text, {}), layout_text(text, {}));
  EXPECT_NE(layout_text(text, {}), layout_text(AttributedText("another"), {}));
  AttributedText coloured = text;
  coloured.set_colour({0, 3}, Colour::rgb(1, 0, 0));
  EXPECT_NE(layout_text(text, {}), layout_text(coloured, {}));
}

TEST(TextLayouts, LeaveTheCacheWhenManyOthersCame) {
  const std::weak_ptr<const TextLayout> first = layout_text(AttributedText("first to go"), {});
  EXPECT_FALSE(first.expired());
  for (int i = 0; i < 600; ++i) (void)layout_text(AttributedText("number " + std::to_string(i)), {});
  EXPECT_TRUE(first.expired());
}

TEST(TextLayouts, SurviveOddConstraints) {
  for (const double width : {-5.0, 0.0, 1e-9, 1e12, std::nan("")}) {
    const auto layout = set(kWords, one_line(width, LineBreak::TruncateMiddle));
    EXPECT_EQ(layout->lines().size(), 1u);
  }
}

}  // namespace
}  // namespace wispen::graphics
