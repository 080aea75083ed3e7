// tests/colour/color_category_test.cpp: UIColor(Wispen) by its selectors.

#include <string>

#include "platform/UIKit.hpp"
#include "tests/support/host_fixture.hpp"

namespace wispen::testing {
namespace {

class ColorCategoryTest : public HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    load_shipped_bundle();
  }
  static UIColor from_hex(const NSString& text) {
    return objc::send<"wispRGBAColorFromHexString:", UIColor>(objc::class_for<UIColor>(), text);
  }
  static std::string hex(const UIColor& color) {
    return objc::send<"wispHexStringFromColor:", NSString>(objc::class_for<UIColor>(), color).utf8();
  }
  static bool is_dark(const UIColor& color) { return objc::send<"wispIsDarkColor", bool>(color); }
};

TEST_F(ColorCategoryTest, NilAndTheEmptyStringAreThePlatformsBlack) {
  EXPECT_EQ(from_hex(NSString()), UIColor::blackColor());
  EXPECT_EQ(from_hex(""_ns), UIColor::blackColor());
}

TEST_F(ColorCategoryTest, ReadsAColourInTheRgbSpace) {
  EXPECT_TRUE(from_hex("#FF8000:0.5"_ns).isEqual(UIColor::colorWithRed(1, 128 / 255.0, 0, 0.5)));
  EXPECT_EQ(CGColorGetNumberOfComponents(from_hex("#"_ns).CGColor()), 4u);
}

TEST_F(ColorCategoryTest, ReadsTextThatIsNotAscii) {
  EXPECT_EQ(hex(from_hex("FF0000\xF0\x9F\x8E\x88"_ns)), "#FF0000");
  EXPECT_EQ(hex(from_hex("\xC2\xA0"
                         "00FF00"_ns)),
            "#00FF00");
}

TEST_F(ColorCategoryTest, ReadsAVeryLongText) {
  const std::string digits(100'000, '0');
  EXPECT_EQ(hex(from_hex(NSString((digits + "123456").c_str()))), "#123456");
}

TEST_F(ColorCategoryTest, WritesWhatItReads) {
  for (const char* const text : {"#000000", "#FFFFFF", "#7F8001", "#0A0B0C"}) {
    EXPECT_EQ(hex(from_hex(NSString(text))), text);
  }
}

TEST_F(ColorCategoryTest, DoesNotClampOnPurpose) {
  EXPECT_EQ(hex(UIColor::colorWithRed(1.2, -1, 0, 1)), "#132FFFFFF0100");
}

TEST_F(ColorCategoryTest, ConvertsAGreyFirst) {
  EXPECT_EQ(hex(UIColor::whiteColor()), "#FFFFFF");
  EXPECT_EQ(hex(UIColor::blackColor()), "#000000");
  EXPECT_EQ(hex(UIColor::colorWithWhite(0.5, 0.1)), "#7F7F7F");
  EXPECT_TRUE(is_dark(UIColor::blackColor()));
  EXPECT_FALSE(is_dark(UIColor::whiteColor()));
  EXPECT_FALSE(is_dark(UIColor::colorWithWhite(0.5, 1)));
}

TEST_F(ColorCategoryTest, SeesAColourThatDiffersInTheDisplaysAppearance) {
  EXPECT_EQ(hex(UIColor::systemBackgroundColor()), "#FFFFFF");
}

TEST_F(ColorCategoryTest, IsDarkBelowHalfTheLuminance) {
  EXPECT_TRUE(is_dark(UIColor::blueColor()));
  EXPECT_FALSE(is_dark(UIColor::greenColor()));
  EXPECT_FALSE(is_dark(UIColor::colorWithRed(0.5, 0.5, 0.5, 1)));
}

TEST_F(ColorCategoryTest, DoesNothingForNil) {
  EXPECT_FALSE(is_dark(UIColor()));
  EXPECT_EQ(hex(UIColor()), "#000000");
}

}  // namespace
}  // namespace wispen::testing
