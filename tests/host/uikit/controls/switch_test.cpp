// tests/host/uikit/controls/switch_test.cpp: switches, by finger and by key.

#include "tests/host/uikit/screen_fixture.hpp"

namespace wispen::uikit {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SwitchTest : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    switch_ = objc::make<UISwitch>();
    hear_all(switch_);
    show(switch_, {{100, 100}, {51, 31}});
  }
  void TearDown() override {
    switch_ = UISwitch();
    ScreenTest::TearDown();
  }
  std::uint32_t track_pixel(bool left) const {
    return pixel({Rect(switch_.frame()).min_x() + (left ? 8 : 43), Rect(switch_.frame()).mid_y()});
  }
  UISwitch switch_;
};

TEST_F(SwitchTest, HasOneSize) {
  const auto odd = UISwitch::alloc().initWithFrame(Rect{{10, 20}, {200, 5}});
  EXPECT_EQ(odd.frame(), (Rect{{10, 20}, {51, 31}}));
  objc::send<"setFrame:">(odd, Rect{{1, 2}, {3, 4}});
  EXPECT_EQ(odd.frame(), (Rect{{1, 2}, {51, 31}}));
  EXPECT_EQ(odd.intrinsicContentSize(), (Size{51, 31}));
}

TEST_F(SwitchTest, TogglesByATapAndTellsBeforeTheTouchEnds) {
  tap(middle(switch_));
  EXPECT_TRUE(switch_.isOn());
  EXPECT_THAT(listener_.take(), ElementsAre("down", "changed", "up"));
  tap(middle(switch_));
  EXPECT_FALSE(switch_.isOn());
}

TEST_F(SwitchTest, TellsNobodyWhenCodeSetsIt) {
  switch_.setOn(true, true);
  switch_.setOn(false, false);
  objc::send<"setOn:">(switch_, true);
  EXPECT_TRUE(switch_.isOn());
  EXPECT_THAT(listener_.take(), IsEmpty());
}

TEST_F(SwitchTest, FollowsADragAndKeepsWhatItEndsOn) {
  const Point start = middle(switch_);
  press(start);
  drag(start, {start.x + 30, start.y});
  EXPECT_FALSE(switch_.isOn());  // nothing is settled before the finger lifts
  lift({start.x + 30, start.y});
  EXPECT_TRUE(switch_.isOn());
  EXPECT_THAT(listener_.take(), ElementsAre("down", "changed", "up"));
  press(start);
  drag(start, {start.x + 30, start.y});  // it is on already
  lift({start.x + 30, start.y});
  EXPECT_TRUE(switch_.isOn());
  EXPECT_THAT(listener_.take(), ElementsAre("down", "up"));
}

TEST_F(SwitchTest, StaysWhenTheFingerIsTakenAway) {
  const Point start = middle(switch_);
  press(start);
  drag(start, {start.x + 30, start.y});
  session().touches().cancel();
  EXPECT_FALSE(switch_.isOn());
  wait(500);
  EXPECT_EQ(track_pixel(true), 0xFFFFFFFFU);  // the thumb is back on the left
}

TEST_F(SwitchTest, IsToggledBySpaceAndReturn) {
  key(KeyCode::Tab);
  type(" ");
  EXPECT_TRUE(switch_.isOn());
  key(KeyCode::Return);
  EXPECT_FALSE(switch_.isOn());
  EXPECT_THAT(listener_.take(), ElementsAre("changed", "changed"));
}

TEST_F(SwitchTest, DoesNothingWhileDisabled) {
  switch_.setEnabled(false);
  tap(middle(switch_));
  EXPECT_FALSE(switch_.isOn());
  EXPECT_THAT(listener_.take(), IsEmpty());
}

TEST_F(SwitchTest, ShowsItsColours) {
  EXPECT_EQ(track_pixel(false), 0xFFE9E9EAU);
  switch_.setOn(true, false);
  EXPECT_EQ(track_pixel(true), 0xFF34C759U);
  switch_.setOnTintColor(UIColor::purpleColor());
  switch_.setThumbTintColor(UIColor::blackColor());
  EXPECT_EQ(track_pixel(true), 0xFF800080U);
  EXPECT_EQ(track_pixel(false), 0xFF000000U);
}

TEST_F(SwitchTest, SlidesOverTime) {
  switch_.setOn(true, true);
  wait(125);
  const std::uint32_t half_way = track_pixel(true);
  EXPECT_NE(half_way, 0xFF34C759U);
  wait(200);
  EXPECT_EQ(track_pixel(true), 0xFF34C759U);
}

TEST_F(SwitchTest, StandsTheOtherWayRoundFromRightToLeft) {
  set_right_to_left(true);
  window_.layoutIfNeeded();
  switch_.setOn(true, false);
  EXPECT_EQ(track_pixel(false), 0xFF34C759U);
  EXPECT_EQ(track_pixel(true), 0xFFFFFFFFU);
}

}  // namespace
}  // namespace wispen::uikit
