// tests/host/uikit/containers/tables/scroll_view_test.cpp: content larger than its view.

#include "tests/host/uikit/screen_fixture.hpp"
#include "tests/support/kept.hpp"

namespace wispen::uikit {
namespace {

using wispen::testing::expect_kept;

class ScrollViewTest : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    scroll_ = objc::make<UIScrollView>();
    objc::send<"setContentInsetAdjustmentBehavior:">(scroll_, kNever);
    scroll_.setContentSize({100, 1000});
    show(scroll_, {{0, 0}, {100, 200}});
  }
  static constexpr NSInteger kNever = 2;
  UIScrollView scroll_;
};

TEST_F(ScrollViewTest, KeepsWhatItIsTold) {
  expect_kept<"bounces", "setBounces:">(scroll_, false);
  expect_kept<"alwaysBounceVertical", "setAlwaysBounceVertical:">(scroll_, true);
  expect_kept<"showsVerticalScrollIndicator", "setShowsVerticalScrollIndicator:">(scroll_, false);
  expect_kept<"keyboardDismissMode", "setKeyboardDismissMode:">(scroll_, NSInteger{1});
  expect_kept<"contentInsetAdjustmentBehavior", "setContentInsetAdjustmentBehavior:">(scroll_, NSInteger{0});
}

TEST_F(ScrollViewTest, DoesNotFollowAFingerWhileScrollingIsOff) {
  expect_kept<"isScrollEnabled", "setScrollEnabled:">(scroll_, false);
  press({50, 150});
  drag({50, 150}, {50, 50});
  EXPECT_EQ(scroll_.contentOffset().y, 0);
  lift({50, 50});
  objc::send<"setScrollEnabled:">(scroll_, true);
  press({50, 150});
  drag({50, 150}, {50, 50});
  EXPECT_GT(scroll_.contentOffset().y, 50);
  lift({50, 50});
}

TEST_F(ScrollViewTest, GoesOnWhenItIsThrown) {
  press({50, 150});
  drag({50, 150}, {50, 50});
  lift({50, 50});
  EXPECT_TRUE((objc::send<"isDecelerating", bool>(scroll_)));
  const double thrown = scroll_.contentOffset().y;
  wait(5000);
  EXPECT_FALSE((objc::send<"isDecelerating", bool>(scroll_)));
  EXPECT_GT(scroll_.contentOffset().y, thrown);
}

TEST_F(ScrollViewTest, WithoutBouncingTheEndIsTheEnd) {
  objc::send<"setBounces:">(scroll_, false);
  press({50, 50});
  drag({50, 50}, {50, 150});
  EXPECT_EQ(scroll_.contentOffset().y, 0);
  lift({50, 150});
}

}  // namespace
}  // namespace wispen::uikit
