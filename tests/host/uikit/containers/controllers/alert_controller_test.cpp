// tests/host/uikit/containers/controllers/alert_controller_test.cpp: what an alert keeps.

#include "tests/host/uikit/screen_fixture.hpp"
#include "tests/support/kept.hpp"

namespace wispen::uikit {
namespace {

using wispen::testing::expect_kept;

class AlertControllerTest : public ScreenTest {};

TEST_F(AlertControllerTest, AnAlertKeepsWhatItSays) {
  constexpr NSInteger kAlert = 1;
  const auto alert = objc::send<"alertControllerWithTitle:message:preferredStyle:", UIAlertController>(
      objc::class_for<UIAlertController>(), "Title"_ns, "Old"_ns, kAlert);
  const NSString message = "New"_ns;
  expect_kept<"message", "setMessage:">(alert, message);
  EXPECT_EQ((objc::send<"preferredStyle", NSInteger>(alert)), kAlert);
  EXPECT_FALSE((objc::send<"preferredAction", NSObject>(alert)));
}

}  // namespace
}  // namespace wispen::uikit
