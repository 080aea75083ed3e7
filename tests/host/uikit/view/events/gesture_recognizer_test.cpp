// tests/host/uikit/view/events/gesture_recognizer_test.cpp: what recognizers keep, and layers and backdrops.

#include "tests/host/uikit/screen_fixture.hpp"
#include "tests/support/kept.hpp"

namespace wispen::uikit {
namespace {

using wispen::testing::expect_kept;

class GestureRecognizerTest : public ScreenTest {};

TEST_F(GestureRecognizerTest, KeepsWhatItWaitsFor) {
  const auto tap = objc::make<UITapGestureRecognizer>();
  expect_kept<"numberOfTouchesRequired", "setNumberOfTouchesRequired:">(tap, NSUInteger{2});
  expect_kept<"cancelsTouchesInView", "setCancelsTouchesInView:">(tap, false);
  const auto press = objc::make<UILongPressGestureRecognizer>();
  expect_kept<"minimumPressDuration", "setMinimumPressDuration:">(press, 1.5);
  const auto edge = objc::make<UIScreenEdgePanGestureRecognizer>();
  expect_kept<"edges", "setEdges:">(edge, NSUInteger{2});
}

TEST_F(GestureRecognizerTest, IsTakenBackToItsBeginning) {
  const auto tap = objc::make<UITapGestureRecognizer>();
  objc::send<"setState:">(tap, NSInteger{5});
  EXPECT_EQ(tap.state(), UIGestureRecognizerState::Failed);
  objc::send<"reset">(tap);
  EXPECT_EQ(tap.state(), UIGestureRecognizerState::Possible);
}

TEST_F(GestureRecognizerTest, ALongPressWaitsAsLongAsItSays) {
  const auto recognizer = objc::allocate<UILongPressGestureRecognizer>().initialize<"initWithTarget:action:">(
      listener_, objc::selector<"plain">());
  objc::send<"setMinimumPressDuration:">(recognizer, 1.5);
  window_.addGestureRecognizer(recognizer);
  ScreenTest::press({50, 50});
  wait(1000);
  EXPECT_TRUE(listener_.heard().empty());
  wait(600);
  EXPECT_FALSE(listener_.heard().empty());
  lift({50, 50});
}

}  // namespace
}  // namespace wispen::uikit
