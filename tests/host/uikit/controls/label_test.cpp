// tests/host/uikit/controls/label_test.cpp: text that gives way, and other small controls.

#include "tests/host/uikit/screen_fixture.hpp"
#include "tests/support/kept.hpp"

namespace wispen::uikit {
namespace {

using wispen::testing::expect_kept;

class LabelTest : public ScreenTest {};

TEST_F(LabelTest, WrapsAtItsPreferredWidth) {
  const UILabel label = objc::make<UILabel>();
  label.setNumberOfLines(0);
  label.setText("Several words that need more than one line"_ns);
  const double one_line = label.intrinsicContentSize().height;
  expect_kept<"preferredMaxLayoutWidth", "setPreferredMaxLayoutWidth:">(label, 100.0);
  EXPECT_GT(label.intrinsicContentSize().height, one_line);
}

TEST_F(LabelTest, ShrinksItsTextAsFarAsItMay) {
  const UILabel label = objc::make<UILabel>();
  label.setText("Several words that do not fit"_ns);
  show(label, {{0, 0}, {100, 30}});
  const auto dark_pixels = [] {
    int dark = 0;
    for (int x = 0; x < 100; ++x) {
      for (int y = 0; y < 30; ++y) dark += (pixel({double(x), double(y)}) & 0xFFU) < 0x80U ? 1 : 0;
    }
    return dark;
  };
  const int cut = dark_pixels();
  expect_kept<"adjustsFontSizeToFitWidth", "setAdjustsFontSizeToFitWidth:">(label, true);
  expect_kept<"minimumScaleFactor", "setMinimumScaleFactor:">(label, 0.5);
  window_.layoutIfNeeded();
  EXPECT_NE(dark_pixels(), cut);
}

}  // namespace
}  // namespace wispen::uikit
