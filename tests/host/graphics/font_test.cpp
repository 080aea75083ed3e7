// tests/host/graphics/font_test.cpp: which font, how large, and the measures that the platform gives for it.

#include "host/graphics/font.hpp"

#include <gtest/gtest.h>

#include "host/graphics/text_engine.hpp"
#include "host/graphics/text_style.hpp"

namespace wispen::graphics {
namespace {

TEST(Fonts, AreAllInstalled) {
  const auto check = TextEngine::check_fonts();
  EXPECT_TRUE(check.ok()) << check.error().message;
}

TEST(Fonts, OfTheSystemHaveThePlatformsMeasures) {
  const FontMetrics metrics = Font::system(17).metrics();
  EXPECT_NEAR(metrics.line_height, 20.287, 0.001);
  EXPECT_NEAR(metrics.ascender, 16.187, 0.001);
  EXPECT_NEAR(metrics.descender, -4.1, 0.001);
  EXPECT_NEAR(metrics.cap_height, 11.978, 0.001);
}

TEST(Fonts, WithoutASizeGetTheSystemsSize) {
  EXPECT_EQ(Font::system(0).size(), 17);
  EXPECT_EQ(Font::system(-3).size(), 17);
}

TEST(Fonts, AreFoundByTheirFacesName) {
  const auto light = Font::named("HelveticaNeue-Light", 34);
  ASSERT_TRUE(light);
  EXPECT_EQ(light->weight(), font_weight::kLight);
  EXPECT_EQ(light->face_name(), "HelveticaNeue-Light");
  EXPECT_EQ(Font::named("HelveticaNeue-BoldItalic", 12)->face_name(), "HelveticaNeue-BoldItalic");
  EXPECT_EQ(Font::named("Helvetica Neue", 12)->face_name(), "HelveticaNeue");
  EXPECT_FALSE(Font::named("HelveticaNeue-Heavyish", 12));
  EXPECT_FALSE(Font::named("HelveticaNeueX", 12));
  EXPECT_FALSE(Font::named("Zapfino", 12));
  EXPECT_FALSE(Font::named("", 12));
}

TEST(TextStyles, FollowTheUsersTextSize) {
  EXPECT_EQ(text_style_size(TextStyle::Body), 17);
  EXPECT_EQ(text_style_size(TextStyle::Body, ContentSize::ExtraSmall), 14);
  EXPECT_EQ(text_style_size(TextStyle::Body, ContentSize::AccessibilityExtraExtraExtraLarge), 53);
  EXPECT_EQ(text_style_font(TextStyle::Headline).weight(), font_weight::kSemibold);
  EXPECT_NEAR(scaled_for_content_size(44, TextStyle::Body, ContentSize::AccessibilityMedium), 72.47, 0.01);
}

TEST(TextStyles, NeverShrinkWhenTheTextSizeGrows) {
  for (int style = 0; style <= static_cast<int>(TextStyle::Caption2); ++style) {
    for (int size = 1; size < 12; ++size) {
      EXPECT_LE(text_style_size(static_cast<TextStyle>(style), static_cast<ContentSize>(size - 1)),
                text_style_size(static_cast<TextStyle>(style), static_cast<ContentSize>(size)));
    }
  }
}

TEST(TextStyles, TextSizesHaveNames) {
  for (int size = 0; size < 12; ++size) {
    const auto content_size = static_cast<ContentSize>(size);
    EXPECT_EQ(content_size_from_name(content_size_name(content_size)), content_size);
  }
  EXPECT_FALSE(content_size_from_name("huge"));
}

}  // namespace
}  // namespace wispen::graphics
