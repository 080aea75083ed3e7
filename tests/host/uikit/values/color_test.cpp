// tests/host/uikit/values/color_test.cpp: UIColor by its selectors.

#include "host/uikit/values/color.hpp"

#include <string>

#include "host/graphics/system_colours.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "tests/support/host_fixture.hpp"

namespace wispen::testing {
namespace {

using graphics::Appearance;
using graphics::Colour;

void show(Appearance appearance) {
  auto settings = uikit::display_settings();
  settings.appearance = appearance;
  uikit::set_display_settings(settings);
}

/// A stand-in for the traits that views will give.
class Traits : public objc::Authored<Traits, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestTraits"};
  using Authored::Authored;
  static Traits of(NSInteger style) {
    Traits traits = objc::make<Traits>();
    traits.state<NSInteger>() = style;
    return traits;
  }
  NSInteger userInterfaceStyle() const { return state<NSInteger>(); }
  static void define() {
    objc::Class<Traits>()
        .state<NSInteger>()
        .method<"userInterfaceStyle", &Traits::userInterfaceStyle>()
        .register_class();
  }
};

class ColorTest : public HostTest {};

TEST_F(ColorTest, KeepsRedGreenBlueAndAlphaAsGiven) {
  const UIColor color = UIColor::colorWithRed(1.2, -0.25, 0.5, 0.125);
  CGFloat red = 0;
  CGFloat green = 0;
  CGFloat blue = 0;
  CGFloat alpha = 0;
  EXPECT_TRUE(color.getRed(&red, &green, &blue, &alpha));
  EXPECT_EQ(red, 1.2);
  EXPECT_EQ(green, -0.25);
  EXPECT_EQ(blue, 0.5);
  EXPECT_EQ(alpha, 0.125);
}

TEST_F(ColorTest, LetsACallerLeaveComponentsOut) {
  CGFloat saturation = -1;
  EXPECT_TRUE(UIColor::redColor().getHue(nullptr, &saturation, nullptr, nullptr));
  EXPECT_EQ(saturation, 1);
  EXPECT_TRUE(UIColor::redColor().getRed(nullptr, nullptr, nullptr, nullptr));
  EXPECT_TRUE(UIColor::redColor().getWhite(nullptr, nullptr));
}

TEST_F(ColorTest, ReadsHueSaturationAndBrightness) {
  CGFloat hue = -1;
  CGFloat saturation = -1;
  CGFloat brightness = -1;
  CGFloat alpha = -1;
  UIColor::colorWithRed(0.25, 0.5, 0.25, 0.75).getHue(&hue, &saturation, &brightness, &alpha);
  EXPECT_DOUBLE_EQ(hue, 1.0 / 3);
  EXPECT_EQ(saturation, 0.5);
  EXPECT_EQ(brightness, 0.5);
  EXPECT_EQ(alpha, 0.75);
}

TEST_F(ColorTest, MakesAColourOfHueSaturationAndBrightness) {
  EXPECT_TRUE(UIColor::colorWithHue(2.0 / 3, 1, 1, 1).isEqual(UIColor::blueColor()));
}

TEST_F(ColorTest, ReadsTheWhiteOfAGreyOfEitherSpace) {
  CGFloat white = -1;
  CGFloat alpha = -1;
  UIColor::colorWithWhite(0.25, 0.5).getWhite(&white, &alpha);
  EXPECT_EQ(white, 0.25);
  EXPECT_EQ(alpha, 0.5);
  UIColor::colorWithRed(0.75, 0.75, 0.75, 1).getWhite(&white, &alpha);
  EXPECT_EQ(white, 0.75);
  EXPECT_EQ(alpha, 1);
}

TEST_F(ColorTest, AnswersEveryNameOfTheTable) {
  for (const std::string_view name : graphics::colour_names()) {
    const std::string selector = std::string(name) + "Color";
    const objc::ClassRef cls = objc::class_for<UIColor>();
    const bool answered =
        objc::send<"respondsToSelector:", bool>(cls, objc::Selector::named(selector.c_str()));
    ASSERT_TRUE(answered) << selector;
  }
  EXPECT_EQ(uikit::colour_of(UIColor::secondaryLabelColor()), *graphics::named_colour("secondaryLabel"));
  EXPECT_EQ(uikit::colour_of(UIColor::systemGray6Color()), *graphics::named_colour("systemGray6"));
  EXPECT_EQ(uikit::colour_of(UIColor::brownColor()), Colour::rgb(0.6, 0.4, 0.2));
}

TEST_F(ColorTest, GivesOneObjectForAName) { EXPECT_EQ(UIColor::redColor(), UIColor::redColor()); }

TEST_F(ColorTest, HoldsBlackAndWhiteInTheGreySpace) {
  const CGColorRef black = UIColor::blackColor().CGColor();
  EXPECT_EQ(CGColorGetNumberOfComponents(black), 2u);
  EXPECT_EQ(CGColorSpaceGetModel(CGColorGetColorSpace(black)), kCGColorSpaceModelMonochrome);
  EXPECT_EQ(CGColorGetComponents(UIColor::whiteColor().CGColor())[0], 1);
}

TEST_F(ColorTest, ShowsADynamicColourInTheDisplaysAppearance) {
  const UIColor label = UIColor::labelColor();
  CGFloat red = -1;
  label.getRed(&red, nullptr, nullptr, nullptr);
  EXPECT_EQ(red, 0);
  EXPECT_EQ(CGColorGetComponents(label.CGColor())[0], 0);
  show(Appearance::Dark);
  label.getRed(&red, nullptr, nullptr, nullptr);
  EXPECT_EQ(red, 1);
  EXPECT_EQ(CGColorGetComponents(label.CGColor())[0], 1);
}

TEST_F(ColorTest, KeepsBothLooksWhenItsAlphaIsReplaced) {
  const Colour faded = uikit::colour_of(UIColor::labelColor().colorWithAlphaComponent(0.5));
  EXPECT_TRUE(faded.is_dynamic());
  EXPECT_EQ(faded.rgba(Appearance::Dark).alpha, 0.5);
}

TEST_F(ColorTest, ResolvesForTraits) {
  Traits::define();
  const UIColor dark = UIColor::labelColor().resolvedColorWithTraitCollection(Traits::of(2));
  EXPECT_FALSE(uikit::colour_of(dark).is_dynamic());
  EXPECT_EQ(uikit::colour_of(dark).rgba().red, 1);
  show(Appearance::Dark);
  EXPECT_EQ(
      uikit::colour_of(UIColor::labelColor().resolvedColorWithTraitCollection(Traits::of(1))).rgba().red, 0);
  EXPECT_EQ(
      uikit::colour_of(UIColor::labelColor().resolvedColorWithTraitCollection(Traits::of(0))).rgba().red, 1);
}

TEST_F(ColorTest, AsksAProviderOnceForEachAppearance) {
  int asked = 0;
  const objc::Block<UIColor(NSObject)> provider(
      [&asked](const NSObject&) { return ++asked == 1 ? UIColor::redColor() : UIColor::blueColor(); });
  const Colour colour = uikit::colour_of(UIColor::colorWithDynamicProvider(provider));
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(colour.rgba(Appearance::Light).red, 1);
  EXPECT_EQ(colour.rgba(Appearance::Dark).blue, 1);
}

TEST_F(ColorTest, IsEqualByComponentsAndSpace) {
  const UIColor red = UIColor::colorWithRed(1, 0, 0, 1);
  EXPECT_TRUE(red.isEqual(UIColor::redColor()));
  EXPECT_EQ(red.hash(), UIColor::redColor().hash());
  EXPECT_FALSE(red.isEqual(UIColor::colorWithRed(1, 0, 0, 0.5)));
  EXPECT_FALSE(UIColor::whiteColor().isEqual(UIColor::colorWithRed(1, 1, 1, 1)));
  EXPECT_FALSE(red.isEqual("red"_ns));
}

TEST_F(ColorTest, DescribesItsSpaceAndComponents) {
  EXPECT_EQ(UIColor::orangeColor().description().utf8(), "UIExtendedSRGBColorSpace 1 0.5 0 1");
  EXPECT_EQ(UIColor::clearColor().description().utf8(), "UIExtendedGrayColorSpace 0 0");
}

TEST_F(ColorTest, IsMadeByItsInitialisersToo) {
  const auto rgb = objc::allocate<UIColor>().initialize<"initWithRed:green:blue:alpha:">(0.0, 1.0, 0.0, 1.0);
  EXPECT_TRUE(rgb.isEqual(UIColor::greenColor()));
  const auto grey = objc::allocate<UIColor>().initialize<"initWithWhite:alpha:">(0.0, 1.0);
  EXPECT_TRUE(grey.isEqual(UIColor::blackColor()));
  const auto copied = objc::allocate<UIColor>().initialize<"initWithCGColor:">(rgb.CGColor());
  EXPECT_TRUE(copied.isEqual(rgb));
  EXPECT_TRUE(UIColor::colorWithCGColor(grey.CGColor()).isEqual(grey));
}

TEST_F(ColorTest, ACopyIsTheColourItself) {
  const UIColor red = UIColor::colorWithRed(1, 0, 0, 1);
  const auto count = red.retainCount();
  {
    const auto copy = objc::send<"copy", UIColor>(red);
    EXPECT_EQ(copy, red);
    EXPECT_EQ(red.retainCount(), count + 1);
  }
  EXPECT_EQ(red.retainCount(), count);
}

TEST_F(ColorTest, GoesToThePainterAndBack) {
  EXPECT_EQ(uikit::colour_of(UIColor()), Colour());
  const Colour dynamic = Colour::dynamic(Colour::grey(0.5), Colour::rgb(1, 0, 0));
  EXPECT_EQ(uikit::colour_of(uikit::color_from(dynamic)), dynamic);
}

}  // namespace
}  // namespace wispen::testing
