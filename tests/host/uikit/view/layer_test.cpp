// tests/host/uikit/view/layer_test.cpp: what a layer keeps for its view.

#include "tests/host/uikit/screen_fixture.hpp"

namespace wispen::uikit {
namespace {

class LayerTest : public ScreenTest {};

TEST_F(LayerTest, ALayerKeepsItsShadowAndIsAsClearAsItsView) {
  const UIView view = objc::make<UIView>();
  const CALayer layer = view.layer();
  objc::send<"setOpacity:">(layer, 0.25F);
  EXPECT_EQ((objc::send<"opacity", float>(layer)), 0.25F);
  EXPECT_EQ(view.alpha(), 0.25);
  layer.setShadowOffset({3, 4});
  EXPECT_EQ((objc::send<"shadowOffset", CGSize>(layer)), (CGSize{3, 4}));
  layer.setShadowColor(UIColor::redColor().CGColor());
  EXPECT_TRUE(
      CGColorEqualToColor((objc::send<"shadowColor", CGColorRef>(layer)), UIColor::redColor().CGColor()));
}

}  // namespace
}  // namespace wispen::uikit
