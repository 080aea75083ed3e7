// tests/host/uikit/view/painting/damage_test.cpp: what a frame paints is what changed, and looks like
// painting it all.

#include "host/uikit/view/painting/damage.hpp"

#include <algorithm>
#include <cmath>
#include <string>

#include "host/uikit/containers/controllers/navigation_controller.hpp"
#include "host/uikit/controls/label.hpp"
#include "tests/host/uikit/screen_fixture.hpp"
#include "tests/host/uikit/view/painting/random_tree.hpp"

namespace wispen::uikit {
namespace {

bool alike(std::uint32_t one, std::uint32_t other, int rounding) {
  for (int shift = 0; shift < 32; shift += 8) {
    const int difference = static_cast<int>(one >> shift & 0xFF) - static_cast<int>(other >> shift & 0xFF);
    if (std::abs(difference) > rounding) return false;
  }
  return true;
}

double area_of(const std::vector<Rect>& rects) {
  double all = 0;
  for (const Rect& rect : rects) all += rect.width() * rect.height();
  return all;
}

class DamageTest : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    kept_.emplace(session());
    kept_->set_scale(kScale);
    ASSERT_TRUE(kept_->update());
  }
  std::vector<Rect> update() {
    auto changed = kept_->update();
    EXPECT_TRUE(changed);
    return changed ? *changed : std::vector<Rect>{};
  }
  Rect around_update() {
    Rect all;
    for (const Rect& rect : update()) all = all.united(rect);
    return all;
  }
  /// Where the kept picture differs from one painted at once, by more than this in a channel; nothing where
  /// it does not.
  std::string difference(int rounding = 0) {
    const auto picture = take_picture(session(), kScale);
    if (!picture) return "no picture";
    const graphics::PixelView whole = picture->pixels()->view();
    const graphics::PixelView kept = kept_->pixels();
    for (int y = 0; y < whole.height; ++y) {
      if (std::equal(whole.row(y), whole.row(y) + whole.width, kept.row(y))) continue;
      for (int x = 0; x < whole.width; ++x) {
        if (alike(whole.row(y)[x], kept.row(y)[x], rounding)) continue;
        char text[96];
        std::snprintf(text, sizeof text, "at %d, %d: %08X where a whole picture has %08X", x, y,
                      kept.row(y)[x], whole.row(y)[x]);
        return text;
      }
    }
    return "";
  }
  UIView coloured(const Rect& frame, const UIColor& colour = UIColor::redColor()) const {
    const UIView view = UIView::alloc().initWithFrame(frame);
    view.setBackgroundColor(colour);
    window_.addSubview(view);
    return view;
  }

  static constexpr double kScale = 1;
  std::optional<FrameBuffer> kept_;
};

TEST_F(DamageTest, PaintsNothingWhereNothingChanged) {
  coloured({{10, 10}, {20, 20}});
  update();
  EXPECT_FALSE(kept_->stale());
  EXPECT_TRUE(update().empty());
}

TEST_F(DamageTest, PaintsWhereAMovedViewWasAndIs) {
  const UIView view = coloured({{10, 10}, {20, 20}});
  update();
  view.setFrame(Rect{{200, 500}, {20, 20}});
  EXPECT_EQ(area_of(update()), 2 * 20 * 20);
  EXPECT_EQ(difference(), "");
}

TEST_F(DamageTest, PaintsOnlyWhatMovesInAnAnimation) {
  const UIView view = coloured({{10, 10}, {40, 40}});
  coloured({{0, 200}, {390, 400}}, UIColor::blueColor());
  update();
  session().animations().animate(
      {.duration = 1, .curve = animation::TimingCurve(animation::NamedCurve::Linear)}, [&] {
        view.setCenter({230, 30});
      });
  for (int i = 0; i < 10; ++i) {
    wait(100);
    EXPECT_LE(area_of(update()), 60 * 40 + 2);
    EXPECT_EQ(difference(), "");
  }
  wait(1000);
  update();
  EXPECT_FALSE(kept_->stale());
}

TEST_F(DamageTest, LeavesAnAnimationAloneThatIsStillDelayedOrChangesNothingSeen) {
  const UIView empty = UIView::alloc().initWithFrame(Rect{{0, 0}, {300, 300}});
  window_.addSubview(empty);
  update();
  session().animations().animate({.duration = 1}, [&] { empty.setCenter({300, 300}); });
  wait(100);
  EXPECT_TRUE(update().empty());
}

TEST_F(DamageTest, UncoversWhatAFadedViewLeft) {
  const UIView view = coloured({{10, 10}, {40, 40}});
  update();
  session().animations().animate({.duration = 0.2}, [&] { view.setAlpha(0); });
  wait(100);
  EXPECT_EQ(area_of(update()), 40 * 40);
  EXPECT_EQ(difference(), "");
  wait(200);
  EXPECT_EQ(area_of(update()), 40 * 40);
  EXPECT_EQ(difference(), "");
  EXPECT_TRUE(update().empty());
}

TEST_F(DamageTest, FollowsWhatSticksOutOfAMovedView) {
  const UIView outer = UIView::alloc().initWithFrame(Rect{{10, 10}, {20, 20}});
  window_.addSubview(outer);
  const UIView inner = UIView::alloc().initWithFrame(Rect{{100, 0}, {10, 10}});
  inner.setBackgroundColor(UIColor::redColor());
  outer.addSubview(inner);
  update();
  outer.setCenter({20, 420});
  EXPECT_EQ(area_of(update()), 2 * 10 * 10);
  EXPECT_EQ(difference(), "");
}

TEST_F(DamageTest, UncoversAViewThatLeavesInTheMiddleOfItsAnimation) {
  const UIView view = coloured({{10, 10}, {40, 40}});
  update();
  session().animations().animate({.duration = 1}, [&] { view.setCenter({200, 700}); });
  wait(500);
  update();
  view.removeFromSuperview();
  EXPECT_FALSE(update().empty());
  EXPECT_EQ(difference(), "");
}

TEST_F(DamageTest, PaintsAllInARoundedClipThatChangesItsShape) {
  const UIView outer = UIView::alloc().initWithFrame(Rect{{10, 10}, {100, 100}});
  outer.setClipsToBounds(true);
  outer.layer().setCornerRadius(30);
  window_.addSubview(outer);
  const UIView inner = UIView::alloc().initWithFrame(Rect{{0, 0}, {300, 300}});
  inner.setBackgroundColor(UIColor::redColor());
  outer.addSubview(inner);
  update();
  outer.layer().setCornerRadius(10);
  update();
  EXPECT_EQ(difference(), "");
  outer.setBounds(Rect{{0, 0}, {80, 100}});
  update();
  EXPECT_EQ(difference(), "");
}

TEST_F(DamageTest, PaintsNoMoreThanASlidersRowWhileItsThumbIsDragged) {
  const UIView row = coloured({{20, 300}, {350, 44}}, UIColor::whiteColor());
  row.setClipsToBounds(true);
  const UISlider slider = objc::make<UISlider>();
  slider.setFrame(Rect{{16, 7}, {300, 30}});
  row.addSubview(slider);
  window_.layoutIfNeeded();
  update();
  const Point thumb = middle(slider);
  slider.setValue(0.5F, false);
  update();
  press(thumb);
  for (int i = 1; i <= 10; ++i) {
    session().touches().moved({thumb.x + i * 9, thumb.y});
    const Rect painted = around_update();
    EXPECT_FALSE(painted.empty());
    EXPECT_TRUE(Rect(row.frame()).contains(painted));
    EXPECT_EQ(difference(), "");
  }
  lift(thumb);
}

TEST_F(DamageTest, PaintsOnlyTheSwitchThatSlides) {
  const UISwitch control = objc::make<UISwitch>();
  show(control, {{300, 300}, {0, 0}});
  update();
  tap(middle(control));
  const Rect reach = Rect(control.frame()).inset(-18, -18);  // with its thumb's shadow
  for (int i = 0; i < 20; ++i) {
    wait(16);
    const Rect painted = around_update();
    EXPECT_TRUE(painted.empty() || reach.contains(painted));
    EXPECT_EQ(difference(), "");
  }
}

TEST_F(DamageTest, PaintsAPushedPageAsItComesIn) {
  const auto page = [](const UIColor& colour) {
    const UIViewController controller = objc::make<UIViewController>();
    controller.view().setBackgroundColor(colour);
    const UILabel label = UILabel::alloc().initWithFrame(Rect{{20, 300}, {300, 40}});
    label.setText("A page that comes in"_ns);
    controller.view().addSubview(label);
    return controller;
  };
  const auto navigation =
      UINavigationController::alloc().initWithRootViewController(page(UIColor::yellowColor()));
  window_.setRootViewController(navigation);
  update();
  EXPECT_EQ(difference(), "");
  navigation.pushViewController(page(UIColor::cyanColor()), true);
  for (int i = 0; i < 50; ++i) {
    wait(16);
    update();
    ASSERT_EQ(difference(), "") << "frame " << i;
  }
  navigation.popViewController(true);
  for (int i = 0; i < 50; ++i) {
    wait(16);
    update();
    ASSERT_EQ(difference(), "") << "frame " << i << " of the way back";
  }
}

class RandomDamageTest : public DamageTest, public ::testing::WithParamInterface<int> {};

TEST_P(RandomDamageTest, LooksLikeAWholePicture) {
  constexpr int kSeeds = 12;
  constexpr int kSteps = 30;
  // The drawing library cuts an edge at the clip before it finds what the edge covers: where a part is
  // painted of what is soft or slanted, it comes out as much different.
  const bool turns = GetParam() % 2 == 1;
  const int rounding = turns ? 24 : 16;
  double painted = 0;
  for (int i = 0; i < kSeeds; ++i) {
    const auto seed = static_cast<unsigned>(GetParam() * kSeeds + i);
    RandomTree tree(window_, seed, turns);
    for (int step = 0; step < kSteps; ++step) {
      tree.change();
      if (step % 3 == 0) tree.change();
      wait(step % 2 == 0 ? 16 : 0);
      painted += area_of(update());
      ASSERT_EQ(difference(rounding), "") << "seed " << seed << ", step " << step;
    }
    for (const UIView& view : View::of(window_).subviews()) view.removeFromSuperview();
    update();
    ASSERT_EQ(difference(rounding), "") << "seed " << seed << ", all removed";
  }
  const Size screen = window_.bounds().size;
  const double part = painted / (screen.width * screen.height * kSeeds * kSteps);
  RecordProperty("painted_part_of_screen", std::to_string(part));
  EXPECT_LT(part, 0.9);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomDamageTest, ::testing::Range(0, 8));

TEST(DamageList, JoinsWhatCostsLittleAndLeavesTheRestApart) {
  const Rect screen{{0, 0}, {400, 800}};
  DamageList list(1, screen);
  list.add({{10, 10}, {20, 20}});
  list.add({{30, 10}, {20, 20}});
  list.add({{200, 700}, {20, 20}});
  ASSERT_EQ(list.rects().size(), 2U);
  EXPECT_EQ(list.rects()[0], (Rect{{10, 10}, {40, 20}}));
  list.add({{-10, -10}, {12.5, 12.5}});
  EXPECT_EQ(list.rects().back(), (Rect{{0, 0}, {50, 30}}));
}

TEST(DamageList, KeepsAFewRectanglesThatHoldAll) {
  const Rect screen{{0, 0}, {4000, 4000}};
  DamageList list(2, screen);
  std::vector<Rect> all;
  for (int i = 0; i < 100; ++i) {
    all.push_back({{(i * 997 % 3900) + 0.3, (i * 613 % 3900) + 0.7}, {30, 30}});
    list.add(all.back());
  }
  EXPECT_LE(list.rects().size(), 12U);
  for (const Rect& rect : all) {
    EXPECT_TRUE(std::ranges::any_of(list.rects(), [&](const Rect& held) { return held.contains(rect); }));
  }
}

TEST(DamageList, HoldsPanesWholeAlsoOnesReachedByOthers) {
  DamageList list(1, {{0, 0}, {400, 800}});
  list.add({{0, 0}, {10, 10}});
  list.add({{390, 790}, {10, 10}});
  list.grow_around({{{5, 5}, {100, 100}}, {{100, 100}, {50, 50}}, {{200, 300}, {50, 50}}});
  ASSERT_EQ(list.rects().size(), 2U);
  EXPECT_TRUE(std::ranges::any_of(list.rects(), [](const Rect& rect) {
    return rect == Rect{{0, 0}, {150, 150}};
  }));
}

}  // namespace
}  // namespace wispen::uikit
