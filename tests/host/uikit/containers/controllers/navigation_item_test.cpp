// tests/host/uikit/containers/controllers/navigation_item_test.cpp: what stands in a bar.

#include "tests/host/uikit/screen_fixture.hpp"
#include "tests/support/kept.hpp"

namespace wispen::uikit {
namespace {

using wispen::testing::expect_kept;

class NavigationItemTest : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    item_ = objc::allocate<UINavigationItem>().initialize<"initWithTitle:">("Page"_ns);
  }
  UIBarButtonItem button(const char* title) const {
    return objc::allocate<UIBarButtonItem>().initialize<"initWithTitle:style:target:action:">(
        NSString(title), NSInteger{0}, listener_, objc::selector<"plain">());
  }
  UINavigationItem item_;
};

TEST_F(NavigationItemTest, ABarButtonKeepsWhatItIsMadeOf) {
  const UIBarButtonItem titled = button("Done");
  EXPECT_EQ(titled.title().utf8(), "Done");
  const UIImage gear = UIImage::systemImageNamed("gear"_ns);
  const UIBarButtonItem pictured =
      objc::allocate<UIBarButtonItem>().initialize<"initWithImage:style:target:action:">(
          gear, NSInteger{2}, listener_, objc::selector<"plain">());
  EXPECT_EQ((objc::send<"image", UIImage>(pictured)), gear);
  EXPECT_EQ((objc::send<"style", NSInteger>(pictured)), 2);
  const UIView view = objc::make<UIView>();
  const UIBarButtonItem custom = objc::allocate<UIBarButtonItem>().initialize<"initWithCustomView:">(view);
  EXPECT_EQ((objc::send<"customView", UIView>(custom)), view);
  constexpr NSInteger kCancel = 1;
  const UIBarButtonItem system =
      objc::allocate<UIBarButtonItem>().initialize<"initWithBarButtonSystemItem:target:action:">(
          kCancel, listener_, objc::selector<"plain">());
  EXPECT_EQ(system.title().utf8(), "Cancel");
}

TEST_F(NavigationItemTest, TheFirstItemOfASideIsItsItem) {
  const UIBarButtonItem one = button("One");
  const UIBarButtonItem two = button("Two");
  expect_kept<"leftBarButtonItem", "setLeftBarButtonItem:">(item_, one);
  expect_kept<"rightBarButtonItem", "setRightBarButtonItem:">(item_, two);
  NSMutableArray both = NSMutableArray::array();
  both.addObject(two);
  both.addObject(one);
  objc::send<"setLeftBarButtonItems:">(item_, both);
  EXPECT_EQ((objc::send<"leftBarButtonItem", UIBarButtonItem>(item_)), two);
  EXPECT_EQ((objc::send<"leftBarButtonItems", NSArray>(item_)).count(), 2U);
  objc::send<"setRightBarButtonItems:">(item_, both);
  EXPECT_EQ((objc::send<"rightBarButtonItems", NSArray>(item_)).count(), 2U);
  objc::send<"setLeftBarButtonItem:animated:">(item_, one, true);
  EXPECT_EQ((objc::send<"leftBarButtonItems", NSArray>(item_)).count(), 1U);
  objc::send<"setRightBarButtonItem:animated:">(item_, UIBarButtonItem(), false);
  EXPECT_EQ((objc::send<"rightBarButtonItems", NSArray>(item_)).count(), 0U);
}

TEST_F(NavigationItemTest, SaysHowTheWayBackLooks) {
  expect_kept<"hidesBackButton", "setHidesBackButton:">(item_, true);
  objc::send<"setHidesBackButton:animated:">(item_, false, true);
  EXPECT_FALSE((objc::send<"hidesBackButton", bool>(item_)));
  const NSString settings = "Settings"_ns;
  expect_kept<"backButtonTitle", "setBackButtonTitle:">(item_, settings);
  expect_kept<"largeTitleDisplayMode", "setLargeTitleDisplayMode:">(item_, NSInteger{2});
}

}  // namespace
}  // namespace wispen::uikit
