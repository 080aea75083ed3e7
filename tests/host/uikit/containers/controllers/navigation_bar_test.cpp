// tests/host/uikit/containers/controllers/navigation_bar_test.cpp: the bar above the pages, and alerts.

#include "tests/host/uikit/screen_fixture.hpp"
#include "tests/support/kept.hpp"

namespace wispen::uikit {
namespace {

using wispen::testing::expect_kept;

class NavigationBarTest : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    for (UIViewController* const page : {&root_, &middle_, &top_}) *page = objc::make<UIViewController>();
    navigation_ = UINavigationController::alloc().initWithRootViewController(root_);
    window_.setRootViewController(navigation_);
    navigation_.pushViewController(middle_, false);
    navigation_.pushViewController(top_, false);
    window_.layoutIfNeeded();
  }
  void TearDown() override {
    window_.setRootViewController(UIViewController());
    navigation_ = UINavigationController();
    ScreenTest::TearDown();
  }
  UIViewController root_, middle_, top_;
  UINavigationController navigation_;
};

TEST_F(NavigationBarTest, KnowsItsItems) {
  const UINavigationBar bar = navigation_.navigationBar();
  EXPECT_EQ((objc::send<"backItem", NSObject>(bar)), middle_.navigationItem());
  expect_kept<"isTranslucent", "setTranslucent:">(bar, false);
  NSMutableDictionary attributes = NSMutableDictionary::dictionary();
  attributes.setObject(UIColor::redColor(), NSForegroundColorAttributeName);
  objc::send<"setTitleTextAttributes:">(bar, attributes);
  EXPECT_TRUE((objc::send<"titleTextAttributes", NSDictionary>(bar)).isEqual(attributes));
}

TEST_F(NavigationBarTest, IsHiddenWithTheRoomThatItTook) {
  const double below = navigation_.navigationBar().frame().size.height;
  EXPECT_GT(below, 0);
  objc::send<"setNavigationBarHidden:">(navigation_, true);
  EXPECT_TRUE((objc::send<"isNavigationBarHidden", bool>(navigation_)));
  window_.layoutIfNeeded();
  EXPECT_TRUE(navigation_.navigationBar().isHidden());
  objc::send<"setNavigationBarHidden:animated:">(navigation_, false, true);
  EXPECT_FALSE((objc::send<"isNavigationBarHidden", bool>(navigation_)));
}

TEST_F(NavigationBarTest, GoesBackSeveralPagesAtOnce) {
  EXPECT_EQ((objc::send<"visibleViewController", UIViewController>(navigation_)), top_);
  EXPECT_TRUE((objc::send<"interactivePopGestureRecognizer", NSObject>(navigation_)));
  const auto gone = objc::send<"popToViewController:animated:", NSArray>(navigation_, root_, false);
  EXPECT_EQ(gone.count(), 2U);
  EXPECT_EQ(navigation_.topViewController(), root_);
  NSMutableArray all = NSMutableArray::array();
  all.addObject(root_);
  all.addObject(top_);
  objc::send<"setViewControllers:animated:">(navigation_, all, false);
  EXPECT_EQ(navigation_.topViewController(), top_);
  EXPECT_EQ((objc::send<"popToRootViewControllerAnimated:", NSArray>(navigation_, false)).count(), 1U);
  EXPECT_EQ(navigation_.topViewController(), root_);
}

TEST_F(NavigationBarTest, CoversContentThatHasScrolledUnderItAlsoWhenItsPageComesBack) {
  objc::send<"popToRootViewControllerAnimated:">(navigation_, false);
  const UIScrollView scroll = objc::make<UIScrollView>();
  scroll.setBackgroundColor(UIColor::redColor());
  scroll.setFrame(root_.view().bounds());
  scroll.setContentSize({scroll.bounds().size.width, 3000});
  root_.view().addSubview(scroll);
  window_.layoutIfNeeded();
  constexpr std::uint32_t kRed = 0xFFFF0000;
  const Point in_bar{2, navigation_.navigationBar().frame().size.height - 4};
  EXPECT_EQ(pixel(in_bar), kRed);
  scroll.setContentOffset({0, 300});
  EXPECT_NE(pixel(in_bar), kRed);
  middle_.view().setBackgroundColor(UIColor::greenColor());
  navigation_.pushViewController(middle_, true);
  wait(100);
  EXPECT_NE(pixel(in_bar), kRed) << "while the page leaves";
  wait(1000);
  EXPECT_EQ(pixel(in_bar), 0xFF00FF00U) << "nothing has scrolled here";
  navigation_.popViewController(true);
  wait(1000);
  EXPECT_NE(pixel(in_bar), kRed) << "back again";
}

}  // namespace
}  // namespace wispen::uikit
