// tests/host/uikit/values/font_test.cpp: UIFont by its selectors.

#include "host/uikit/values/font.hpp"

#include "host/uikit/values/display_settings.hpp"
#include "tests/support/host_fixture.hpp"

namespace wispen::testing {
namespace {

class FontTest : public HostTest {};

TEST_F(FontTest, IsTheSystemsOfASizeAndWeight) {
  EXPECT_EQ(UIFont::systemFontOfSize(15).pointSize(), 15);
  EXPECT_EQ(uikit::font_of(UIFont::systemFontOfSize(15, UIFontWeightSemibold)),
            graphics::Font::system(15, graphics::font_weight::kSemibold));
  EXPECT_EQ(uikit::font_of(UIFont::boldSystemFontOfSize(20)), graphics::Font::bold_system(20));
  EXPECT_TRUE(uikit::font_of(UIFont::italicSystemFontOfSize(20)).italic());
  EXPECT_TRUE(uikit::font_of(UIFont::monospacedDigitSystemFontOfSize(12, UIFontWeightRegular))
                  .has_monospaced_digits());
}

TEST_F(FontTest, OfNoSizeHasTheSystemsSize) { EXPECT_EQ(UIFont::systemFontOfSize(0).pointSize(), 17); }

TEST_F(FontTest, IsFoundByNameOrNil) {
  EXPECT_EQ(UIFont::fontWithName("HelveticaNeue-Light"_ns, 12).fontName().utf8(), "HelveticaNeue-Light");
  EXPECT_EQ(UIFont::fontWithName("HelveticaNeue"_ns, 12).familyName().utf8(), "Helvetica Neue");
  EXPECT_FALSE(UIFont::fontWithName("NoSuchFont"_ns, 12));
  EXPECT_FALSE(UIFont::fontWithName(NSString(), 12));
}

TEST_F(FontTest, TellsItsMeasures) {
  const UIFont font = UIFont::systemFontOfSize(17);
  const auto metrics = graphics::Font::system(17).metrics();
  EXPECT_EQ(font.ascender(), metrics.ascender);
  EXPECT_EQ(font.descender(), metrics.descender);
  EXPECT_LT(font.descender(), 0);
  EXPECT_EQ(font.lineHeight(), metrics.line_height);
  EXPECT_EQ(font.capHeight(), metrics.cap_height);
  EXPECT_EQ(font.xHeight(), metrics.x_height);
  EXPECT_EQ(font.leading(), metrics.leading);
}

TEST_F(FontTest, OfATextStyleFollowsTheUsersTextSize) {
  EXPECT_EQ(UIFont::preferredFontForTextStyle(UIFontTextStyleBody).pointSize(), 17);
  ASSERT_EQ(wispen_host_set_look("text-size", "XXXL"), 1);
  EXPECT_EQ(UIFont::preferredFontForTextStyle(UIFontTextStyleBody).pointSize(), 23);
  EXPECT_EQ(UIFont::preferredFontForTextStyle(UIFontTextStyleLargeTitle).pointSize(), 40);
}

TEST_F(FontTest, KnowsEveryTextStyleByItsName) {
  const auto size = [](const NSString& style) {
    return UIFont::preferredFontForTextStyle(style).pointSize();
  };
  EXPECT_EQ(size(UIFontTextStyleLargeTitle), 34);
  EXPECT_EQ(size(UIFontTextStyleTitle1), 28);
  EXPECT_EQ(size(UIFontTextStyleTitle2), 22);
  EXPECT_EQ(size(UIFontTextStyleTitle3), 20);
  EXPECT_EQ(size(UIFontTextStyleHeadline), 17);
  EXPECT_EQ(size(UIFontTextStyleCallout), 16);
  EXPECT_EQ(size(UIFontTextStyleSubheadline), 15);
  EXPECT_EQ(size(UIFontTextStyleFootnote), 13);
  EXPECT_EQ(size(UIFontTextStyleCaption1), 12);
  EXPECT_EQ(size(UIFontTextStyleCaption2), 11);
  EXPECT_EQ(UIFontTextStyleSubheadline.utf8(), "UICTFontTextStyleSubhead");
}

TEST_F(FontTest, IsEqualByWhatItLooksLike) {
  const UIFont font = UIFont::systemFontOfSize(17);
  EXPECT_TRUE(font.isEqual(UIFont::systemFontOfSize(12).fontWithSize(17)));
  EXPECT_EQ(font.hash(), UIFont::systemFontOfSize(17).hash());
  EXPECT_FALSE(font.isEqual(UIFont::boldSystemFontOfSize(17)));
  EXPECT_FALSE(font.isEqual(NSObject()));
}

TEST_F(FontTest, ExportsThePlatformsWeights) {
  EXPECT_EQ(UIFontWeightUltraLight, -0.8);
  EXPECT_EQ(UIFontWeightRegular, 0);
  EXPECT_EQ(UIFontWeightMedium, 0.23);
  EXPECT_EQ(UIFontWeightBlack, 0.62);
}

TEST_F(FontTest, OfNothingIsTheSystems) { EXPECT_EQ(uikit::font_of(UIFont()), graphics::Font()); }

}  // namespace
}  // namespace wispen::testing
