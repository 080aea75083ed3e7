// tests/host/uikit/view/application_test.cpp: the application, the screen, the device, and their traits.

#include "tests/host/uikit/screen_fixture.hpp"
#include "tests/support/kept.hpp"

namespace wispen::uikit {
namespace {

using ::testing::ElementsAre;

class ApplicationTest : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    app_ = UIApplication::sharedApplication();
  }
  UIApplication app_;
};

TEST_F(ApplicationTest, IsActiveAndReadsAsItsLanguageDoes) {
  EXPECT_EQ((objc::send<"applicationState", NSInteger>(app_)), 0);
  EXPECT_EQ((objc::send<"userInterfaceLayoutDirection", NSInteger>(app_)), 0);
  set_right_to_left(true);
  EXPECT_EQ((objc::send<"userInterfaceLayoutDirection", NSInteger>(app_)), 1);
  set_right_to_left(false);
}

TEST_F(ApplicationTest, OpensAddressesByNotingThem) {
  const auto url =
      objc::send<"URLWithString:", NSObject>(objc::class_named<"NSURL">(), "https://example.org"_ns);
  EXPECT_TRUE((objc::send<"canOpenURL:", bool>(app_, url)));
  EXPECT_TRUE((objc::send<"openURL:", bool>(app_, url)));
  EXPECT_FALSE((objc::send<"openURL:", bool>(app_, NSObject())));
  bool opened = false;
  objc::send<"openURL:options:completionHandler:">(
      app_, url, NSDictionary(), objc::Block<void(bool)>([&](bool done) { opened = done; }));
  EXPECT_FALSE(opened);
  wait(1);
  EXPECT_TRUE(opened);
}

TEST_F(ApplicationTest, SendsAnActionToItsTargetOrUpTheResponders) {
  const auto send = [&](objc::Selector action, const NSObject& target, const NSObject& sender) {
    return objc::send<"sendAction:to:from:forEvent:", bool>(app_, action, target, sender, NSObject());
  };
  EXPECT_TRUE(send(objc::selector<"down:">(), listener_, window_));
  EXPECT_THAT(listener_.take(), ElementsAre("down"));
  EXPECT_FALSE(send(objc::selector<"nobodyAnswersThis:">(), NSObject(), window_));
}

TEST_F(ApplicationTest, TheScreenAndTheDeviceSayWhatTheyAre) {
  const UIScreen screen = UIScreen::mainScreen();
  EXPECT_EQ((objc::send<"nativeScale", CGFloat>(screen)), screen.scale());
  const auto native = objc::send<"nativeBounds", CGRect>(screen);
  EXPECT_EQ(native.size.width, screen.bounds().size.width * screen.scale());
  EXPECT_TRUE((objc::send<"traitCollection", NSObject>(screen)));
  const auto device = objc::send<"currentDevice", NSObject>(objc::class_named<"UIDevice">());
  EXPECT_EQ((objc::send<"systemName", NSString>(device)).utf8(), "iOS");
  EXPECT_NE((objc::send<"model", NSString>(device)).utf8(), "");
}

TEST_F(ApplicationTest, TraitsAreThoseOfTheDisplay) {
  const objc::ClassRef collections = objc::class_named<"UITraitCollection">();
  const auto traits = objc::send<"currentTraitCollection", NSObject>(collections);
  EXPECT_EQ((objc::send<"displayScale", CGFloat>(traits)), UIScreen::mainScreen().scale());
  EXPECT_EQ((objc::send<"layoutDirection", NSInteger>(traits)), 0);
  EXPECT_EQ((objc::send<"preferredContentSizeCategory", NSString>(traits)).utf8(),
            "UICTContentSizeCategoryL");
  EXPECT_EQ((objc::send<"verticalSizeClass", NSInteger>(traits)), 2);
  const auto dark = objc::send<"traitCollectionWithUserInterfaceStyle:", NSObject>(collections, NSInteger{2});
  EXPECT_TRUE((objc::send<"hasDifferentColorAppearanceComparedToTraitCollection:", bool>(traits, dark)));
  EXPECT_FALSE((objc::send<"hasDifferentColorAppearanceComparedToTraitCollection:", bool>(traits, traits)));
  const auto pad = objc::send<"traitCollectionWithUserInterfaceIdiom:", NSObject>(collections, NSInteger{1});
  EXPECT_EQ((objc::send<"userInterfaceIdiom", NSInteger>(pad)), 1);
}

TEST_F(ApplicationTest, TheKeyWindowChangesByMessage) {
  const UIWindow other = objc::make<UIWindow>();
  objc::send<"makeKeyWindow">(other);
  EXPECT_TRUE(other.isKeyWindow());
  EXPECT_FALSE(window_.isKeyWindow());
  objc::send<"sendEvent:">(other, NSObject());  // the dispatcher finds the way by itself
  window_.makeKeyAndVisible();
}

TEST_F(ApplicationTest, AHiddenWindowLeavesTheKeyboardAndComesBackWhole) {
  window_.setHidden(true);
  EXPECT_FALSE(window_.isKeyWindow());
  EXPECT_NE(pixel({10, 10}), 0xFFFFFFFFU);
  window_.setHidden(false);
  EXPECT_EQ(pixel({10, 10}), 0xFFFFFFFFU);
}

}  // namespace
}  // namespace wispen::uikit
