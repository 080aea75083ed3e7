// tests/home_screen/menu_test.cpp: what the settings make of a menu.

#include "tests/home_screen/parts_fixture.hpp"

namespace wispen::testing {
namespace {

using home_screen::kIconPlateTag;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using MenuTest = PartsTest;

TEST_F(MenuTest, TakesTheDominantOrTheSecondColourOfTheIconOrAFixedOne) {
  const home_screen::App& app = apps->pressed();
  ASSERT_NE(hex(dominant(app)), hex(second(app)));  // else nothing could be told
  EXPECT_EQ(hex(fill(menu({})).backgroundColor()), hex(dominant(app)));
  EXPECT_EQ(hex(fill(menu({{"colorSource", "second"}})).backgroundColor()), hex(second(app)));
  EXPECT_EQ(hex(fill(menu({{"colorSource", "fixed"}, {"regularColor", "#123456"}})).backgroundColor()),
            "#123456");
}

TEST_F(MenuTest, TakesItsOwnColourWhereItIsToOrDoesNotFollowTheIcon) {
  EXPECT_EQ(hex(fill(menu({{"regularMode", "custom"}, {"regularColor", "#F2C14E"}})).backgroundColor()),
            "#F2C14E");
  EXPECT_EQ(hex(fill(menu({{"regularAutoColor", false}, {"regularColor", "#F2C14E"}})).backgroundColor()),
            "#F2C14E");
  EXPECT_EQ(hex(fill(menu({{"regularMode", "custom"}, {"regularColor", "nonsense"}})).backgroundColor()),
            "#000000");
}

TEST_F(MenuTest, IsPlainWhereColoursAreOffAndInAnySystemAppWhereTheseAreKept) {
  const std::string plain = hex(fill(menu({{"enabled", false}})).backgroundColor());
  EXPECT_NE(plain, hex(dominant(apps->pressed())));
  EXPECT_EQ(hex(fill(menu({{"regularMode", "none"}})).backgroundColor()), plain);
  EXPECT_NE(hex(fill(menu({{"keepSystemApps", true}})).backgroundColor()), plain);
  const UIView of_system = home_screen::make_menu(apps->dock[1], settings({{"keepSystemApps", true}}), false);
  EXPECT_EQ(hex(fill(of_system).backgroundColor()), plain);
}

TEST_F(MenuTest, IsPlainWithoutTheBundlesMethods) {
  // An image class without the category answers nothing; a nil icon does the same.
  home_screen::App app = apps->pressed();
  app.icon = UIImage();
  EXPECT_FALSE(home_screen::colour_for(app, home_screen::Settings(), home_screen::ColourSettings(), false));
}

TEST_F(MenuTest, LightensDarkIconsOnlyInTheDarkAndWhereItIsTo) {
  const std::string found = hex(dominant(apps->pressed()));
  ASSERT_TRUE(is_dark(dominant(apps->pressed())));
  EXPECT_EQ(hex(fill(menu({}, false)).backgroundColor()), found);
  EXPECT_EQ(hex(fill(menu({{"adaptDarkIcons", false}}, true)).backgroundColor()), found);
  EXPECT_FALSE(is_dark(fill(menu({}, true)).backgroundColor()));
}

TEST_F(MenuTest, IsMoreOrLessColourful) {
  double saturation = -1;
  fill(menu({{"colorIntensity", 0.0}})).backgroundColor().getHue(nullptr, &saturation, nullptr, nullptr);
  EXPECT_EQ(saturation, 0);
  fill(menu({{"colorIntensity", 2.0}})).backgroundColor().getHue(nullptr, &saturation, nullptr, nullptr);
  EXPECT_EQ(saturation, 1);
}

TEST_F(MenuTest, HasItsBackgroundInColourAndAsOpaqueAsItIsSet) {
  EXPECT_NEAR(alpha(fill(menu({})).backgroundColor()), 0.85, 1e-9);
  EXPECT_NEAR(alpha(fill(menu({{"backgroundOpacity", 0.25}})).backgroundColor()), 0.25, 1e-9);
  EXPECT_EQ(hex(fill(menu({{"backgroundDynamic", false}})).backgroundColor()),
            hex(fill(menu({{"regularMode", "none"}})).backgroundColor()));
  EXPECT_EQ(alpha(fill(menu({{"backgroundDynamic", false}, {"vitrelleBackground", true}})).backgroundColor()),
            0);
}

TEST_F(MenuTest, HasABorderOfItsColourAndWidth) {
  EXPECT_EQ(menu({}).layer().borderWidth(), 0);
  EXPECT_EQ(menu({{"borderEnabled", true}}).layer().borderWidth(), 1.5);
  EXPECT_EQ(menu({{"borderEnabled", true}, {"borderWidth", 6.0}}).layer().borderWidth(), 6);
  EXPECT_EQ(menu({{"borderEnabled", true}, {"enabled", false}}).layer().borderWidth(), 0);
}

TEST_F(MenuTest, HasTheSystemsCornersOrItsOwn) {
  EXPECT_EQ(menu({{"cornerRadius", 30.0}}).layer().cornerRadius(), 13);
  EXPECT_EQ(menu({{"cornerRadius", 30.0}, {"cornerRadiusEnabled", true}}).layer().cornerRadius(), 30);
}

TEST_F(MenuTest, LeavesOutTheEntriesThatAreHidden) {
  EXPECT_THAT(texts(menu({})), ElementsAre("New Page", "Search", "Edit Home Screen", "Share", "Remove App"));
  const UIView some = menu({{"hiddenCellsEnabled", true}, {"hiddenCells", "Remove App;Share"}});
  EXPECT_THAT(texts(some), ElementsAre("New Page", "Search", "Edit Home Screen"));
  EXPECT_THAT(separators(some), SizeIs(2));
  const UIView group = menu({{"hiddenCellsEnabled", true}, {"hiddenCells", "New Page;Search"}});
  EXPECT_THAT(separators(group), SizeIs(2));  // no bold line above the first row
  const UIView none = menu(
      {{"hiddenCellsEnabled", true}, {"hiddenCells", "New Page;Search;Edit Home Screen;Share;Remove App"}});
  EXPECT_EQ(none.frame().size.height, 0);
}

TEST_F(MenuTest, HidesItsIconsOrPutsThemOnPlates) {
  const auto pictures = [](const UIView& view) {
    std::size_t count = 0;
    for (const UIView& each : all_in(view)) count += objc::cast_or_nil<UIImageView>(each) ? 1 : 0;
    return count;
  };
  EXPECT_EQ(pictures(menu({})), 5u);
  EXPECT_EQ(pictures(menu({{"iconsHidden", true}})), 0u);
  EXPECT_THAT(tagged(menu({}), kIconPlateTag), IsEmpty());
  const auto plates = tagged(menu({{"iconBackground", true}, {"iconBackgroundOpacity", 0.3}}), kIconPlateTag);
  ASSERT_THAT(plates, SizeIs(5));
  EXPECT_NEAR(alpha(plates[0].backgroundColor()), 0.3, 1e-9);
  EXPECT_THAT(tagged(menu({{"iconBackground", true}, {"regularMode", "none"}}), kIconPlateTag), IsEmpty());
}

TEST_F(MenuTest, ColoursItsLabelsAndSetsTheirWeightAndOpacity) {
  const std::string violet = hex(dominant(apps->pressed()));
  EXPECT_EQ(hex(label(menu({{"backgroundDynamic", false}}), "Share").textColor()), violet);
  EXPECT_NE(hex(label(menu({{"backgroundDynamic", false}, {"labelColor", false}}), "Share").textColor()),
            violet);
  EXPECT_EQ(label(menu({{"menuLabelOpacity", 0.5}}), "Share").alpha(), 0.5);
  const std::string regular = label(menu({}), "Share").font().fontName().utf8();
  const std::string light = label(menu({{"labelWeight", "light"}}), "Share").font().fontName().utf8();
  const std::string bold = label(menu({{"labelWeight", "bold"}}), "Share").font().fontName().utf8();
  EXPECT_NE(regular, light);
  EXPECT_NE(regular, bold);
}

TEST_F(MenuTest, WritesLightOnDarkColoursAndDarkOnLightOnes) {
  for (const bool coloured : {false, true}) {
    const UIView on_dark =
        menu({{"labelColor", coloured}, {"regularMode", "custom"}, {"regularColor", "#201040"}});
    EXPECT_FALSE(is_dark(label(on_dark, "Share").textColor())) << coloured;
    const UIView on_light =
        menu({{"labelColor", coloured}, {"regularMode", "custom"}, {"regularColor", "#F2E14E"}});
    EXPECT_TRUE(is_dark(label(on_light, "Share").textColor())) << coloured;
  }
}

TEST_F(MenuTest, HasAWidgetThatIsColouredWhereItIsTo) {
  const auto widget = [&](const Values& values) {
    return hex(fill(home_screen::make_widget(apps->pressed(), settings(values), false)).backgroundColor());
  };
  EXPECT_EQ(widget({}), hex(dominant(apps->pressed())));
  EXPECT_EQ(widget({{"hsExpandedColor", false}}), widget({{"enabled", false}}));
}

}  // namespace
}  // namespace wispen::testing
