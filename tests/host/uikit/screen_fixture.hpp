// tests/host/uikit/screen_fixture.hpp: a window on a running host, a finger, a keyboard, and who hears of
// them.
#pragma once

#include <string>
#include <vector>

#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/view/events/focus.hpp"
#include "host/uikit/view/events/key.hpp"
#include "host/uikit/view/painting/frame_buffer.hpp"
#include "host/uikit/view/responder.hpp"
#include "host/uikit/view/session.hpp"
#include "host/uikit/view/view.hpp"
#include "host/uikit/view/window.hpp"
#include "tests/support/host_fixture.hpp"

namespace wispen::uikit {

struct HeardActions {
  std::vector<std::string> names;
};

/// Notes, by its selector's word, which action came.
class ActionListener : public objc::Authored<ActionListener, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestActionListener"};
  using Authored::Authored;
  std::vector<std::string>& heard() const { return state<HeardActions>().names; }
  std::vector<std::string> take() const { return std::exchange(heard(), {}); }

  template <objc::FixedString Word>
  void hear(const NSObject&) const {
    heard().emplace_back(Word.value);
  }
  void plain() const { heard().emplace_back("plain"); }
  static void define() {
    objc::Class<ActionListener>()
        .state<HeardActions>()
        .method<"plain", &ActionListener::plain>()
        .method<"down:", &ActionListener::hear<"down">>()
        .method<"up:", &ActionListener::hear<"up">>()
        .method<"outside:", &ActionListener::hear<"outside">>()
        .method<"drag:", &ActionListener::hear<"drag">>()
        .method<"exit:", &ActionListener::hear<"exit">>()
        .method<"enter:", &ActionListener::hear<"enter">>()
        .method<"cancel:", &ActionListener::hear<"cancel">>()
        .method<"changed:", &ActionListener::hear<"changed">>()
        .method<"first:", &ActionListener::hear<"first">>()
        .method<"second:", &ActionListener::hear<"second">>()
        .register_class();
  }
};

class ScreenTest : public wispen::testing::HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    ActionListener::define();
    listener_ = objc::make<ActionListener>();
    window_ = objc::make<UIWindow>();
    window_.setBackgroundColor(UIColor::whiteColor());
    window_.makeKeyAndVisible();
  }
  void TearDown() override {
    focus(UIView());
    window_ = UIWindow();
    listener_ = ActionListener();
    HostTest::TearDown();
  }

  static Session& session() { return *Session::current(); }
  static void wait(int milliseconds) {
    ASSERT_TRUE(session().loop().advance(std::chrono::milliseconds(milliseconds)));
  }
  void show(const UIView& view, const Rect& frame) {
    view.setFrame(frame);
    window_.addSubview(view);
    window_.layoutIfNeeded();
  }
  void hear_all(const UIControl& control) {
    const auto on = [&](objc::Selector action, NSUInteger events) {
      control.addTarget(listener_, action, events);
    };
    on(objc::selector<"down:">(), UIControlEventTouchDown);
    on(objc::selector<"up:">(), UIControlEventTouchUpInside);
    on(objc::selector<"outside:">(), UIControlEventTouchUpOutside);
    on(objc::selector<"cancel:">(), UIControlEventTouchCancel);
    on(objc::selector<"changed:">(), UIControlEventValueChanged);
  }

  static void press(Point place) { session().touches().began(place); }
  /// In steps, as a hand moves.
  static void drag(Point from, Point to) {
    constexpr int kSteps = 10;
    for (int i = 1; i <= kSteps; ++i) {
      ASSERT_TRUE(session().loop().advance(std::chrono::milliseconds(16)));
      const double part = static_cast<double>(i) / kSteps;
      session().touches().moved({from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part});
    }
  }
  static void lift(Point place) { session().touches().ended(place); }
  static void tap(Point place) {
    press(place);
    lift(place);
  }
  static Point middle(const UIView& view) {
    const Rect rect = view.convertRectToView(view.bounds(), UIView());
    return {rect.mid_x(), rect.mid_y()};
  }
  static bool key(KeyCode code, bool shift = false) {
    return press_key({.code = code, .text = "", .shift = shift, .command = false});
  }
  static bool type(const std::string& text) {
    return press_key({.code = KeyCode::Text, .text = text, .shift = false, .command = false});
  }
  static void set_right_to_left(bool turned) {
    DisplaySettings settings = display_settings();
    settings.right_to_left = turned;
    set_display_settings(settings);
    session().traits_changed();
  }
  /// Pixels as 0xAARRGGBB, at scale 1.
  static std::uint32_t pixel(Point place) {
    const auto picture = take_picture(session(), 1);
    if (!picture) return 0;
    const graphics::PixelView view = picture->pixels()->view();
    return view.row(static_cast<int>(place.y))[static_cast<int>(place.x)];
  }

  ActionListener listener_;
  UIWindow window_;
};

}  // namespace wispen::uikit
