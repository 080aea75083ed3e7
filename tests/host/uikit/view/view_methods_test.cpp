// tests/host/uikit/view/view_methods_test.cpp: UIView's further methods, as a page sends them.

#include "tests/host/uikit/screen_fixture.hpp"
#include "tests/support/kept.hpp"

namespace wispen::uikit {
namespace {

using wispen::testing::expect_kept;

class ViewMethodsTest : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    view_ = objc::make<UIView>();
    show(view_, {{10, 20}, {100, 50}});
  }
  UIView view_;
};

TEST_F(ViewMethodsTest, PutsSubviewsAboveAndBelowOthers) {
  const UIView middle = objc::make<UIView>();
  const UIView above = objc::make<UIView>();
  const UIView below = objc::make<UIView>();
  view_.addSubview(middle);
  objc::send<"insertSubview:aboveSubview:">(view_, above, middle);
  objc::send<"insertSubview:belowSubview:">(view_, below, middle);
  const NSArray all = view_.subviews();
  EXPECT_EQ(all.objectAtIndex<UIView>(0), below);
  EXPECT_EQ(all.objectAtIndex<UIView>(1), middle);
  EXPECT_EQ(all.objectAtIndex<UIView>(2), above);
}

TEST_F(ViewMethodsTest, ConvertsFromOtherViews) {
  const UIView inner = objc::make<UIView>();
  inner.setFrame({{5, 6}, {10, 10}});
  view_.addSubview(inner);
  EXPECT_EQ((objc::send<"convertPoint:fromView:", CGPoint>(view_, CGPoint{1, 1}, inner)), (CGPoint{6, 7}));
  EXPECT_EQ((objc::send<"convertRect:fromView:", CGRect>(view_, CGRectMake(0, 0, 2, 3), inner)),
            CGRectMake(5, 6, 2, 3));
}

TEST_F(ViewMethodsTest, KeepsWhatItIsTold) {
  expect_kept<"isOpaque", "setOpaque:">(view_, false);
  expect_kept<"autoresizesSubviews", "setAutoresizesSubviews:">(view_, false);
  expect_kept<"layoutMargins", "setLayoutMargins:">(view_, UIEdgeInsets{1, 2, 3, 4});
  EXPECT_TRUE((objc::send<"traitCollection", NSObject>(view_)));
  EXPECT_EQ((objc::send<"semanticContentAttribute", NSInteger>(view_)), 0);
  objc::send<"safeAreaInsetsDidChange">(view_);  // for a view to override
  EXPECT_EQ((objc::send<"_viewDelegate", NSObject>(view_)), NSObject());
}

TEST_F(ViewMethodsTest, SubviewsKeepTheirSizeWhereTheyAreNotResized) {
  const UIView inner = objc::make<UIView>();
  inner.setFrame({{0, 0}, {100, 50}});
  inner.setAutoresizingMask(UIViewAutoresizingFlexibleWidth);
  view_.addSubview(inner);
  objc::send<"setAutoresizesSubviews:">(view_, false);
  view_.setFrame({{10, 20}, {200, 50}});
  window_.layoutIfNeeded();
  EXPECT_EQ(inner.frame().size.width, 100);
}

TEST_F(ViewMethodsTest, ListsItsRecognizers) {
  const UITapGestureRecognizer tap = objc::make<UITapGestureRecognizer>();
  view_.addGestureRecognizer(tap);
  EXPECT_EQ((objc::send<"gestureRecognizers", NSArray>(view_)).objectAtIndex<NSObject>(0), tap);
}

TEST_F(ViewMethodsTest, TakesConstraintsByItself) {
  const UIView inner = objc::make<UIView>();
  inner.setTranslatesAutoresizingMaskIntoConstraints(false);
  view_.addSubview(inner);
  const NSLayoutConstraint width = inner.widthAnchor().constraintEqualToConstant(40);
  objc::send<"addConstraint:">(inner, width);
  EXPECT_TRUE(width.isActive());
  objc::send<"removeConstraint:">(inner, width);
  EXPECT_FALSE(width.isActive());
  NSMutableArray all = NSMutableArray::array();
  all.addObject(width);
  all.addObject(inner.heightAnchor().constraintEqualToConstant(30));
  objc::send<"addConstraints:">(inner, all);
  window_.layoutIfNeeded();
  EXPECT_EQ(inner.bounds().size, (CGSize{40, 30}));
  objc::send<"removeConstraints:">(inner, all);
  EXPECT_FALSE(width.isActive());
}

TEST_F(ViewMethodsTest, SaysHowMuchItResistsBeingSqueezed) {
  constexpr NSInteger kVertical = 1;
  EXPECT_EQ((objc::send<"contentHuggingPriorityForAxis:", float>(view_, kVertical)), 250);
  EXPECT_EQ((objc::send<"contentCompressionResistancePriorityForAxis:", float>(view_, kVertical)), 750);
}

TEST_F(ViewMethodsTest, AnimatesWithOptionsAndSprings) {
  const objc::ClassRef views = objc::class_for<UIView>();
  bool finished = false;
  objc::send<"animateWithDuration:delay:options:animations:completion:">(
      views, 0.2, 0.1, NSUInteger{0}, objc::Block<void()>([&] { view_.setAlpha(0.5); }),
      objc::Block<void(bool)>([&](bool whole) { finished = whole; }));
  wait(250);
  EXPECT_FALSE(finished);
  wait(200);
  EXPECT_TRUE(finished);
  EXPECT_EQ(view_.alpha(), 0.5);
  bool settled = false;
  objc::send<
      "animateWithDuration:delay:usingSpringWithDamping:initialSpringVelocity:options:animations:"
      "completion:">(views, 0.3, 0.0, 0.6, 0.0, NSUInteger{0},
                     objc::Block<void()>([&] { view_.setAlpha(1); }),
                     objc::Block<void(bool)>([&](bool whole) { settled = whole; }));
  wait(2000);
  EXPECT_TRUE(settled);
}

TEST_F(ViewMethodsTest, AnimationsCanBeSwitchedOff) {
  const objc::ClassRef views = objc::class_for<UIView>();
  EXPECT_TRUE((objc::send<"areAnimationsEnabled", bool>(views)));
  objc::send<"setAnimationsEnabled:">(views, false);
  EXPECT_FALSE((objc::send<"areAnimationsEnabled", bool>(views)));
  bool finished = false;
  UIView::animateWithDuration(
      1, [&] { view_.setAlpha(0); }, [&](bool) { finished = true; });
  EXPECT_EQ(view_.alpha(), 0);
  wait(1);
  EXPECT_TRUE(finished) << "not after the second that it would take";
  objc::send<"setAnimationsEnabled:">(views, true);
}

}  // namespace
}  // namespace wispen::uikit
