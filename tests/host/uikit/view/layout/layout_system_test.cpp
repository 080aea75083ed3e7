// tests/host/uikit/view/layout/layout_system_test.cpp: anchors and stacks through messages.

#include "host/uikit/controls/label.hpp"
#include "host/uikit/view/view.hpp"
#include "tests/support/host_fixture.hpp"

namespace wispen::uikit {
namespace {

class LayoutTest : public wispen::testing::HostTest {
 protected:
  template <objc::FixedString Anchor>
  static NSObject constrain(const UIView& view, const UIView& to, double constant) {
    const NSObject constraint = objc::send<"constraintEqualToAnchor:constant:", NSObject>(
        objc::send<Anchor, NSObject>(view), objc::send<Anchor, NSObject>(to), constant);
    objc::send<"setActive:">(constraint, true);
    return constraint;
  }
};

TEST_F(LayoutTest, PlacesAViewByItsAnchorsAndFollowsTheRoot) {
  const UIView outer = UIView::alloc().initWithFrame(Rect{{0, 0}, {300, 200}});
  const UIView inner = objc::make<UIView>();
  inner.setTranslatesAutoresizingMaskIntoConstraints(false);
  outer.addSubview(inner);
  constrain<"topAnchor">(inner, outer, 4);
  constrain<"leadingAnchor">(inner, outer, 15);
  constrain<"trailingAnchor">(inner, outer, -15);
  const NSObject bottom = constrain<"bottomAnchor">(inner, outer, -4);
  outer.layoutIfNeeded();
  EXPECT_EQ(inner.frame(), (Rect{{15, 4}, {270, 192}}));
  outer.setFrame(Rect{{0, 0}, {400, 100}});
  outer.layoutIfNeeded();
  EXPECT_EQ(inner.frame(), (Rect{{15, 4}, {370, 92}}));
  objc::send<"setConstant:">(bottom, -14.0);
  outer.layoutIfNeeded();
  EXPECT_EQ(inner.frame(), (Rect{{15, 4}, {370, 82}}));
  objc::send<"setActive:">(bottom, false);
  inner.removeFromSuperview();
  const bool active = objc::send<"isActive", bool>(bottom);
  EXPECT_FALSE(active);
}

TEST_F(LayoutTest, RaisesForViewsWithoutAViewAroundThem) {
  const UIView one = objc::make<UIView>();
  const UIView other = objc::make<UIView>();
  EXPECT_ANY_THROW(constrain<"topAnchor">(one, other, 0));
}

TEST_F(LayoutTest, ArrangesAStackAndClosesTheGapOfAHiddenView) {
  const UIView first = objc::make<UIView>();
  const UIView second = objc::make<UIView>();
  NSMutableArray views = NSMutableArray::array();
  views.addObject(first);
  views.addObject(second);
  const UIView stack = objc::Allocated<UIView>(
                           objc::abi::call<objc::abi::id>(
                               reinterpret_cast<objc::abi::id>(objc::class_named<"UIStackView">().borrow()),
                               objc::selector<"alloc">().borrow()))
                           .initialize<"initWithArrangedSubviews:">(NSArray(views));
  objc::send<"setDistribution:">(stack, NSInteger{1});
  objc::send<"setSpacing:">(stack, 10.0);
  stack.setFrame(Rect{{0, 0}, {210, 40}});
  stack.layoutIfNeeded();
  EXPECT_EQ(first.frame(), (Rect{{0, 0}, {100, 40}}));
  EXPECT_EQ(second.frame(), (Rect{{110, 0}, {100, 40}}));
  second.setHidden(true);
  stack.layoutIfNeeded();
  EXPECT_EQ(first.frame(), (Rect{{0, 0}, {210, 40}}));
}

TEST_F(LayoutTest, MeasuresALabelAndGivesItItsSize) {
  const UIView outer = UIView::alloc().initWithFrame(Rect{{0, 0}, {300, 200}});
  const UILabel label = objc::make<UILabel>();
  label.setText("Some text"_ns);
  label.setTranslatesAutoresizingMaskIntoConstraints(false);
  outer.addSubview(label);
  constrain<"topAnchor">(label, outer, 0);
  constrain<"leadingAnchor">(label, outer, 0);
  outer.layoutIfNeeded();
  const Size fitting = label.sizeThatFits({});
  EXPECT_GT(fitting.width, 20);
  EXPECT_NEAR(label.frame().size.width, fitting.width, 0.5);
  EXPECT_NEAR(label.frame().size.height, fitting.height, 0.5);
}

}  // namespace
}  // namespace wispen::uikit
