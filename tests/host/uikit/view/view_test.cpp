// tests/host/uikit/view/view_test.cpp: views: place, hierarchy, animation, and what is painted.

#include "host/uikit/view/view.hpp"

#include "host/graphics/canvas.hpp"
#include "host/uikit/controls/control.hpp"
#include "host/uikit/view/painting/frame_buffer.hpp"
#include "host/uikit/view/session.hpp"
#include "host/uikit/view/window.hpp"
#include "tests/support/host_fixture.hpp"

namespace wispen::uikit {
namespace {

class ViewTest : public wispen::testing::HostTest {
 protected:
  static Session& session() { return *Session::current(); }
};

TEST_F(ViewTest, KeepsItsFrameAboutItsCentre) {
  const UIView view = UIView::alloc().initWithFrame(Rect{{10, 20}, {100, 50}});
  EXPECT_EQ(view.center(), (Point{60, 45}));
  view.setCenter({50, 50});
  EXPECT_EQ(view.frame(), (Rect{{0, 25}, {100, 50}}));
  view.setTransform(AffineTransform::scaling(2, 2));
  EXPECT_EQ(view.frame(), (Rect{{-50, 0}, {200, 100}}));
  EXPECT_EQ(view.bounds().size, (Size{100, 50}));
}

TEST_F(ViewTest, IgnoresAFrameThatIsNoNumber) {
  const UIView view = UIView::alloc().initWithFrame(Rect{{1, 2}, {3, 4}});
  view.setFrame(Rect{{0, 0}, {std::numeric_limits<double>::quiet_NaN(), 1}});
  EXPECT_EQ(view.frame(), (Rect{{1, 2}, {3, 4}}));
}

TEST_F(ViewTest, LetsSubviewsGoWhenItDies) {
  const UIView inner = objc::make<UIView>();
  {
    const objc::AutoreleasePool pool;  // what superview() gave stays in it
    const UIView outer = objc::make<UIView>();
    outer.addSubview(inner);
    EXPECT_EQ(inner.superview(), outer);
  }
  EXPECT_FALSE(inner.superview());
}

TEST_F(ViewTest, ResizesSubviewsByTheirMask) {
  const UIView outer = UIView::alloc().initWithFrame(Rect{{0, 0}, {100, 100}});
  const UIView inner = UIView::alloc().initWithFrame(Rect{{10, 10}, {80, 80}});
  inner.setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
  outer.addSubview(inner);
  outer.setFrame(Rect{{0, 0}, {200, 150}});
  EXPECT_EQ(inner.frame(), (Rect{{10, 10}, {180, 130}}));
}

TEST_F(ViewTest, HitsTheUppermostViewThatTakesTouches) {
  const UIView outer = UIView::alloc().initWithFrame(Rect{{0, 0}, {100, 100}});
  const UIView lower = UIView::alloc().initWithFrame(Rect{{0, 0}, {50, 50}});
  const UIView upper = UIView::alloc().initWithFrame(Rect{{0, 0}, {50, 50}});
  outer.addSubview(lower);
  outer.addSubview(upper);
  EXPECT_EQ(outer.hitTest(CGPoint{10, 10}, UIEvent()), upper);
  upper.setUserInteractionEnabled(false);
  EXPECT_EQ(outer.hitTest(CGPoint{10, 10}, UIEvent()), lower);
  EXPECT_EQ(outer.hitTest(CGPoint{60, 60}, UIEvent()), outer);
  EXPECT_FALSE(outer.hitTest(CGPoint{160, 60}, UIEvent()));
}

TEST_F(ViewTest, InheritsTheTint) {
  const UIView outer = objc::make<UIView>();
  const UIView inner = objc::make<UIView>();
  outer.addSubview(inner);
  outer.setTintColor(UIColor::redColor());
  EXPECT_TRUE(inner.tintColor().isEqual(UIColor::redColor()));
  inner.setTintColor(UIColor::blueColor());
  EXPECT_TRUE(inner.tintColor().isEqual(UIColor::blueColor()));
}

TEST_F(ViewTest, ChangesAtOnceAndIsSeenToChangeOverTime) {
  const UIView view = UIView::alloc().initWithFrame(Rect{{0, 0}, {10, 10}});
  view.setAlpha(0);
  bool ended = false;
  session().animations().animate(
      {.duration = 1, .curve = animation::TimingCurve(animation::NamedCurve::Linear)},
      [&] { view.setAlpha(1); }, [&](bool finished) { ended = finished; });
  EXPECT_EQ(view.alpha(), 1);
  EXPECT_EQ(View::of(view).presented_alpha(), 0);
  ASSERT_TRUE(session().loop().advance(std::chrono::milliseconds(250)));
  EXPECT_NEAR(View::of(view).presented_alpha(), 0.25, 1e-9);
  EXPECT_FALSE(ended);
  ASSERT_TRUE(session().loop().advance(std::chrono::milliseconds(750)));
  EXPECT_EQ(View::of(view).presented_alpha(), 1);
  EXPECT_TRUE(ended);
}

TEST_F(ViewTest, TakesAnAnimationAlongWhenItIsPlacedMeanwhile) {
  const UIView view = UIView::alloc().initWithFrame(Rect{{0, -50}, {10, 10}});
  session().animations().animate({.duration = 1}, [&] { view.setCenter({5, 5}); });
  view.setCenter({105, 25});
  EXPECT_EQ(View::of(view).presented_center(), (Point{105, -25}));
  ASSERT_TRUE(session().loop().advance(std::chrono::seconds(1)));
  EXPECT_EQ(View::of(view).presented_center(), (Point{105, 25}));
}

TEST_F(ViewTest, PaintsOnlyWhatChanged) {
  const UIWindow window = objc::make<UIWindow>();
  const UIView red = UIView::alloc().initWithFrame(Rect{{100, 100}, {20, 20}});
  red.setBackgroundColor(UIColor::redColor());
  window.setBackgroundColor(UIColor::whiteColor());
  window.addSubview(red);
  window.makeKeyAndVisible();
  FrameBuffer frame(session());
  ASSERT_TRUE(frame.update());
  EXPECT_FALSE(frame.stale());
  red.setBackgroundColor(UIColor::blueColor());
  EXPECT_TRUE(frame.stale());
  const auto changed = frame.update();
  ASSERT_TRUE(changed);
  ASSERT_EQ(changed->size(), 1U);
  EXPECT_EQ(changed->front(), red.frame());
}

/// Notes which actions came.
struct Heard {
  std::vector<std::string> actions;
};
class Listener : public objc::Authored<Listener, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestControlListener"};
  using Authored::Authored;
  Heard& heard() const { return state<Heard>(); }
  void down(const NSObject&) const { heard().actions.emplace_back("down"); }
  void up(const NSObject&) const { heard().actions.emplace_back("up"); }
  static void define() {
    objc::Class<Listener>()
        .state<Heard>()
        .method<"down:", &Listener::down>()
        .method<"up:", &Listener::up>()
        .register_class();
  }
};

TEST_F(ViewTest, SendsActionsOfARealTouchInTheOrderOfEvents) {
  Listener::define();
  const Listener listener = objc::make<Listener>();
  const UIWindow window = objc::make<UIWindow>();
  const UIControl control = UIControl::alloc().initWithFrame(Rect{{50, 50}, {40, 40}});
  control.addTarget(listener, objc::selector<"up:">(), UIControlEventTouchUpInside);
  control.addTarget(listener, objc::selector<"down:">(), UIControlEventTouchDown);
  window.addSubview(control);
  window.makeKeyAndVisible();
  session().touches().began({60, 60});
  EXPECT_TRUE(control.isHighlighted());
  session().touches().ended({60, 60});
  EXPECT_EQ(listener.heard().actions, (std::vector<std::string>{"down", "up"}));
  session().touches().began({60, 60});
  session().touches().moved({300, 300});
  session().touches().ended({300, 300});
  EXPECT_EQ(listener.heard().actions, (std::vector<std::string>{"down", "up", "down"}));
}

}  // namespace
}  // namespace wispen::uikit
