// tests/host/uikit/values/symbol_configuration_test.cpp: symbols, and their configurations.

#include "host/uikit/values/symbol_configuration.hpp"

#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/image.hpp"
#include "platform/UIKit.hpp"
#include "tests/support/host_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class SymbolImageTest : public HostTest {};

TEST_F(SymbolImageTest, IsATemplateAtTheDisplaysScale) {
  const UIImage symbol = UIImage::systemImageNamed("gear"_ns);
  ASSERT_TRUE(symbol);
  EXPECT_TRUE(symbol.isSymbolImage());
  EXPECT_TRUE(uikit::image_of(symbol)->is_template());
  EXPECT_EQ(symbol.scale(), uikit::display_settings().scale);
}

TEST_F(SymbolImageTest, GrowsWithItsConfiguration) {
  const UIImage small = UIImage::systemImageNamed("gear"_ns);
  const UIImage large = UIImage::systemImageNamed(
      "gear"_ns, UIImageSymbolConfiguration::configurationWithPointSize(34, UIImageSymbolWeight::Bold));
  EXPECT_GT(large.size().height, 1.5 * small.size().height);
  const UIImage changed =
      small.imageWithConfiguration(UIImageSymbolConfiguration::configurationWithPointSize(34));
  EXPECT_GT(changed.size().height, 1.5 * small.size().height);
  EXPECT_TRUE(changed.isSymbolImage());
}

TEST_F(SymbolImageTest, KeepsTintAndRenderingModeWhenItIsConfigured) {
  const UIImage changed =
      UIImage::systemImageNamed("gear"_ns)
          .imageWithTintColor(UIColor::redColor(), UIImageRenderingMode::AlwaysOriginal)
          .imageWithConfiguration(UIImageSymbolConfiguration::configurationWithPointSize(30));
  EXPECT_EQ(changed.renderingMode(), UIImageRenderingMode::AlwaysOriginal);
  const auto& pixels = *uikit::image_of(changed)->pixels();
  bool red = false;
  for (int x = 0; x < pixels.width(); ++x) red |= pixels.at(x, pixels.height() / 2) == 0xFFFF0000u;
  EXPECT_TRUE(red);
}

TEST_F(SymbolImageTest, WithAnUnknownNameIsABoxAndReported) {
  EXPECT_TRUE(UIImage::systemImageNamed("no.such.symbol"_ns));
  EXPECT_FALSE(UIImage::systemImageNamed(""_ns));
  EXPECT_THAT(problems(), ElementsAre(HasSubstr("no.such.symbol")));
}

TEST_F(SymbolImageTest, ConfigurationsAddUpAndTheLaterWins) {
  const auto sized = UIImageSymbolConfiguration::configurationWithPointSize(20);
  const auto look = uikit::symbol_look_of(sized.configurationByApplyingConfiguration(
      UIImageSymbolConfiguration::configurationWithWeight(UIImageSymbolWeight::Heavy)));
  EXPECT_EQ(look.point_size, 20);
  EXPECT_EQ(look.weight, graphics::font_weight::kHeavy);
  EXPECT_FALSE(look.scale);
  const auto styled = UIImageSymbolConfiguration::configurationWithTextStyle(UIFontTextStyleTitle1);
  EXPECT_EQ(uikit::symbol_look_of(sized.configurationByApplyingConfiguration(styled)).point_size, 28);
  EXPECT_TRUE(sized.isEqual(UIImageSymbolConfiguration::configurationWithPointSize(20)));
}

TEST_F(SymbolImageTest, AnImageThatIsNoSymbolIgnoresAConfiguration) {
  const UIImage image = objc::make<UIImage>();
  EXPECT_EQ(image.imageWithConfiguration(UIImageSymbolConfiguration::configurationWithPointSize(30)), image);
}

}  // namespace
}  // namespace wispen::testing
