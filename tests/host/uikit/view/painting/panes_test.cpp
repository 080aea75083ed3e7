// tests/host/uikit/view/painting/panes_test.cpp: frosted panes and what is behind them.

#include "host/uikit/view/painting/panes.hpp"

#include <cmath>

#include "tests/host/uikit/screen_fixture.hpp"

namespace wispen::uikit {
namespace {

class PanesTest : public ScreenTest {
 protected:
  /// Stripes, so that softening is seen.
  void show_stripes() {
    for (int i = 0; i < 10; ++i) {
      const UIView stripe = UIView::alloc().initWithFrame(Rect{{i * 20.0, 0}, {10, 200}});
      stripe.setBackgroundColor(UIColor::redColor());
      window_.addSubview(stripe);
    }
  }
  static std::vector<std::uint32_t> pixels_of(FrameBuffer& buffer) {
    const graphics::PixelView view = buffer.pixels();
    std::vector<std::uint32_t> all;
    for (int y = 0; y < view.height; ++y) all.insert(all.end(), view.row(y), view.row(y) + view.width);
    return all;
  }
};

TEST_F(PanesTest, SoftensWhatIsBehindAndNotWhatIsInFront) {
  show_stripes();
  const auto pane = UIVisualEffectView::alloc().initWithEffect(
      UIBlurEffect::effectWithStyle(UIBlurEffectStyle::SystemUltraThinMaterial));
  show(pane, {{0, 50}, {200, 100}});
  const UIView front = UIView::alloc().initWithFrame(Rect{{5, 5}, {20, 20}});
  front.setBackgroundColor(UIColor::blueColor());
  pane.contentView().addSubview(front);
  EXPECT_EQ(pixel({5, 20}), 0xFFFF0000U);
  EXPECT_EQ(pixel({15, 20}), 0xFFFFFFFFU);
  // Under the pane stripe and gap have become nearly the same.
  const auto green = [&](double x) { return (pixel({x, 120}) >> 8 & 0xFF) * 1.0; };
  EXPECT_NEAR(green(105), green(115), 6);
  EXPECT_EQ(pixel({10, 60}), 0xFF0000FFU);
}

TEST_F(PanesTest, PaintsTheWholePaneWhenAPartBehindItChanges) {
  show_stripes();
  const auto pane = UIVisualEffectView::alloc().initWithEffect(
      UIBlurEffect::effectWithStyle(UIBlurEffectStyle::SystemUltraThinMaterial));
  pane.layer().setCornerRadius(12);
  show(pane, {{20, 50}, {160, 100}});
  const UIView spot = UIView::alloc().initWithFrame(Rect{{100, 40}, {20, 20}});
  window_.insertSubview(spot, 0);
  FrameBuffer kept(session());
  ASSERT_TRUE(kept.update());
  spot.setBackgroundColor(UIColor::blueColor());
  const auto changed = kept.update();
  ASSERT_TRUE(changed);
  ASSERT_EQ(changed->size(), 1U);
  EXPECT_EQ(changed->front(), (Rect{{20, 40}, {160, 110}}));
  FrameBuffer fresh(session());
  ASSERT_TRUE(fresh.update());
  EXPECT_EQ(pixels_of(kept), pixels_of(fresh));
}

TEST_F(PanesTest, LeavesChangesElsewhereAlone) {
  const auto pane = UIVisualEffectView::alloc().initWithEffect(
      UIBlurEffect::effectWithStyle(UIBlurEffectStyle::SystemUltraThinMaterial));
  show(pane, {{20, 50}, {160, 100}});
  const UIView spot = UIView::alloc().initWithFrame(Rect{{20, 400}, {20, 20}});
  window_.addSubview(spot);
  FrameBuffer kept(session());
  ASSERT_TRUE(kept.update());
  spot.setBackgroundColor(UIColor::blueColor());
  const auto changed = kept.update();
  ASSERT_TRUE(changed);
  EXPECT_EQ(changed->front(), spot.frame());
  pane.removeFromSuperview();
  EXPECT_TRUE(panes_in(window_).empty());
}

TEST_F(PanesTest, GrowsARectangleOverEveryPaneThatItTouches) {
  const std::vector<Rect> panes{{{0, 0}, {10, 10}}, {{5, 5}, {20, 20}}, {{100, 0}, {10, 10}}};
  EXPECT_EQ(around_panes({{1, 1}, {2, 2}}, panes), (Rect{{0, 0}, {25, 25}}));
  EXPECT_EQ(around_panes({{50, 50}, {2, 2}}, panes), (Rect{{50, 50}, {2, 2}}));
}

TEST_F(PanesTest, ShowsNothingWithoutAnEffect) {
  show_stripes();
  show(UIVisualEffectView::alloc().initWithEffect(UIVisualEffect()), {{0, 50}, {200, 100}});
  EXPECT_EQ(pixel({105, 100}), 0xFFFF0000U);
}

TEST_F(PanesTest, FitsABackdropToItsSuperview) {
  const UIView sheet = UIView::alloc().initWithFrame(Rect{{0, 0}, {300, 400}});
  const auto backdrop =
      UIBackdropView::alloc().initWithFrame(CGRect{}, true, UIBackdropViewSettings::settingsForStyle(1));
  sheet.insertSubview(backdrop, 0);
  EXPECT_EQ(backdrop.frame(), sheet.bounds());
  sheet.setFrame(Rect{{0, 0}, {200, 500}});
  EXPECT_EQ(backdrop.frame(), sheet.bounds());
  EXPECT_EQ(sheet.hitTest(CGPoint{10, 10}, UIEvent()), sheet);
}

class ActivityIndicatorTest : public ScreenTest {};

TEST_F(ActivityIndicatorTest, IsSeenOnlyWhileItTurns) {
  const auto spinner =
      UIActivityIndicatorView::alloc().initWithActivityIndicatorStyle(UIActivityIndicatorViewStyle::Medium);
  EXPECT_EQ(spinner.bounds().size, (Size{20, 20}));
  EXPECT_EQ(UIActivityIndicatorView::alloc()
                .initWithActivityIndicatorStyle(UIActivityIndicatorViewStyle::Large)
                .bounds()
                .size,
            (Size{37, 37}));
  show(spinner, {{50, 50}, {20, 20}});
  EXPECT_TRUE(spinner.isHidden());
  spinner.startAnimating();
  EXPECT_TRUE(spinner.isAnimating());
  EXPECT_FALSE(spinner.isHidden());
  spinner.stopAnimating();
  EXPECT_TRUE(spinner.isHidden());
  spinner.setHidesWhenStopped(false);
  EXPECT_FALSE(spinner.isHidden());
}

TEST_F(ActivityIndicatorTest, TurnsWithTheClockAndRestsOutsideOfWindows) {
  const auto spinner =
      UIActivityIndicatorView::alloc().initWithActivityIndicatorStyle(UIActivityIndicatorViewStyle::Medium);
  show(spinner, {{50, 50}, {20, 20}});
  spinner.startAnimating();
  FrameBuffer buffer(session());
  ASSERT_TRUE(buffer.update());
  EXPECT_FALSE(buffer.stale());
  wait(100);
  EXPECT_TRUE(buffer.stale());
  const auto changed = buffer.update();
  ASSERT_TRUE(changed);
  EXPECT_EQ(changed->front(), spinner.frame());
  spinner.removeFromSuperview();
  ASSERT_TRUE(buffer.update());
  wait(500);
  EXPECT_FALSE(buffer.stale());
}

}  // namespace
}  // namespace wispen::uikit
