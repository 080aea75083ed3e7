// tests/host/uikit/view/effects/backdrop_view_test.cpp: backdrops and their settings.

#include "tests/host/uikit/screen_fixture.hpp"

namespace wispen::uikit {
namespace {

class BackdropViewTest : public ScreenTest {};

TEST_F(BackdropViewTest, ABackdropKeepsItsSettings) {
  const auto settings = UIBackdropViewSettings::settingsForStyle(2);
  const UIBackdropView plain = objc::allocate<UIBackdropView>().initialize<"initWithSettings:">(settings);
  EXPECT_EQ((objc::send<"inputSettings", NSObject>(plain)), settings);
  const UIBackdropView filling = UIBackdropView::alloc().initWithFrame({}, true, settings);
  EXPECT_TRUE((objc::send<"autosizesToFitSuperview", bool>(filling)));
  show(filling, {{0, 0}, {10, 10}});
  EXPECT_EQ(filling.frame().size, window_.bounds().size);
}

}  // namespace
}  // namespace wispen::uikit
