// tests/host/uikit/controls/activity_indicator_test.cpp: the wheel that says to wait.

#include "tests/host/uikit/screen_fixture.hpp"
#include "tests/support/kept.hpp"

namespace wispen::uikit {
namespace {

using wispen::testing::expect_kept;

class IndicatorPropertiesTest : public ScreenTest {};

TEST_F(IndicatorPropertiesTest, AnIndicatorKeepsItsStyleAndHidesWhenItRests) {
  const auto spinner = objc::make<UIActivityIndicatorView>();
  const UIColor red = UIColor::redColor();
  expect_kept<"activityIndicatorViewStyle", "setActivityIndicatorViewStyle:">(spinner, NSInteger{101});
  expect_kept<"color", "setColor:">(spinner, red);
  EXPECT_TRUE((objc::send<"hidesWhenStopped", bool>(spinner)));
  EXPECT_TRUE(spinner.isHidden());
  spinner.startAnimating();
  EXPECT_FALSE(spinner.isHidden());
}

}  // namespace
}  // namespace wispen::uikit
