// tests/home_screen/settings_test.cpp: the file's dictionary, read by somebody who trusts nobody.

#include "home_screen/settings.hpp"

#include <cmath>
#include <limits>

#include "tests/home_screen/values.hpp"
#include "tests/support/host_fixture.hpp"

namespace wispen::testing {
namespace {

using home_screen::read_settings;
using home_screen::Settings;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using HomeScreenSettings = HostTest;

TEST_F(HomeScreenSettings, AreTheDefaultsOfTheRowsWhereNothingIsStored) {
  EXPECT_EQ(read_settings(NSDictionary()), Settings());
  EXPECT_EQ(read_settings(NSDictionary::dictionary()), Settings());
  load_shipped_bundle();  // whose lists are open to reading from now on
  // The rows say the same: a file that holds every row's default changes nothing.
  const auto all = NSMutableDictionary::dictionary();
  for (const char* const list : {"Root", "SepSettingsLS", "SepSettingsHS", "BackgroundSettings",
                                 "ContextMenuSettings", "ExpandedAdjusments"}) {
    const std::string file = std::string(WISPEN_TEST_BUNDLE) + "/" + list + ".plist";
    const auto items =
        NSDictionary::dictionaryWithContentsOfFile(NSString(file.c_str())).objectForKey<NSArray>("items"_ns);
    ASSERT_GT(items.count(), 0u) << file;
    for (NSUInteger i = 0; i < items.count(); ++i) {
      const auto row = items.objectAtIndex<NSDictionary>(i);
      const NSObject value = row.objectForKey("default"_ns);
      if (row.objectForKey("key"_ns) && value) all.setObject(value, row.objectForKey("key"_ns));
    }
  }
  ASSERT_GT(all.count(), 50u);
  EXPECT_EQ(read_settings(all), Settings());
}

TEST_F(HomeScreenSettings, AreReadByTheirKeys) {
  const Settings read = settings({{"enabled", false},
                                  {"colorSource", "second"},
                                  {"regularMode", "custom"},
                                  {"notificationColor", "#010203"},
                                  {"hsSeparatorThickness", 2.5},
                                  {"lsSeparatorStyle", "dotted"},
                                  {"backgroundBlur", "thick"},
                                  {"labelWeight", "bold"}});
  EXPECT_FALSE(read.enabled);
  EXPECT_EQ(read.source, home_screen::ColourSource::Second);
  EXPECT_EQ(read.menus.mode, home_screen::ColourMode::Custom);
  EXPECT_EQ(read.notifications.own, "#010203");
  EXPECT_EQ(read.menu_separators.thickness, 2.5);
  EXPECT_EQ(read.notification_separators.style, home_screen::LineStyle::Dotted);
  EXPECT_EQ(read.blur, home_screen::BlurStrength::Thick);
  EXPECT_EQ(read.label_weight, home_screen::LabelWeight::Bold);
}

TEST_F(HomeScreenSettings, OfAnotherTypeCountAsNotStored) {
  EXPECT_EQ(settings({{"enabled", "no"},
                      {"colorSource", 1.0},
                      {"regularMode", true},
                      {"regularColor", 5.0},
                      {"hsSeparatorThickness", "thick"},
                      {"colorIntensity", "1"},
                      {"hiddenCells", 1.0}}),
            Settings());
  const auto nested = NSMutableDictionary::dictionary();
  for (const char* const key : {"enabled", "colorSource", "cornerRadius", "hiddenCells"}) {
    nested.setObject(NSArray::array(), NSString(key));
  }
  EXPECT_EQ(read_settings(nested), Settings());
}

TEST_F(HomeScreenSettings, ThatAreNoneOfTheChoicesAreTheDefault) {
  EXPECT_EQ(settings({{"colorSource", "Second"}, {"regularMode", ""}, {"labelWeight", "black"}}), Settings());
}

TEST_F(HomeScreenSettings, OutOfTheirRangeAreItsNearestEnd) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(settings({{"hsSeparatorThickness", 1e300}}).menu_separators.thickness, 10);
  EXPECT_EQ(settings({{"hsSeparatorTrim", infinity}}).menu_separators.trim, 120);
  EXPECT_EQ(settings({{"cornerRadius", -infinity}}).corner_radius, 0);
  EXPECT_EQ(settings({{"menuLabelOpacity", 0.0}}).label_opacity, 0.2);
  EXPECT_EQ(settings({{"colorIntensity", std::nan("")}}).intensity, 1);
}

TEST_F(HomeScreenSettings, NameHiddenEntriesOnlyWhereTheyAreToBeHidden) {
  EXPECT_THAT(settings({{"hiddenCells", "Share"}}).hidden_entries, IsEmpty());
  EXPECT_THAT(settings({{"hiddenCellsEnabled", true}}).hidden_entries, IsEmpty());
  EXPECT_THAT(settings({{"hiddenCellsEnabled", true}, {"hiddenCells", "Remove App;Share"}}).hidden_entries,
              ElementsAre("Remove App", "Share"));
  EXPECT_THAT(
      settings({{"hiddenCellsEnabled", true}, {"hiddenCells", " ;; Share ;\tNew Page;"}}).hidden_entries,
      ElementsAre("Share", "New Page"));
}

}  // namespace
}  // namespace wispen::testing
