// tests/host/uikit/controls/control_test.cpp: which actions come, in which order.

#include "host/uikit/controls/control.hpp"

#include "tests/host/uikit/screen_fixture.hpp"

namespace wispen::uikit {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ControlTest : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    control_ = UIControl::alloc().initWithFrame(Rect{});
    show(control_, {{100, 100}, {80, 40}});
  }
  void TearDown() override {
    control_ = UIControl();
    ScreenTest::TearDown();
  }
  UIControl control_;
};

TEST_F(ControlTest, SendsToTargetsInTheOrderOfRegistration) {
  control_.addTarget(listener_, objc::selector<"second:">(), UIControlEventTouchUpInside);
  control_.addTarget(listener_, objc::selector<"first:">(), UIControlEventTouchUpInside);
  control_.addTarget(listener_, objc::selector<"plain">(), UIControlEventTouchUpInside);
  tap(middle(control_));
  EXPECT_THAT(listener_.take(), ElementsAre("second", "first", "plain"));
}

TEST_F(ControlTest, SendsOnlyWhatTheMaskNames) {
  control_.addTarget(listener_, objc::selector<"first:">(),
                     UIControlEventValueChanged | UIControlEventTouchDown);
  control_.sendActionsForControlEvents(UIControlEventTouchUpInside);
  EXPECT_THAT(listener_.take(), IsEmpty());
  control_.sendActionsForControlEvents(UIControlEventValueChanged);
  EXPECT_THAT(listener_.take(), ElementsAre("first"));
  // One message for one call, though both bits are asked for.
  control_.sendActionsForControlEvents(UIControlEventValueChanged | UIControlEventTouchDown);
  EXPECT_THAT(listener_.take(), ElementsAre("first"));
}

TEST_F(ControlTest, JoinsTheEventsOfTheSamePairInItsPlace) {
  control_.addTarget(listener_, objc::selector<"first:">(), UIControlEventTouchDown);
  control_.addTarget(listener_, objc::selector<"second:">(), UIControlEventTouchUpInside);
  control_.addTarget(listener_, objc::selector<"first:">(), UIControlEventTouchUpInside);
  control_.sendActionsForControlEvents(UIControlEventTouchUpInside);
  EXPECT_THAT(listener_.take(), ElementsAre("first", "second"));
  const auto all = objc::send<"allControlEvents", NSUInteger>(control_);
  EXPECT_EQ(all, UIControlEventTouchDown | UIControlEventTouchUpInside);
}

TEST_F(ControlTest, RemovesByTargetByActionAndByEvent) {
  control_.addTarget(listener_, objc::selector<"first:">(),
                     UIControlEventTouchDown | UIControlEventTouchUpInside);
  control_.addTarget(listener_, objc::selector<"second:">(), UIControlEventTouchDown);
  control_.removeTarget(listener_, objc::selector<"first:">(), UIControlEventTouchDown);
  control_.sendActionsForControlEvents(UIControlEventTouchDown);
  EXPECT_THAT(listener_.take(), ElementsAre("second"));
  control_.removeTarget(NSObject(), objc::Selector(), ~NSUInteger{0});
  control_.sendActionsForControlEvents(UIControlEventTouchDown | UIControlEventTouchUpInside);
  EXPECT_THAT(listener_.take(), IsEmpty());
}

TEST_F(ControlTest, DoesNotKeepItsTargetAlive) {
  ActionListener gone = objc::make<ActionListener>();
  control_.addTarget(gone, objc::selector<"first:">(), UIControlEventTouchDown);
  gone = ActionListener();
  control_.sendActionsForControlEvents(UIControlEventTouchDown);  // nobody is there, and nothing happens
}

TEST_F(ControlTest, FollowsAFingerInsideAndOutside) {
  hear_all(control_);
  control_.addTarget(listener_, objc::selector<"exit:">(), UIControlEventTouchDragExit);
  control_.addTarget(listener_, objc::selector<"enter:">(), UIControlEventTouchDragEnter);
  press({140, 120});
  EXPECT_TRUE(control_.isHighlighted());
  session().touches().moved({140, 160});  // a little beside it still counts
  EXPECT_TRUE(control_.isHighlighted());
  session().touches().moved({140, 300});
  EXPECT_FALSE(control_.isHighlighted());
  session().touches().moved({140, 120});
  EXPECT_TRUE(control_.isHighlighted());
  session().touches().moved({140, 300});
  lift({140, 300});
  EXPECT_THAT(listener_.take(), ElementsAre("down", "exit", "enter", "exit", "outside"));
}

TEST_F(ControlTest, ComesToNothingWhenTheSystemTakesTheFinger) {
  hear_all(control_);
  press(middle(control_));
  session().touches().cancel();
  EXPECT_FALSE(control_.isHighlighted());
  EXPECT_THAT(listener_.take(), ElementsAre("down", "cancel"));
}

TEST_F(ControlTest, IsDeafWhileDisabled) {
  hear_all(control_);
  control_.setEnabled(false);
  tap(middle(control_));
  focus(control_);
  key(KeyCode::Return);
  EXPECT_THAT(listener_.take(), IsEmpty());
  EXPECT_EQ(control_.state(), UIControlStateDisabled);
  EXPECT_THAT(focusable_views(), IsEmpty());
}

TEST_F(ControlTest, TellsRepeatedTaps) {
  control_.addTarget(listener_, objc::selector<"second:">(), UIControlEventTouchDownRepeat);
  tap(middle(control_));
  tap(middle(control_));
  EXPECT_THAT(listener_.take(), ElementsAre("second"));
  wait(1000);
  tap(middle(control_));
  EXPECT_THAT(listener_.take(), IsEmpty());
}

TEST_F(ControlTest, SendsUpTheChainWithoutATarget) {
  control_.addTarget(NSObject(), objc::selector<"removeFromSuperview">(), UIControlEventTouchUpInside);
  tap(middle(control_));
  EXPECT_FALSE(control_.superview());  // the control itself is the first on the chain that answers
}

TEST_F(ControlTest, IsPressedBySpaceAndReturnOnceItHasTheFocus) {
  hear_all(control_);
  EXPECT_TRUE(key(KeyCode::Tab));
  EXPECT_EQ(focused_view(), control_);
  EXPECT_TRUE(type(" "));
  EXPECT_TRUE(key(KeyCode::Return));
  EXPECT_THAT(listener_.take(), ElementsAre("down", "up", "down", "up"));
}

TEST_F(ControlTest, ShowsWhereTheFocusIsUntilAFingerComes) {
  const Point beside{Rect(control_.frame()).min_x() - 2, Rect(control_.frame()).mid_y()};
  EXPECT_EQ(pixel(beside), 0xFFFFFFFFU);
  key(KeyCode::Tab);
  EXPECT_EQ(pixel(beside), 0xFF007AFFU);
  tap({10, 700});
  EXPECT_FALSE(focused_view());
  EXPECT_EQ(pixel(beside), 0xFFFFFFFFU);
  key(KeyCode::Tab);  // the only one that there is
  EXPECT_EQ(focused_view(), control_);
}

TEST_F(ControlTest, MovesTheFocusForwardBackAndRound) {
  const UIControl below = UIControl::alloc().initWithFrame(Rect{});
  show(below, {{100, 300}, {80, 40}});
  key(KeyCode::Tab);
  EXPECT_EQ(focused_view(), control_);
  key(KeyCode::Tab);
  EXPECT_EQ(focused_view(), below);
  key(KeyCode::Tab);
  EXPECT_EQ(focused_view(), control_);
  key(KeyCode::Tab, true);
  EXPECT_EQ(focused_view(), below);
}

class ButtonTest : public ScreenTest {};

TEST_F(ButtonTest, ShowsTheTitleOfItsStateAndTheNormalOneWithout) {
  const UIButton button = UIButton::buttonWithType(UIButtonType::System);
  button.setTitle("Plain"_ns, UIControlStateNormal);
  objc::send<"setTitle:forState:">(button, "Off"_ns, UIControlStateDisabled);
  EXPECT_EQ(button.currentTitle().utf8(), "Plain");
  button.setEnabled(false);
  EXPECT_EQ(button.currentTitle().utf8(), "Off");
  button.setEnabled(true);
  button.setHighlighted(true);
  EXPECT_EQ(button.currentTitle().utf8(), "Plain");
}

TEST_F(ButtonTest, TakesTheTouchesOfItsPartsAndFadesWhilePressed) {
  const UIButton button = UIButton::buttonWithType(UIButtonType::System);
  button.setTitle("Press"_ns, UIControlStateNormal);
  hear_all(button);
  show(button, {{50, 50}, {100, 44}});
  press(middle(button));
  EXPECT_LT(button.titleLabel().alpha(), 0.5);
  lift(middle(button));
  EXPECT_EQ(button.titleLabel().alpha(), 1);
  EXPECT_THAT(listener_.take(), ElementsAre("down", "up"));
}

}  // namespace
}  // namespace wispen::uikit
