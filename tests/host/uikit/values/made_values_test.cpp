// tests/host/uikit/values/made_values_test.cpp: the further ways to make colours, fonts, images and symbols.

#include <gtest/gtest.h>

#include "platform/UIKit.hpp"
#include "tests/support/host_fixture.hpp"

namespace wispen::testing {
namespace {

class MadeValuesTest : public HostTest {};

TEST_F(MadeValuesTest, ColoursByInitialisers) {
  const UIColor violet =
      objc::allocate<UIColor>().initialize<"initWithHue:saturation:brightness:alpha:">(0.75, 1.0, 1.0, 1.0);
  EXPECT_TRUE(violet.isEqual(UIColor::colorWithHue(0.75, 1, 1, 1)));
  const objc::Block<UIColor(NSObject)> provider([](const NSObject& traits) {
    const bool dark = objc::send<"userInterfaceStyle", NSInteger>(traits) == 2;
    return dark ? UIColor::whiteColor() : UIColor::blackColor();
  });
  const UIColor dynamic = objc::allocate<UIColor>().initialize<"initWithDynamicProvider:">(provider);
  double white = -1;
  EXPECT_TRUE(dynamic.getWhite(&white, nullptr));
  EXPECT_EQ(white, 0);
}

TEST_F(MadeValuesTest, FontsKnowTheSystemsSizes) {
  const objc::ClassRef fonts = objc::class_for<UIFont>();
  EXPECT_EQ((objc::send<"labelFontSize", CGFloat>(fonts)), 17);
  EXPECT_EQ((objc::send<"buttonFontSize", CGFloat>(fonts)), 18);
  EXPECT_EQ((objc::send<"systemFontSize", CGFloat>(fonts)), 14);
  EXPECT_EQ((objc::send<"smallSystemFontSize", CGFloat>(fonts)), 12);
}

TEST_F(MadeValuesTest, ImagesByInitialisersOfPixelsAndData) {
  const UIImage gear = UIImage::systemImageNamed("gear"_ns);
  const UIImage plain = objc::allocate<UIImage>().initialize<"initWithCGImage:">(gear.CGImage());
  EXPECT_EQ(plain.scale(), 1);
  constexpr NSInteger kLeft = 2;
  const UIImage turned =
      objc::allocate<UIImage>().initialize<"initWithCGImage:scale:orientation:">(gear.CGImage(), 2.0, kLeft);
  EXPECT_EQ(turned.size().width, plain.size().height / 2);
  const NSData png = UIImagePNGRepresentation(plain);
  const UIImage read = objc::allocate<UIImage>().initialize<"initWithData:scale:">(png, 3.0);
  EXPECT_EQ(read.scale(), 3);
  EXPECT_FALSE((objc::allocate<UIImage>().initialize<"initWithData:scale:">(NSData(), 3.0)));
}

TEST_F(MadeValuesTest, SymbolsKeepTheirConfiguration) {
  const objc::ClassRef configurations = objc::class_for<UIImageSymbolConfiguration>();
  constexpr NSInteger kLarge = 3;
  const auto titled = objc::send<"configurationWithTextStyle:scale:", UIImageSymbolConfiguration>(
      configurations, UIFontTextStyleTitle1, kLarge);
  const auto open = objc::send<"unspecifiedConfiguration", UIImageSymbolConfiguration>(configurations);
  EXPECT_FALSE(open.isEqual(titled));
  const UIImage gear = UIImage::systemImageNamed("gear"_ns, titled);
  EXPECT_TRUE((objc::send<"symbolConfiguration", NSObject>(gear)).isEqual(titled));
  EXPECT_TRUE((objc::send<"configuration", NSObject>(gear)).isEqual(titled));
  const auto small = UIImageSymbolConfiguration::configurationWithPointSize(8);
  const auto shrunk = objc::send<"imageByApplyingSymbolConfiguration:", UIImage>(gear, small);
  EXPECT_LT(shrunk.size().width, gear.size().width);
}

}  // namespace
}  // namespace wispen::testing
