// tests/host/uikit/view/screen_test.cpp: the screen and the device.

#include "tests/host/uikit/screen_fixture.hpp"

namespace wispen::uikit {
namespace {

class ScreenInfoTest : public ScreenTest {};

TEST_F(ScreenInfoTest, TheScreenAndTheDeviceSayWhatTheyAre) {
  const UIScreen screen = UIScreen::mainScreen();
  EXPECT_EQ((objc::send<"nativeScale", CGFloat>(screen)), screen.scale());
  const auto native = objc::send<"nativeBounds", CGRect>(screen);
  EXPECT_EQ(native.size.width, screen.bounds().size.width * screen.scale());
  EXPECT_TRUE((objc::send<"traitCollection", NSObject>(screen)));
  const auto device = objc::send<"currentDevice", NSObject>(objc::class_named<"UIDevice">());
  EXPECT_EQ((objc::send<"systemName", NSString>(device)).utf8(), "iOS");
  EXPECT_NE((objc::send<"model", NSString>(device)).utf8(), "");
}

}  // namespace
}  // namespace wispen::uikit
