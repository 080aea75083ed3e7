// tests/host/uikit/controls/button_test.cpp: titles, images and their insets.

#include "tests/host/uikit/screen_fixture.hpp"
#include "tests/support/kept.hpp"

namespace wispen::uikit {
namespace {

using wispen::testing::expect_kept;

class ButtonContentTest : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    button_ = UIButton::buttonWithType(UIButtonType::Custom);
  }
  UIButton button_;
};

TEST_F(ButtonContentTest, HasATitleColourAndAnImageForEachState) {
  button_.setTitleColor(UIColor::redColor(), UIControlStateNormal);
  EXPECT_EQ((objc::send<"titleColorForState:", UIColor>(button_, NSUInteger{0})), UIColor::redColor());
  EXPECT_EQ((objc::send<"currentTitleColor", UIColor>(button_)), UIColor::redColor());
  const UIImage gear = UIImage::systemImageNamed("gear"_ns);
  button_.setImage(gear, UIControlStateNormal);
  EXPECT_EQ((objc::send<"imageForState:", UIImage>(button_, NSUInteger{0})), gear);
  EXPECT_EQ((objc::send<"imageForState:", UIImage>(button_, NSUInteger{UIControlStateDisabled})), gear);
}

TEST_F(ButtonContentTest, GrowsByItsInsets) {
  button_.setTitle("Title"_ns, UIControlStateNormal);
  const double width = button_.sizeThatFits({1000, 1000}).width;
  expect_kept<"contentEdgeInsets", "setContentEdgeInsets:">(button_, UIEdgeInsets{1, 10, 2, 20});
  EXPECT_EQ(button_.sizeThatFits({1000, 1000}).width, width + 30);
  expect_kept<"titleEdgeInsets", "setTitleEdgeInsets:">(button_, UIEdgeInsets{0, 4, 0, 0});
  expect_kept<"imageEdgeInsets", "setImageEdgeInsets:">(button_, UIEdgeInsets{0, 0, 0, 4});
}

TEST_F(ButtonContentTest, ShowsAnAttributedTitle) {
  const auto text = objc::allocate<NSAttributedString>().initialize<"initWithString:">("Fancy"_ns);
  objc::send<"setAttributedTitle:forState:">(button_, text, NSUInteger{0});
  show(button_, {{0, 0}, {200, 44}});
  EXPECT_EQ(button_.titleLabel().text().utf8(), "Fancy");
}

TEST_F(ButtonContentTest, PaintsABackgroundImage) {
  const UIImage image = UIImage::systemImageNamed("square.fill"_ns);
  objc::send<"setBackgroundImage:forState:">(button_, image, NSUInteger{0});
  show(button_, {{0, 0}, {60, 60}});
  EXPECT_NE(pixel({30, 30}), 0xFFFFFFFFU);
}

}  // namespace
}  // namespace wispen::uikit
