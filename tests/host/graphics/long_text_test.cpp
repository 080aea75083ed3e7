// tests/host/graphics/long_text_test.cpp: words that are longer than many lines.
#include <gtest/gtest.h>

#include <string>

#include "host/graphics/text_layout.hpp"

namespace wispen::graphics {
namespace {

using namespace std::string_literals;

std::shared_ptr<const TextLayout> set(const std::string& text, TextConstraints constraints = {}) {
  if (constraints.width == kUnbounded) constraints.width = 120;
  return TextLayout::create(AttributedText(text, TextAttributes{}), constraints);
}

std::string repeated(const std::string& part, std::size_t count) {
  std::string all;
  for (std::size_t i = 0; i < count; ++i) all += part;
  return all;
}

void expect_whole(const TextLayout& layout, const TextLayout& first_lines) {
  std::size_t next = 0;
  for (const TextLine& line : layout.lines()) {
    EXPECT_EQ(line.range.location, next) << "no letter is lost or shown twice";
    EXPECT_LE(line.frame.width(), 120.1);
    next = line.range.location + line.range.length;
  }
  EXPECT_EQ(next, layout.text().length());
  // The last line of the shorter text ends where that does.
  ASSERT_GT(layout.lines().size(), first_lines.lines().size());
  for (std::size_t i = 0; i + 1 < first_lines.lines().size(); ++i) {
    EXPECT_EQ(layout.lines()[i].range.length, first_lines.lines()[i].range.length) << "line " << i;
    EXPECT_EQ(layout.lines()[i].frame, first_lines.lines()[i].frame) << "line " << i;
  }
}

TEST(LongText, AWordOfThousandsOfLettersIsBrokenAsAShortOneIs) {
  // Five hundred letters are set in one go, these in stretches.
  expect_whole(*set(repeated("abcdefghij", 400)), *set(repeated("abcdefghij", 50)));
  const std::string accents = "\u00E4e\u0301\U0001F642";
  expect_whole(*set(repeated(accents, 400)), *set(repeated(accents, 30)));
}

TEST(LongText, ItsShorterWordsAreBrokenBetween) {
  const std::string text = "one two three " + std::string(3000, 'x') + " four five";
  const auto layout = set(text);
  std::string seen;
  for (const TextLine& line : layout->lines()) seen += text.substr(line.range.location, line.range.length);
  EXPECT_EQ(seen, text);
  EXPECT_EQ(text.substr(layout->lines().back().range.location), " four five"s.substr(1));
}

TEST(LongText, ALongWordRunsTheWayOfItsParagraph) {
  const std::string arabic = repeated("\u0627\u0644\u0625\u0639\u062F\u0627\u062F", 200);
  const auto layout = set(arabic + "\nlatin\n" + arabic + repeated("latin", 200));
  bool seen = false;
  for (const TextLine& line : layout->lines()) {
    if (line.range.length != 5 || line.right_to_left) continue;
    seen = true;
  }
  EXPECT_TRUE(seen) << "each paragraph has its own direction";
  EXPECT_TRUE(layout->lines().front().right_to_left);
  EXPECT_TRUE(layout->lines().back().right_to_left) << "as its paragraph began";
}

TEST(LongText, ParagraphsAndTheRoomAfterThemAreKept) {
  TextConstraints constraints;
  constraints.paragraph_spacing = 50;
  const std::string word(2000, 'x');
  const double one = set(word, constraints)->size().height;
  EXPECT_NEAR(set(word + "\n" + word, constraints)->size().height, 2 * one + 50, 0.01);
  const auto ends_in_break = set(word + "\n", constraints);
  EXPECT_EQ(ends_in_break->lines().back().range.length, 0u) << "a line break begins a line";
}

TEST(LongText, IsTruncatedInItsLastLineWhereverThatIs) {
  TextConstraints constraints;
  constraints.maximum_lines = 40;
  constraints.line_break = LineBreak::TruncateTail;
  const auto layout = set(std::string(5000, 'x'), constraints);
  EXPECT_EQ(layout->lines().size(), 40u);
  EXPECT_TRUE(layout->truncated());
  EXPECT_EQ(layout->lines().back().range.location + layout->lines().back().range.length, 5000u);
  EXPECT_LE(layout->lines().back().frame.width(), 120.1);
}

TEST(LongText, AStretchThatFitsOneLineIsMadeLonger) {
  TextConstraints constraints;
  constraints.width = 30000;
  const auto layout = set(std::string(9000, 'i'), constraints);
  ASSERT_GT(layout->lines().size(), 1u);
  EXPECT_GT(layout->lines().front().range.length, 5000u);
}

}  // namespace
}  // namespace wispen::graphics
