// tests/host/graphics/colour_test.cpp: a colour value, fixed or different by appearance.

#include "host/graphics/colour.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "host/graphics/system_colours.hpp"

namespace wispen::graphics {
namespace {

TEST(Colours, KeepComponentsOutsideTheUsualRange) {
  const Colour colour = Colour::rgb(1.2, -0.5, 0.25, 2);
  EXPECT_EQ(colour.rgba(), (Rgba{1.2, -0.5, 0.25, 2}));
}

TEST(Colours, GreyHasTwoComponentsAndConvertsToThreeEqualOnes) {
  const Components grey = Colour::grey(0.25, 0.5).resolved(Appearance::Light);
  EXPECT_EQ(grey.space(), ColourSpace::Grey);
  EXPECT_EQ(grey.count(), 2);
  EXPECT_EQ(grey.to_rgba(), (Rgba{0.25, 0.25, 0.25, 0.5}));
}

TEST(Colours, HueSaturationAndBrightnessGoThereAndBack) {
  for (double hue = 0; hue < 1; hue += 0.07) {
    const Hsba back = Colour::hsb(hue, 0.6, 0.8, 0.5).to_hsb();
    EXPECT_NEAR(back.hue, hue, 1e-12);
    EXPECT_NEAR(back.saturation, 0.6, 1e-12);
    EXPECT_NEAR(back.brightness, 0.8, 1e-12);
    EXPECT_EQ(back.alpha, 0.5);
  }
}

TEST(Colours, BlackAndGreysHaveNoSaturation) {
  EXPECT_EQ(Colour::rgb(0, 0, 0).to_hsb().saturation, 0);
  EXPECT_EQ(Colour::rgb(0.5, 0.5, 0.5).to_hsb().hue, 0);
  EXPECT_EQ(Colour::rgb(1, 0.5, 0).to_hsb().saturation, 1);
}

TEST(Colours, PremultiplicationClampsAndRounds) {
  EXPECT_EQ(premultiplied_argb({1.5, 0.5, -1, 1}), 0xFFFF8000u);
  EXPECT_EQ(premultiplied_argb({1, 1, 1, 0.5}), 0x80808080u);
  EXPECT_EQ(premultiplied_argb({NAN, 1, 0, 1}), 0xFF00FF00u);
}

TEST(SystemColours, DifferByAppearanceOnlyWhenResolved) {
  const Colour label = *named_colour("label");
  EXPECT_TRUE(label.is_dynamic());
  EXPECT_EQ(label.rgba(Appearance::Light), (Rgba{0, 0, 0, 1}));
  EXPECT_EQ(label.rgba(Appearance::Dark), (Rgba{1, 1, 1, 1}));
  EXPECT_EQ(label.with_alpha(0.5).rgba(Appearance::Dark).alpha, 0.5);
}

TEST(SystemColours, HaveLighterGroundsWhereSomethingIsPresentedOverTheDark) {
  EXPECT_EQ(elevated(Appearance::Light), Appearance::Light);
  EXPECT_EQ(elevated(Appearance::Dark), Appearance::DarkElevated);
  const Colour ground = *named_colour("systemBackground");
  EXPECT_EQ(premultiplied_argb(ground.rgba(Appearance::Dark)), 0xFF000000U);
  EXPECT_EQ(premultiplied_argb(ground.rgba(Appearance::DarkElevated)), 0xFF1C1C1EU);
  EXPECT_EQ(ground.with_alpha(0.5).rgba(Appearance::DarkElevated).red, 0x1C / 255.0);
  const Colour label = *named_colour("label");
  EXPECT_EQ(label.rgba(Appearance::DarkElevated), label.rgba(Appearance::Dark));
}

TEST(SystemColours, HaveThePlatformsValues) {
  EXPECT_EQ(premultiplied_argb(named_colour("systemGray2")->rgba(Appearance::Dark)), 0xFF636366u);
  EXPECT_EQ(premultiplied_argb(named_colour("systemBlue")->rgba()), 0xFF007AFFu);
  EXPECT_NEAR(named_colour("separator")->rgba().alpha, 0.29, 1e-12);
  EXPECT_EQ(named_colour("orange")->rgba(), (Rgba{1, 0.5, 0, 1}));
  EXPECT_EQ(named_colour("darkGray")->resolved(Appearance::Light).space(), ColourSpace::Grey);
  EXPECT_EQ(named_colour("clear")->rgba(), (Rgba{0, 0, 0, 0}));
  EXPECT_FALSE(named_colour("mauve"));
}

TEST(SystemColours, AreNamedOnce) {
  const auto names = colour_names();
  EXPECT_EQ(std::set<std::string_view>(names.begin(), names.end()).size(), names.size());
  for (const std::string_view name : names) EXPECT_TRUE(named_colour(name)) << name;
}

}  // namespace
}  // namespace wispen::graphics
