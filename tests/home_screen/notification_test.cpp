// tests/home_screen/notification_test.cpp: what the settings make of an expanded notification.

#include "tests/home_screen/parts_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::IsSupersetOf;

constexpr char kTitle[] = "Harbour Trip";
constexpr char kSubtitle[] = "Ida, Letters";

using NotificationTest = PartsTest;

TEST_F(NotificationTest, HasTitleTextAndActions) {
  EXPECT_THAT(texts(notification({})), IsSupersetOf({kTitle, kSubtitle, "Reply", "Mark as Read", "Mute"}));
}

TEST_F(NotificationTest, TakesTheColourOfItsAppsIcon) {
  const UIView view = notification({});
  EXPECT_EQ(hex(fill(view).backgroundColor()), hex(dominant(apps->notifying())));
  EXPECT_NEAR(alpha(fill(view).backgroundColor()), 0.85, 1e-9);
  EXPECT_NEAR(alpha(fill(notification({{"expandedBackgroundOpacity", 0.5}})).backgroundColor()), 0.5, 1e-9);
}

TEST_F(NotificationTest, HasColoursOfItsOwnApartFromTheMenus) {
  const UIView own = notification({{"notificationMode", "custom"}, {"notificationColor", "#3A506B"}});
  EXPECT_EQ(hex(fill(own).backgroundColor()), "#3A506B");
  const std::string plain = hex(fill(notification({{"enabled", false}})).backgroundColor());
  EXPECT_EQ(hex(fill(notification({{"notificationMode", "none"}})).backgroundColor()), plain);
  EXPECT_NE(hex(fill(notification({{"regularMode", "none"}})).backgroundColor()), plain);
  EXPECT_EQ(hex(fill(notification({{"keepSystemApps", true}})).backgroundColor()), plain);
}

TEST_F(NotificationTest, ColoursItsTitleItsSubtitleAndItsBackgroundEachWhereItIsTo) {
  const std::string green = hex(dominant(apps->notifying()));
  const auto title = [&](const Values& values) {
    return hex(label(notification(values), kTitle).textColor());
  };
  const auto subtitle = [&](const Values& values) {
    return hex(label(notification(values), kSubtitle).textColor());
  };
  EXPECT_EQ(title({{"expandedBackground", false}}), green);
  EXPECT_NE(title({{"expandedBackground", false}, {"expandedTitle", false}}), green);
  EXPECT_NE(subtitle({{"expandedBackground", false}}), green);
  EXPECT_EQ(subtitle({{"expandedBackground", false}, {"expandedSubtitle", true}}), green);
  EXPECT_NE(hex(fill(notification({{"expandedBackground", false}})).backgroundColor()), green);
}

TEST_F(NotificationTest, HasTheCornersThatAreSet) {
  EXPECT_EQ(notification({}).layer().cornerRadius(), 13);
  EXPECT_EQ(notification({{"expandedCornerRadius", 0.0}}).layer().cornerRadius(), 0);
  EXPECT_EQ(notification({{"expandedCornerRadius", 33.0}}).layer().cornerRadius(), 33);
  EXPECT_EQ(notification({{"expandedCornerRadius", 33.0}, {"enabled", false}}).layer().cornerRadius(), 13);
}

}  // namespace
}  // namespace wispen::testing
