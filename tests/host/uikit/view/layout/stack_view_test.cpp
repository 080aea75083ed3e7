// tests/host/uikit/view/layout/stack_view_test.cpp: gaps, margins and baselines of stacks.

#include "tests/host/uikit/screen_fixture.hpp"
#include "tests/support/kept.hpp"

namespace wispen::uikit {
namespace {

using wispen::testing::expect_kept;

class StackViewTest : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    stack_ = objc::make<UIStackView>();
    for (int i = 0; i < 3; ++i) {
      const UIView view = objc::make<UIView>();
      view.widthAnchor().constraintEqualToConstant(20).setActive(true);
      views_.push_back(view);
      objc::send<"addArrangedSubview:">(stack_, view);
    }
    show(stack_, {{0, 0}, {72, 40}});
  }
  double left(std::size_t index) const { return views_[index].frame().origin.x; }

  UIStackView stack_;
  std::vector<UIView> views_;
};

TEST_F(StackViewTest, AGapOfItsOwnFollowsAView) {
  constexpr double kUnset = 3.4028234663852886e38;
  EXPECT_EQ((objc::send<"customSpacingAfterView:", CGFloat>(stack_, views_[0])), kUnset);
  objc::send<"setCustomSpacing:afterView:">(stack_, 12.0, views_[0]);
  EXPECT_EQ((objc::send<"customSpacingAfterView:", CGFloat>(stack_, views_[0])), 12);
  window_.layoutIfNeeded();
  EXPECT_EQ(left(1) - left(0), 32);
  EXPECT_EQ(left(2) - left(1), 20);
}

TEST_F(StackViewTest, KeepsToItsMarginsWhereItIsTold) {
  stack_.setFrame({{0, 0}, {75, 40}});
  objc::send<"setLayoutMargins:">(stack_, UIEdgeInsets{0, 15, 0, 0});
  expect_kept<"isLayoutMarginsRelativeArrangement", "setLayoutMarginsRelativeArrangement:">(stack_, true);
  window_.layoutIfNeeded();
  EXPECT_EQ(left(0), 15);
  expect_kept<"isBaselineRelativeArrangement", "setBaselineRelativeArrangement:">(stack_, true);
}

TEST_F(StackViewTest, ASwitchKeepsItsSizeUnderConstraints) {
  const UISwitch control = objc::make<UISwitch>();
  control.setTranslatesAutoresizingMaskIntoConstraints(false);
  window_.addSubview(control);
  control.widthAnchor().constraintEqualToConstant(200).setActive(true);
  control.heightAnchor().constraintEqualToConstant(90).setActive(true);
  control.leftAnchor().constraintEqualToAnchor(window_.leftAnchor()).setActive(true);
  control.topAnchor().constraintEqualToAnchor(window_.topAnchor()).setActive(true);
  window_.layoutIfNeeded();
  EXPECT_EQ(control.bounds().size, (CGSize{51, 31}));
}

}  // namespace
}  // namespace wispen::uikit
