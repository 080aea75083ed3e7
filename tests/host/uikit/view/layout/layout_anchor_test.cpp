// tests/host/uikit/view/layout/layout_anchor_test.cpp: constraints by anchors, guides and items.

#include "tests/host/uikit/screen_fixture.hpp"
#include "tests/support/kept.hpp"

namespace wispen::uikit {
namespace {

class LayoutAnchorTest : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    outer_ = objc::make<UIView>();
    inner_ = objc::make<UIView>();
    show(outer_, {{0, 0}, {200, 100}});
    inner_.setTranslatesAutoresizingMaskIntoConstraints(false);
    outer_.addSubview(inner_);
    activate(inner_.leftAnchor().constraintEqualToAnchor(outer_.leftAnchor()));
    activate(inner_.topAnchor().constraintEqualToAnchor(outer_.topAnchor()));
    activate(inner_.heightAnchor().constraintEqualToConstant(10));
  }
  static NSLayoutConstraint activate(const NSLayoutConstraint& constraint, float priority = 1000) {
    constraint.setPriority(priority);
    constraint.setActive(true);
    return constraint;
  }
  /// The width under one more constraint, where it would otherwise be `wanted`.
  template <objc::FixedString Sel, class... Args>
  double width_under(double wanted, const Args&... arguments) {
    const NSLayoutConstraint wish = activate(inner_.widthAnchor().constraintEqualToConstant(wanted), 500);
    const auto limit = activate(
        objc::send<Sel, NSLayoutConstraint>(inner_.widthAnchor(), outer_.widthAnchor(), arguments...));
    outer_.setNeedsLayout();
    outer_.layoutIfNeeded();
    const double width = inner_.bounds().size.width;
    wish.setActive(false);
    limit.setActive(false);
    return width;
  }
  /// Where the label ends when that anchor of it is at the outer view's end.
  template <objc::FixedString Anchor>
  double bottom_with(const UILabel& label) {
    const auto aligned = activate(objc::send<"constraintEqualToAnchor:", NSLayoutConstraint>(
        objc::send<Anchor, NSObject>(label), outer_.bottomAnchor()));
    outer_.layoutIfNeeded();
    const double bottom = label.frame().origin.y + label.frame().size.height;
    aligned.setActive(false);
    return bottom;
  }

  UIView outer_;
  UIView inner_;
};

TEST_F(LayoutAnchorTest, RelatesToAnotherAnchorByShareAndDistance) {
  EXPECT_EQ((width_under<"constraintEqualToAnchor:multiplier:constant:">(1, 0.5, 7.0)), 107);
  EXPECT_EQ((width_under<"constraintGreaterThanOrEqualToAnchor:">(1)), 200);
  EXPECT_EQ((width_under<"constraintGreaterThanOrEqualToAnchor:multiplier:">(1, 0.5)), 100);
  EXPECT_EQ((width_under<"constraintGreaterThanOrEqualToAnchor:multiplier:constant:">(1, 0.5, 7.0)), 107);
  EXPECT_EQ((width_under<"constraintLessThanOrEqualToAnchor:">(999)), 200);
  EXPECT_EQ((width_under<"constraintLessThanOrEqualToAnchor:multiplier:">(999, 0.5)), 100);
  EXPECT_EQ((width_under<"constraintLessThanOrEqualToAnchor:multiplier:constant:">(999, 0.5, 7.0)), 107);
  EXPECT_EQ((width_under<"constraintLessThanOrEqualToAnchor:multiplier:constant:">(50, 0.5, 7.0)), 50);
}

TEST_F(LayoutAnchorTest, AlignsBaselines) {
  const UILabel label = objc::make<UILabel>();
  label.setText("Text"_ns);
  label.setTranslatesAutoresizingMaskIntoConstraints(false);
  outer_.addSubview(label);
  activate(label.leftAnchor().constraintEqualToAnchor(outer_.leftAnchor()));
  const double first = bottom_with<"firstBaselineAnchor">(label);
  EXPECT_GT(first, 100);  // what hangs below the line is below the view's end
  EXPECT_EQ(first, bottom_with<"lastBaselineAnchor">(label));
}

TEST_F(LayoutAnchorTest, AConstraintIsMadeOfItemsAndAttributesToo) {
  constexpr NSInteger kWidth = 7;
  constexpr NSInteger kLessOrEqual = -1;
  const auto constraint =
      objc::send<"constraintWithItem:attribute:relatedBy:toItem:attribute:multiplier:constant:",
                 NSLayoutConstraint>(objc::class_for<NSLayoutConstraint>(), inner_, kWidth, kLessOrEqual,
                                     outer_, kWidth, 0.25, 1.0);
  EXPECT_EQ((objc::send<"relation", NSInteger>(constraint)), kLessOrEqual);
  activate(inner_.widthAnchor().constraintEqualToConstant(300), 500);
  constraint.setActive(true);
  outer_.layoutIfNeeded();
  EXPECT_EQ(inner_.bounds().size.width, 51);
  const NSString name = "quarter"_ns;
  wispen::testing::expect_kept<"identifier", "setIdentifier:">(constraint, name);
}

TEST_F(LayoutAnchorTest, AGuideOccupiesRoomWithoutBeingAView) {
  const UILayoutGuide guide = objc::make<UILayoutGuide>();
  objc::send<"addLayoutGuide:">(outer_, guide);
  const auto width = objc::send<"widthAnchor", NSLayoutDimension>(guide);
  activate(objc::send<"leftAnchor", NSLayoutXAxisAnchor>(guide).constraintEqualToAnchor(outer_.leftAnchor()));
  activate(width.constraintEqualToConstant(20));
  const auto follows = activate(inner_.widthAnchor().constraintEqualToAnchor(width));
  outer_.layoutIfNeeded();
  EXPECT_EQ(inner_.bounds().size.width, 20);
  objc::send<"removeLayoutGuide:">(outer_, guide);
  EXPECT_FALSE(follows.isActive());
}

}  // namespace
}  // namespace wispen::uikit
