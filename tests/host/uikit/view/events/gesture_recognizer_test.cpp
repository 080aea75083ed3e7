// tests/host/uikit/view/events/gesture_recognizer_test.cpp: what recognizers keep, and layers and backdrops.

#include "tests/host/uikit/screen_fixture.hpp"
#include "tests/support/kept.hpp"

namespace wispen::uikit {
namespace {

using wispen::testing::expect_kept;

NSUInteger touches_seen = 0;

class Toucher : public objc::Authored<Toucher, UIView> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestToucher"};
  using Authored::Authored;
  void began(const NSObject&, const NSObject& event) const {
    touches_seen = objc::send<"count", NSUInteger>(objc::send<"allTouches", NSObject>(event));
  }
};

class GestureRecognizerTest : public ScreenTest {};

TEST_F(GestureRecognizerTest, KeepsWhatItWaitsFor) {
  const auto tap = objc::make<UITapGestureRecognizer>();
  expect_kept<"numberOfTouchesRequired", "setNumberOfTouchesRequired:">(tap, NSUInteger{2});
  expect_kept<"cancelsTouchesInView", "setCancelsTouchesInView:">(tap, false);
  const auto press = objc::make<UILongPressGestureRecognizer>();
  expect_kept<"minimumPressDuration", "setMinimumPressDuration:">(press, 1.5);
  const auto edge = objc::make<UIScreenEdgePanGestureRecognizer>();
  expect_kept<"edges", "setEdges:">(edge, NSUInteger{2});
}

TEST_F(GestureRecognizerTest, IsTakenBackToItsBeginning) {
  const auto tap = objc::make<UITapGestureRecognizer>();
  objc::send<"setState:">(tap, NSInteger{5});
  EXPECT_EQ(tap.state(), UIGestureRecognizerState::Failed);
  objc::send<"reset">(tap);
  EXPECT_EQ(tap.state(), UIGestureRecognizerState::Possible);
}

TEST_F(GestureRecognizerTest, ALongPressWaitsAsLongAsItSays) {
  const auto recognizer = objc::allocate<UILongPressGestureRecognizer>().initialize<"initWithTarget:action:">(
      listener_, objc::selector<"plain">());
  objc::send<"setMinimumPressDuration:">(recognizer, 1.5);
  window_.addGestureRecognizer(recognizer);
  ScreenTest::press({50, 50});
  wait(1000);
  EXPECT_TRUE(listener_.heard().empty());
  wait(600);
  EXPECT_FALSE(listener_.heard().empty());
  lift({50, 50});
}

TEST_F(GestureRecognizerTest, ALayerKeepsItsShadowAndIsAsClearAsItsView) {
  const UIView view = objc::make<UIView>();
  const CALayer layer = view.layer();
  objc::send<"setOpacity:">(layer, 0.25F);
  EXPECT_EQ((objc::send<"opacity", float>(layer)), 0.25F);
  EXPECT_EQ(view.alpha(), 0.25);
  layer.setShadowOffset({3, 4});
  EXPECT_EQ((objc::send<"shadowOffset", CGSize>(layer)), (CGSize{3, 4}));
  layer.setShadowColor(UIColor::redColor().CGColor());
  EXPECT_TRUE(
      CGColorEqualToColor((objc::send<"shadowColor", CGColorRef>(layer)), UIColor::redColor().CGColor()));
}

TEST_F(GestureRecognizerTest, ABackdropKeepsItsSettings) {
  const auto settings = UIBackdropViewSettings::settingsForStyle(2);
  const UIBackdropView plain = objc::allocate<UIBackdropView>().initialize<"initWithSettings:">(settings);
  EXPECT_EQ((objc::send<"inputSettings", NSObject>(plain)), settings);
  const UIBackdropView filling = UIBackdropView::alloc().initWithFrame({}, true, settings);
  EXPECT_TRUE((objc::send<"autosizesToFitSuperview", bool>(filling)));
  show(filling, {{0, 0}, {10, 10}});
  EXPECT_EQ(filling.frame().size, window_.bounds().size);
}

TEST_F(GestureRecognizerTest, AnEventKnowsAllItsTouches) {
  objc::Class<Toucher>().method<"touchesBegan:withEvent:", &Toucher::began>().register_class();
  const auto view = objc::make<Toucher>();
  show(view, {{0, 0}, {100, 100}});
  tap({50, 50});
  EXPECT_EQ(touches_seen, 1U);
}

}  // namespace
}  // namespace wispen::uikit
