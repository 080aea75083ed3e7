// tests/host/uikit/handles_test.cpp: the handles that the bundle uses, against the host's classes.

#include "platform/UIKit.hpp"
#include "tests/support/host_fixture.hpp"

namespace {

class HandlesTest : public wispen::testing::HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    window_ = UIWindow::alloc().initWithFrame(CGRectMake(0, 0, 390, 844));
    window_.makeKeyAndVisible();
  }
  void TearDown() override {
    window_ = UIWindow();
    HostTest::TearDown();
  }
  static void wait(double seconds) { ASSERT_EQ(wispen_host_advance(seconds), 1); }
  UIWindow window_;
};

TEST_F(HandlesTest, PlacesAndDressesViews) {
  const UIView outer = UIView::alloc().initWithFrame(CGRectMake(0, 0, 100, 100));
  const UIView inner = objc::make<UIView>();
  outer.insertSubview(inner, 0);
  inner.setBounds(CGRectMake(0, 0, 20, 10));
  inner.setCenter({50, 20});
  EXPECT_EQ(inner.frame(), CGRectMake(40, 15, 20, 10));
  EXPECT_EQ(inner.convertPointToView({0, 0}, outer), (CGPoint{40, 15}));
  inner.setTag(7);
  EXPECT_EQ(outer.viewWithTag(7), inner);
  outer.setTintColor(UIColor::redColor());
  EXPECT_TRUE(inner.tintColor().isEqual(UIColor::redColor()));
  inner.layer().setCornerRadius(5);
  EXPECT_EQ(inner.layer().cornerRadius(), 5);
  inner.setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
  EXPECT_EQ(inner.autoresizingMask(), 18U);
  inner.setContentMode(UIViewContentMode::ScaleAspectFill);
  EXPECT_EQ(inner.contentMode(), UIViewContentMode::ScaleAspectFill);
  inner.removeFromSuperview();
  EXPECT_FALSE(inner.superview());
}

TEST_F(HandlesTest, GivesNothingForNil) {
  const UILabel none;
  EXPECT_EQ(none.frame(), CGRectZero);
  EXPECT_FALSE(none.text());
  none.setText("lost"_ns);
  const UINavigationItem item;
  item.navigationBar().setTintColor(UIColor::redColor());
  const auto anchor = none.topAnchor().constraintEqualToAnchor(none.bottomAnchor());
  anchor.setActive(true);
  EXPECT_FALSE(anchor);
}

TEST_F(HandlesTest, ConstrainsViewsByAnchors) {
  const UIView outer = UIView::alloc().initWithFrame(CGRectMake(0, 0, 200, 100));
  const UIView inner = objc::make<UIView>();
  inner.setTranslatesAutoresizingMaskIntoConstraints(false);
  outer.addSubview(inner);
  NSMutableArray all = NSMutableArray::array();
  all.addObject(inner.topAnchor().constraintEqualToAnchor(outer.topAnchor(), 4));
  all.addObject(inner.leadingAnchor().constraintEqualToAnchor(outer.leadingAnchor(), 15));
  all.addObject(inner.widthAnchor().constraintEqualToAnchorMultiplier(outer.widthAnchor(), 0.5));
  all.addObject(inner.heightAnchor().constraintEqualToConstant(30));
  NSLayoutConstraint::activateConstraints(all);
  NSLayoutConstraint::activateConstraints(NSArray(NSMutableArray::array()));
  outer.layoutIfNeeded();
  EXPECT_EQ(inner.frame(), CGRectMake(15, 4, 100, 30));
  EXPECT_TRUE(all.objectAtIndex<NSLayoutConstraint>(0).isActive());
}

TEST_F(HandlesTest, StacksASliderAndItsLabel) {
  const UISlider slider = objc::make<UISlider>();
  const UILabel label = objc::make<UILabel>();
  label.setText("0.5"_ns);
  NSMutableArray views = NSMutableArray::array();
  views.addObject(slider);
  views.addObject(label);
  const UIStackView stack = UIStackView::alloc().initWithArrangedSubviews(views);
  stack.setAlignment(UIStackViewAlignment::Center);
  stack.setAxis(UILayoutConstraintAxis::Horizontal);
  stack.setDistribution(UIStackViewDistribution::Fill);
  stack.setSpacing(5);
  stack.setFrame(CGRectMake(0, 0, 200, 40));
  stack.layoutIfNeeded();
  EXPECT_EQ(stack.arrangedSubviews().count(), 2U);
  EXPECT_EQ(slider.frame().origin.x, 0);
  EXPECT_DOUBLE_EQ(slider.frame().size.height, 31);
  EXPECT_DOUBLE_EQ(label.frame().origin.x, slider.frame().size.width + 5);
  EXPECT_NEAR(label.frame().origin.x + label.frame().size.width, 200, 0.01);
}

TEST_F(HandlesTest, SetsControlsAndTellsTheirTargets) {
  const UISlider slider = objc::make<UISlider>();
  slider.setMaximumValue(10);
  slider.setValue(4.5F, true);
  EXPECT_EQ(slider.value(), 4.5F);
  slider.setMinimumTrackTintColor(UIColor::redColor());
  EXPECT_TRUE(slider.minimumTrackTintColor().isEqual(UIColor::redColor()));
  const UISwitch toggle = objc::make<UISwitch>();
  toggle.setOn(true, false);
  EXPECT_TRUE(toggle.isOn());
  toggle.addTarget(toggle, objc::selector<"removeFromSuperview">(), UIControlEventValueChanged);
  window_.addSubview(toggle);
  toggle.sendActionsForControlEvents(UIControlEventTouchUpInside);
  EXPECT_TRUE(toggle.superview());
  toggle.sendActionsForControlEvents(UIControlEventValueChanged);
  EXPECT_FALSE(toggle.superview());
  const UIButton button = UIButton::buttonWithType(UIButtonType::System);
  button.setTitle("Go"_ns, UIControlStateNormal);
  EXPECT_EQ(button.currentTitle().utf8(), "Go");
  NSMutableArray titles = NSMutableArray::array();
  titles.addObject("a"_ns);
  titles.addObject("b"_ns);
  const UISegmentedControl segments = UISegmentedControl::alloc().initWithItems(titles);
  segments.setSelectedSegmentIndex(1);
  EXPECT_EQ(segments.selectedSegmentIndex(), 1);
  segments.setImage(UIImage::systemImageNamed("gear"_ns), 0);
  EXPECT_TRUE(segments.imageForSegmentAtIndex(0));
}

TEST_F(HandlesTest, AnimatesAndTellsWhenItIsOver) {
  const UIView view = UIView::alloc().initWithFrame(CGRectMake(0, 0, 10, 10));
  window_.addSubview(view);
  bool over = false;
  UIView::animateWithDuration(
      0.5, [view] { view.setAlpha(0.25); }, [&over](bool finished) { over = finished; });
  EXPECT_EQ(view.alpha(), 0.25);
  wait(0.25);
  EXPECT_FALSE(over);
  wait(0.3);
  EXPECT_TRUE(over);
}

TEST_F(HandlesTest, AsksByAnAlertWithAField) {
  const UIViewController page = objc::make<UIViewController>();
  window_.setRootViewController(page);
  const auto alert =
      UIAlertController::alertController("Enter Value"_ns, NSString(), UIAlertControllerStyle::Alert);
  alert.addTextField([](const UITextField& field) {
    field.setKeyboardType(UIKeyboardType::DecimalPad);
    field.setText("0.50"_ns);
    field.setTextColor(UIColor::orangeColor());
  });
  alert.addAction(
      UIAlertAction::actionWithTitle("Set"_ns, UIAlertActionStyle::Default, [](const UIAlertAction&) {}));
  alert.addAction(UIAlertAction::actionWithTitle("Cancel"_ns, UIAlertActionStyle::Cancel));
  page.presentViewController(alert, true);
  EXPECT_EQ(page.presentedViewController(), alert);
  EXPECT_EQ(alert.textFields().objectAtIndex<UITextField>(0).text().utf8(), "0.50");
  EXPECT_EQ(alert.textFields().objectAtIndex<UITextField>(0).keyboardType(), UIKeyboardType::DecimalPad);
  EXPECT_EQ(alert.actions().count(), 2U);
  wait(1);
  page.dismissViewController(false);
  wait(1);
  EXPECT_FALSE(page.presentedViewController());
}

TEST_F(HandlesTest, StacksPagesUnderABar) {
  const UIViewController root = objc::make<UIViewController>();
  const auto navigation = UINavigationController::alloc().initWithRootViewController(root);
  window_.setRootViewController(navigation);
  const UIViewController next = objc::make<UIViewController>();
  next.setTitle("Next"_ns);
  navigation.pushViewController(next, false);
  EXPECT_EQ(navigation.topViewController(), next);
  EXPECT_EQ(next.navigationController(), navigation);
  EXPECT_EQ(next.navigationItem().title().utf8(), "Next");
  EXPECT_EQ(next.navigationItem().navigationBar(), navigation.navigationBar());
  const UIView title = objc::make<UIView>();
  next.navigationItem().setTitleView(title);
  EXPECT_EQ(next.navigationItem().titleView(), title);
  EXPECT_EQ(title.viewControllerForAncestor(), navigation);
  EXPECT_EQ(navigation.popViewController(false), next);
  EXPECT_EQ(navigation.viewControllers().count(), 1U);
}

TEST_F(HandlesTest, FrostsWhatLiesBehind) {
  const auto effect = UIBlurEffect::effectWithStyle(UIBlurEffectStyle::SystemUltraThinMaterial);
  const UIVisualEffectView pane = UIVisualEffectView::alloc().initWithEffect(effect);
  EXPECT_EQ(pane.effect(), effect);
  EXPECT_TRUE(pane.contentView());
  const UIBackdropView backdrop =
      UIBackdropView::alloc().initWithFrame(CGRectZero, true, UIBackdropViewSettings::settingsForStyle(2));
  window_.insertSubview(backdrop, 0);
  EXPECT_EQ(backdrop.frame(), window_.bounds());
}

TEST_F(HandlesTest, FindsApplicationScreenAndDevice) {
  EXPECT_EQ(UIApplication::sharedApplication().keyWindow(), window_);
  EXPECT_EQ(UIApplication::sharedApplication().windows().objectAtIndex<UIWindow>(0), window_);
  EXPECT_EQ(UIScreen::mainScreen().bounds(), window_.bounds());
  EXPECT_EQ(UIDevice::currentDevice().userInterfaceIdiom(), UIUserInterfaceIdiom::Phone);
}

TEST_F(HandlesTest, RecognisesTaps) {
  const UIView view = UIView::alloc().initWithFrame(CGRectMake(0, 0, 10, 10));
  const auto tap =
      UITapGestureRecognizer::alloc().initWithTarget(view, objc::selector<"removeFromSuperview">());
  tap.setNumberOfTapsRequired(1);
  view.addGestureRecognizer(tap);
  EXPECT_EQ(tap.view(), view);
  EXPECT_EQ(tap.state(), UIGestureRecognizerState::Possible);
  view.removeGestureRecognizer(tap);
  EXPECT_FALSE(tap.view());
}

TEST_F(HandlesTest, ListsRows) {
  const UITableView table =
      UITableView::alloc().initWithFrame(window_.bounds(), UITableViewStyle::InsetGrouped);
  window_.addSubview(table);
  EXPECT_EQ(table.numberOfSections(), 0);
  const UIView header = UIView::alloc().initWithFrame(CGRectMake(0, 0, 100, 100));
  table.setTableHeaderView(header);
  table.layoutIfNeeded();
  EXPECT_EQ(header.frame(), CGRectMake(0, 0, 390, 100));
  EXPECT_FALSE(table.cellForRow(NSIndexPath::indexPathForRow(0, 0)));
}

}  // namespace
