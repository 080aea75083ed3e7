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

}  // namespace
}  // namespace wispen::uikit
