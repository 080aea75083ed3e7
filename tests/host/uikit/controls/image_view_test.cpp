// tests/host/uikit/controls/image_view_test.cpp: an image, and the other one while it is highlighted.

#include "tests/host/uikit/screen_fixture.hpp"
#include "tests/support/kept.hpp"

namespace wispen::uikit {
namespace {

using wispen::testing::expect_kept;

class ImageViewTest : public ScreenTest {};

TEST_F(ImageViewTest, AnImageViewShowsItsOtherImageWhileItIsHighlighted) {
  const UIImageView view = objc::make<UIImageView>();
  view.setImage(UIImage::systemImageNamed("gear"_ns));
  const UIImage filled = UIImage::systemImageNamed("square.fill"_ns);
  expect_kept<"highlightedImage", "setHighlightedImage:">(view, filled);
  show(view, {{0, 0}, {40, 40}});
  const auto before = pixel({20, 20});
  objc::send<"setHighlighted:">(view, true);
  EXPECT_NE(pixel({20, 20}), before);
}

}  // namespace
}  // namespace wispen::uikit
