// tests/host/uikit/view/window_test.cpp: windows that come, go and have the keyboard.

#include "tests/host/uikit/screen_fixture.hpp"

namespace wispen::uikit {
namespace {

class WindowTest : public ScreenTest {};

TEST_F(WindowTest, TheKeyWindowChangesByMessage) {
  const UIWindow other = objc::make<UIWindow>();
  objc::send<"makeKeyWindow">(other);
  EXPECT_TRUE(other.isKeyWindow());
  EXPECT_FALSE(window_.isKeyWindow());
  objc::send<"sendEvent:">(other, NSObject());  // the dispatcher finds the way by itself
  window_.makeKeyAndVisible();
}

TEST_F(WindowTest, AHiddenWindowLeavesTheKeyboardAndComesBackWhole) {
  window_.setHidden(true);
  EXPECT_FALSE(window_.isKeyWindow());
  EXPECT_NE(pixel({10, 10}), 0xFFFFFFFFU);
  window_.setHidden(false);
  EXPECT_EQ(pixel({10, 10}), 0xFFFFFFFFU);
}

}  // namespace
}  // namespace wispen::uikit
