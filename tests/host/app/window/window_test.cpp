// tests/host/app/window/window_test.cpp: a real window on a display of its own, used by the display's events.

#include "host/app/window/window.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>

#include "host/app/window/screen_placement.hpp"
#include "host/uikit/containers/tables/scroll_view.hpp"
#include "host/uikit/controls/text_field.hpp"
#include "host/uikit/view/window.hpp"
#include "tests/host/app/window/x_server.hpp"
#include "tests/support/temporary_folder.hpp"

/// The window system's libraries are unloaded with what they still hold, and a library that is gone has no
/// name that a suppression could say.
extern "C" [[gnu::visibility("default")]] int __lsan_is_turned_off();  // NOLINT(bugprone-reserved-identifier)
int __lsan_is_turned_off() { return 1; }

namespace wispen {
namespace {

using testing::XHand;
using testing::XServer;

constexpr std::uint32_t kGreen = 0x34C759;

class WindowTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(server_.running()) << "Xvfb cannot be started: it is one of the packages of tools/setup";
    HostOptions options;
    options.root = folder_ / "root";
    options.clock = ClockKind::Wall;
    options.device = "phone-small";
    options.languages = {"en"};
    auto host = Host::start(options);
    ASSERT_TRUE(host) << host.error().message;
    host_ = *std::move(host);
    screen_ = objc::make<UIWindow>();
    screen_.setBackgroundColor(UIColor::whiteColor());
    switch_ = objc::make<UISwitch>();
    switch_.setFrame(Rect{{50, 100}, Size{51, 31}});
    screen_.addSubview(switch_);
    field_ = objc::make<UITextField>();
    field_.setFrame(Rect{{50, 200}, {200, 34}});
    screen_.addSubview(field_);
    slider_ = objc::make<UISlider>();
    slider_.setFrame(Rect{{50, 300}, {200, 31}});
    screen_.addSubview(slider_);
    scroll_ = UIScrollView::alloc().initWithFrame(Rect{{0, 400}, {375, 200}});
    scroll_.setContentSize({375, 2000});
    screen_.addSubview(scroll_);
    screen_.makeKeyAndVisible();
  }
  void TearDown() override {
    hand_.reset();
    window_.reset();
    scroll_ = UIScrollView();
    slider_ = UISlider();
    field_ = UITextField();
    switch_ = UISwitch();
    screen_ = UIWindow();
    if (host_) {
      EXPECT_TRUE(host_->stop());
    }
    host_.reset();
  }
  void open() {
    auto opened = Window::open(*host_, {.title = "Test", .languages = {"en", "ar"}});
    ASSERT_TRUE(opened) << opened.error().message;
    window_ = *std::move(opened);
    run_until([this] { return !host_->frame_buffer().stale(); });
    hand_ = std::make_unique<XHand>();
  }
  /// Lets the window live until something holds; a failure after ten seconds.
  void run_until(const std::function<bool()>& holds) {
    using namespace std::chrono_literals;
    bool held = false;
    int left = 5000;
    const TimerId timer = host_->loop().add_timer(
        2ms,
        [&] {
          held = holds();
          if (held || --left == 0) host_->loop().stop();
        },
        2ms);
    const auto ran = window_->run();
    host_->loop().cancel(timer);
    EXPECT_TRUE(ran) << ran.error().message;
    EXPECT_TRUE(held) << "it did not come about in time";
  }
  /// So that all that was sent until now is shown.
  void settle() {
    int quiet = 0;
    run_until([&] {
      const bool busy = host_->session().animations().active() || host_->frame_buffer().stale();
      quiet = busy ? 0 : quiet + 1;
      return quiet > 20;
    });
  }
  ScreenPlacement placement() const {
    const auto size = hand_->size();
    return ScreenPlacement::fit({double(size[0]), double(size[1])}, 1, host_->session().device().size());
  }
  /// A place of the screen, in the window's pixels.
  Point at(Point place) const {
    const ScreenPlacement now = placement();
    return {now.origin.x + place.x * now.scale, now.origin.y + place.y * now.scale};
  }
  void click(Point place, unsigned button = 1) const {
    const Point pixel = at(place);
    hand_->click(pixel.x, pixel.y, button);
  }
  std::uint32_t shown(Point place) const {
    const Point pixel = at(place);
    return hand_->pixel(pixel.x, pixel.y);
  }

  const objc::AutoreleasePool pool_;
  const testing::TemporaryFolder folder_;
  XServer server_;
  std::unique_ptr<Host> host_;
  UIWindow screen_;
  UISwitch switch_;
  UITextField field_;
  UISlider slider_;
  UIScrollView scroll_;
  std::unique_ptr<Window> window_;
  std::unique_ptr<XHand> hand_;
};

TEST_F(WindowTest, ShowsTheScreenAndTakesTheMouseAndTheKeyboard) {
  open();
  EXPECT_EQ(shown({300, 50}), 0xFFFFFFU);
  click({75, 115});
  run_until([this] { return switch_.isOn(); });
  settle();
  EXPECT_EQ(shown({60, 115}), kGreen);

  click({100, 217});
  run_until([this] { return field_.isEditing(); });
  hand_->type("hello");
  hand_->press(XK_BackSpace);
  hand_->press(XK_space);
  hand_->press(XK_exclam);
  run_until([this] { return field_.text().utf8().size() >= 6; });
  EXPECT_THAT(field_.text().utf8(), ::testing::StartsWith("hell "));
}

TEST_F(WindowTest, CopiesCutsAndPastes) {
  open();
  click({100, 217});
  run_until([this] { return field_.isEditing(); });
  hand_->type("one");
  run_until([this] { return field_.text().utf8() == "one"; });
  const auto command = [this](KeySym letter) { hand_->press(letter, XK_Control_L); };
  command(XK_a);
  command(XK_c);
  hand_->press(XK_End);
  command(XK_v);
  run_until([this] { return field_.text().utf8() == "oneone"; });
  command(XK_a);
  command(XK_x);
  run_until([this] { return field_.text().length() == 0; });
  command(XK_v);
  run_until([this] { return field_.text().utf8() == "oneone"; });
  // A secret is not given away.
  field_.setText("two"_ns);
  objc::send<"setSecureTextEntry:">(field_, true);
  command(XK_a);
  command(XK_c);
  hand_->press(XK_End);
  command(XK_v);
  run_until([this] { return field_.text().utf8() == "twooneone"; });
}

TEST_F(WindowTest, DragsAndTurnsTheWheel) {
  open();
  const Point thumb = at({64, 315});
  const Point end = at({150, 315});
  hand_->move(thumb.x, thumb.y);
  hand_->button(1, true);
  hand_->move((thumb.x + end.x) / 2, thumb.y);
  hand_->move(end.x, thumb.y);
  hand_->button(1, false);
  run_until([this] { return slider_.value() > 0.45F; });
  EXPECT_NEAR(slider_.value(), 0.5, 0.03);

  const double top = scroll_.contentOffset().y;
  click({100, 500}, 5);
  run_until([&] { return scroll_.contentOffset().y > top; });
  click({100, 500}, 4);
  run_until([&] { return scroll_.contentOffset().y == top; });
}

TEST_F(WindowTest, WalksWithTabAndPressesWithSpace) {
  open();
  hand_->press(XK_Tab);
  hand_->press(XK_space);
  run_until([this] { return switch_.isOn(); });
  hand_->press(XK_Tab);
  hand_->press(XK_Tab);
  hand_->press(XK_Right);
  run_until([this] { return slider_.value() > 0; });
  hand_->press(XK_End);
  run_until([this] { return slider_.value() == 1; });
}

TEST_F(WindowTest, FollowsItsNewSize) {
  open();
  switch_.setOn(true, false);
  hand_->resize(800, 600);
  run_until([this] { return host_->frame_buffer().scale() < 0.9; });
  settle();
  const ScreenPlacement now = placement();
  EXPECT_NEAR(now.scale, 570 / 667.0, 0.001);
  EXPECT_GT(now.origin.x, 200);  // in the middle
  EXPECT_EQ(shown({60, 115}), kGreen);
  click({75, 115});
  run_until([this] { return !switch_.isOn(); });
  hand_->resize(200, 160);  // hardly any room, and still a window
  run_until([this] { return host_->frame_buffer().scale() < 0.3; });
  settle();
}

TEST_F(WindowTest, SwitchesLooksInPlace) {
  screen_.setBackgroundColor(UIColor::systemBackgroundColor());
  open();
  hand_->press(XK_F2);
  run_until([this] { return host_->options().appearance == "dark"; });
  settle();
  EXPECT_EQ(shown({300, 50}), 0x000000U);
  hand_->press(XK_F4);
  run_until([this] { return host_->options().right_to_left == true; });
  hand_->press(XK_F5);
  run_until([this] { return host_->options().text_size == "XL"; });
  hand_->click(20, 15);  // the strip's first button
  run_until([this] { return host_->options().appearance == "light"; });
  hand_->press(XK_F7);
  run_until([this] { return host_->options().landscape && hand_->size()[0] > hand_->size()[1]; });
  settle();
  EXPECT_EQ(screen_.bounds().size, (Size{667, 375}));
}

TEST_F(WindowTest, UsesNoTimeWhileNothingHappens) {
  using namespace std::chrono_literals;
  open();
  settle();
  const auto used = [] {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
  };
  const double before = used();
  const TimerId timer = host_->loop().add_timer(500ms, [this] { host_->loop().stop(); });
  ASSERT_TRUE(window_->run());
  host_->loop().cancel(timer);
  const double spent = used() - before;
  RecordProperty("milliseconds", std::to_string(spent));
  printf("half a second of nothing: %.3f ms of processor time\n", spent);
  EXPECT_LT(spent, 5);
}

TEST_F(WindowTest, ClosesWhenItIsAskedTo) {
  open();
  host_->loop().post([this] { window_->close(); });
  EXPECT_TRUE(window_->run());
  EXPECT_TRUE(window_->run());  // stays closed
}

TEST_F(WindowTest, SaysInOneSentenceThatThereIsNoDisplay) {
  unsetenv("DISPLAY");
  const auto opened = Window::open(*host_);
  ASSERT_FALSE(opened);
  EXPECT_THAT(opened.error().message, ::testing::HasSubstr("no display"));
  EXPECT_THAT(opened.error().message, ::testing::Not(::testing::HasSubstr("\n")));
}

TEST(ScreenPlacementTest, KeepsTheScreenInsideTheWindowUnderTheStrip) {
  const ScreenPlacement placement = ScreenPlacement::fit({390, 874}, 1, {390, 844});
  EXPECT_EQ(placement.scale, 1);
  EXPECT_EQ(placement.origin, (Point{0, 30}));
  EXPECT_EQ(placement.to_screen({10, 40}), (Point{10, 10}));
  const ScreenPlacement sharp = ScreenPlacement::fit({780, 1748}, 2, {390, 844});
  EXPECT_EQ(sharp.scale, 2);
  EXPECT_EQ(sharp.to_screen({10, 40}), (Point{10, 10}));
  EXPECT_EQ(ScreenPlacement::fit({780, 1748}, 1, {390, 844}, 2).scale, 2);
  EXPECT_GE(ScreenPlacement::fit({0, 0}, 1, {390, 844}).scale, 0.1);
}

TEST(ScreenPlacementTest, OpensAsLargeAsTheDesktopAllows) {
  EXPECT_EQ(window_size_for({390, 844}, {1920, 1200}), (Size{390, 874}));
  EXPECT_EQ(window_size_for({390, 844}, {3840, 2400}, 2), (Size{780, 1748}));
  const Size small = window_size_for({1024, 1366}, {1366, 768});
  EXPECT_LT(small.height, 768);
  EXPECT_NEAR(small.width / (small.height - kToolbarHeight), 1024.0 / 1366, 0.01);
}

}  // namespace
}  // namespace wispen
