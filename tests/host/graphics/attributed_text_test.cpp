// tests/host/graphics/attributed_text_test.cpp: text, and what each part of it looks like.

#include "host/graphics/attributed_text.hpp"

#include <gtest/gtest.h>

namespace wispen::graphics {
namespace {

TEST(AttributedTexts, CountUtf16Units) {
  const AttributedText text("a\u00E9\u20AC\U0001F642b");
  EXPECT_EQ(text.length(), 6u);
  EXPECT_EQ(text.utf8_offset(3), 6u);
  EXPECT_EQ(text.utf8_offset(4), 6u);  // inside the pair
  EXPECT_EQ(text.utf8_offset(5), 10u);
  EXPECT_EQ(text.utf8_offset(99), 11u);
  EXPECT_EQ(text.index_of(10), 5u);
}

TEST(AttributedTexts, AreTheSameFromUtf8AndUtf16) {
  EXPECT_EQ(AttributedText(u"\u00FCber \U0001F642"), AttributedText("\u00FCber \U0001F642"));
}

TEST(AttributedTexts, ReplaceWhatIsNoTextOneForOne) {
  const AttributedText lone(std::u16string_view(u"a\xD800z"));
  EXPECT_EQ(lone.length(), 3u);
  EXPECT_EQ(lone.utf8(), "a\uFFFDz");
  EXPECT_EQ(AttributedText("a\xFFz").utf8(), "a\uFFFDz");
  EXPECT_EQ(AttributedText(std::string_view("a\0z", 3)).length(), 3u);
}

TEST(AttributedTexts, SplitAndJoinRunsAsTheyAreEdited) {
  AttributedText text("WISPEN");
  text.edit({0, 4}, [](TextAttributes& attributes) { attributes.underline = true; });
  ASSERT_EQ(text.runs().size(), 2u);
  EXPECT_EQ(text.runs()[0].range, (TextRange{0, 4}));
  EXPECT_EQ(text.runs()[1].range, (TextRange{4, 2}));
  text.edit({4, 100}, [](TextAttributes& attributes) { attributes.underline = true; });
  EXPECT_EQ(text.runs().size(), 1u);
  text.edit({50, 1}, [](TextAttributes& attributes) { attributes.kern = 1; });
  EXPECT_EQ(text.runs().size(), 1u);
}

TEST(AttributedTexts, CanBeAppendedToThemselves) {
  AttributedText text("ab");
  text.set_colour({1, 1}, Colour::rgb(1, 0, 0));
  text.append(text);
  EXPECT_EQ(text.utf8(), "abab");
  EXPECT_EQ(text.length(), 4u);
  EXPECT_EQ(text.runs().size(), 4u);
  EXPECT_EQ(text.runs()[3].range, (TextRange{3, 1}));
}

}  // namespace
}  // namespace wispen::graphics
