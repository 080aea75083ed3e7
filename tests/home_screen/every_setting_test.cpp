// tests/home_screen/every_setting_test.cpp: whatever a row of the six pages sets can be seen.

#include <map>
#include <set>

#include "tests/home_screen/screen_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// What else must be set for a row to make a difference.
struct Context {
  NSMutableDictionary values = NSMutableDictionary::dictionary();
  const char* appearance = "light";
};

Context context_of(const std::string& key) {
  static const std::map<std::string, Values> kNeeded = {
      {"regularColor", {{"regularMode", "custom"}}},
      {"notificationColor", {{"notificationMode", "custom"}}},
      {"backgroundBlur", {{"vitrelleBackground", true}, {"backgroundDynamic", false}}},
      {"borderDynamic", {{"borderEnabled", true}, {"backgroundDynamic", false}}},
      {"borderColor", {{"borderEnabled", true}, {"borderDynamic", false}}},
      {"borderWidth", {{"borderEnabled", true}, {"backgroundDynamic", false}}},
      {"cornerRadius", {{"cornerRadiusEnabled", true}}},
      {"cornerRadiusEnabled", {{"cornerRadius", 30.0}}},
      {"iconBackgroundOpacity", {{"iconBackground", true}}},
      {"hiddenCells", {{"hiddenCellsEnabled", true}}},
      {"hiddenCellsEnabled", {{"hiddenCells", "Remove App;Share"}}}};
  Context context;
  if (const auto found = kNeeded.find(key); found != kNeeded.end())
    context.values = dictionary(found->second);
  if (key == "adaptDarkIcons") context.appearance = "dark";
  return context;
}

/// Another value that the row could set.
NSObject other_value(const NSDictionary& row) {
  const std::string cell = row.objectForKey<NSString>("cell"_ns).utf8();
  const NSObject standard = row.objectForKey("default"_ns);
  if (cell == "PSSwitchCell") return NSNumber::numberWithBool(!standard.as<NSNumber>().boolValue());
  if (cell == "PSSliderCell") {
    const double least = row.objectForKey<NSNumber>("min"_ns).doubleValue();
    const double most = row.objectForKey<NSNumber>("max"_ns).doubleValue();
    return NSNumber::numberWithDouble(least + (most - least) / 4);
  }
  if (const auto values = row.objectForKey<NSArray>("validValues"_ns)) {
    const NSObject last = values.lastObject();
    return last.isEqual(standard) ? values.objectAtIndex(0) : last;
  }
  return row.objectForKey<NSString>("key"_ns).utf8() == "hiddenCells" ? NSString("Search")
                                                                      : NSString("#12AB34");
}

std::map<std::string, NSDictionary> rows_of_all_pages() {
  std::map<std::string, NSDictionary> rows;
  for (const char* const list : {"Root", "SepSettingsLS", "SepSettingsHS", "BackgroundSettings",
                                 "ContextMenuSettings", "ExpandedAdjusments"}) {
    const std::string file = std::string(WISPEN_TEST_BUNDLE) + "/" + list + ".plist";
    const auto items =
        NSDictionary::dictionaryWithContentsOfFile(NSString(file.c_str())).objectForKey<NSArray>("items"_ns);
    for (NSUInteger i = 0; i < items.count(); ++i) {
      const auto row = items.objectAtIndex<NSDictionary>(i);
      if (const auto key = row.objectForKey<NSString>("key"_ns)) rows[key.utf8()] = row;
    }
  }
  return rows;
}

class EverySetting : public ScreenTest {};

TEST_F(EverySetting, ChangesThePicture) {
  const auto rows = rows_of_all_pages();
  ASSERT_GT(rows.size(), 50u);
  std::vector<std::string> unseen;
  for (const auto& [key, row] : rows) {
    const objc::AutoreleasePool pool;
    const Context context = context_of(key);
    ASSERT_EQ(wispen_host_set_look("appearance", context.appearance), 1);
    const std::string before = picture_of(context.values);
    context.values.setObject(other_value(row), NSString(key.c_str()));
    if (picture_of(context.values) == before) unseen.push_back(key);
  }
  // How labels go is seen only while they go.
  EXPECT_THAT(unseen, ElementsAre("labelFade"));
}

TEST_F(EverySetting, IsOfNoEffectWhileNothingIsEnabled) {
  const std::string plain = picture_of({{"enabled", false}});
  for (const auto& [key, row] : rows_of_all_pages()) {
    const objc::AutoreleasePool pool;
    const NSMutableDictionary values = context_of(key).values;
    if (key == "enabled") continue;
    values.setObject(other_value(row), NSString(key.c_str()));
    values.setObject(NSNumber::numberWithBool(false), "enabled"_ns);
    EXPECT_EQ(picture_of(values), plain) << key;
  }
}

TEST_F(EverySetting, MayBeOfAnyTypeWithoutHarm) {
  const std::string usual = picture_of(Values{});
  const auto values = NSMutableDictionary::dictionary();
  for (const auto& [key, row] : rows_of_all_pages())
    values.setObject(NSArray::array(), NSString(key.c_str()));
  EXPECT_EQ(picture_of(values), usual);
}

TEST_F(EverySetting, OfNamesBelowIconsHasItsEffect) {
  picture_of(Values{});
  EXPECT_THAT(tagged(screen.view(), home_screen::kNameTag), SizeIs(4));
  EXPECT_THAT(tagged(screen.view(), home_screen::kDockNameTag), SizeIs(4));
  picture_of({{"hideLabels", true}, {"labelOpacity", 0.5}});
  EXPECT_THAT(tagged(screen.view(), home_screen::kNameTag), IsEmpty());
  ASSERT_THAT(tagged(screen.view(), home_screen::kDockNameTag), SizeIs(4));
  EXPECT_EQ(tagged(screen.view(), home_screen::kDockNameTag)[0].alpha(), 0.5);
  picture_of({{"dockHideLabels", true}});
  EXPECT_THAT(tagged(screen.view(), home_screen::kDockNameTag), IsEmpty());
}

TEST_F(EverySetting, LetsNamesFadeOutOnlyWhereItIsTo) {
  for (const bool fade : {true, false}) {
    screen.show(settings({}), false);
    screen.show(settings({{"hideLabels", true}, {"labelFade", fade}}), true);
    EXPECT_THAT(tagged(screen.view(), home_screen::kNameTag), SizeIs(fade ? 4 : 0));
    const std::string going = picture();
    ASSERT_EQ(wispen_host_advance(1), 1);
    EXPECT_EQ(picture() == going, !fade);
    // Once they are gone another change does not bring them back for a moment.
    screen.show(settings({{"hideLabels", true}, {"labelFade", fade}, {"labelWeight", "bold"}}), true);
    EXPECT_THAT(tagged(screen.view(), home_screen::kNameTag), IsEmpty());
  }
}

TEST_F(EverySetting, IsKeptWhenTheScreenChangesItsLook) {
  picture_of({{"hsBoldHidden", true}});
  for (const auto& [look, value] :
       {std::pair("appearance", "dark"), std::pair("device", "pad"), std::pair("orientation", "landscape"),
        std::pair("orientation", "portrait"), std::pair("device", "phone-small")}) {
    const std::string before = picture();
    ASSERT_EQ(wispen_host_set_look(look, value), 1) << wispen_host_last_error();
    EXPECT_NE(picture(), before) << value;
    const CGRect bounds = screen.view().bounds();
    EXPECT_EQ(bounds.size.width, wispen_host_screen().width);
    const auto menus = tagged(screen.view(), home_screen::kMenuTag);
    ASSERT_THAT(menus, SizeIs(1));
    EXPECT_THAT(separators(menus[0]), SizeIs(3));
    const CGRect frame = menus[0].frame();
    EXPECT_LE(CGRectGetMaxX(frame), bounds.size.width) << value;
    EXPECT_LE(CGRectGetMaxY(frame), bounds.size.height) << value;
  }
}

TEST_F(EverySetting, ComesUpOutOfTheDarkAfterARestart) {
  const std::string usual = picture_of(Values{});
  screen.brighten();
  const std::string dark = picture();
  EXPECT_NE(dark, usual);
  ASSERT_EQ(wispen_host_advance(2), 1);
  EXPECT_EQ(picture(), usual);
}

}  // namespace
}  // namespace wispen::testing
