// tests/host/uikit/view/events/touch_test.cpp: touches, and the event that they come in.

#include "tests/host/uikit/screen_fixture.hpp"

namespace wispen::uikit {
namespace {

NSUInteger touches_seen = 0;

class Toucher : public objc::Authored<Toucher, UIView> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestToucher"};
  using Authored::Authored;
  void began(const NSObject&, const NSObject& event) const {
    touches_seen = objc::send<"count", NSUInteger>(objc::send<"allTouches", NSObject>(event));
  }
};

class TouchTest : public ScreenTest {};

TEST_F(TouchTest, AnEventKnowsAllItsTouches) {
  objc::Class<Toucher>().method<"touchesBegan:withEvent:", &Toucher::began>().register_class();
  const auto view = objc::make<Toucher>();
  show(view, {{0, 0}, {100, 100}});
  tap({50, 50});
  EXPECT_EQ(touches_seen, 1U);
}

}  // namespace
}  // namespace wispen::uikit
