// tests/host/preferences/specifier_test.cpp: rows and what they are asked.

#include "tests/host/preferences/list_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::ElementsAre;

class SpecifierTest : public ListTest {};

TEST_F(SpecifierTest, KeepsEveryPropertyOfItsDictionaryKnownOrNot) {
  const auto specifier =
      load_one(item({{"cell", "PSSliderCell"}, {"key", "k"}, {"someKeyOfOurs", "x"}},
                    "<key>min</key><real>-1.5</real><key>nested</key><array><true/></array>"));
  EXPECT_EQ(specifier.propertyForKey<NSString>("someKeyOfOurs"_ns).utf8(), "x");
  EXPECT_EQ(specifier.propertyForKey<NSNumber>("min"_ns).doubleValue(), -1.5);
  EXPECT_EQ(specifier.propertyForKey<NSArray>("nested"_ns).count(), 1u);
  EXPECT_EQ(specifier.propertyForKey<NSString>("localizationTable"_ns).utf8(), "List");
}

TEST_F(SpecifierTest, IsIdentifiedByIdOrKeyOrLabel) {
  EXPECT_EQ(load_one(item({{"cell", "PSSwitchCell"}, {"id", "i"}, {"key", "k"}, {"label", "l"}}))
                .identifier()
                .utf8(),
            "i");
  EXPECT_EQ(load_one(item({{"cell", "PSSwitchCell"}, {"key", "k"}, {"label", "l"}})).identifier().utf8(),
            "k");
  EXPECT_EQ(load_one(item({{"cell", "PSSwitchCell"}, {"label", "l"}})).identifier().utf8(), "l");
}

TEST_F(SpecifierTest, ReachesTheGetterAndSetterThatItNames) {
  const auto specifier = load_one(
      item({{"cell", "PSSwitchCell"}, {"key", "k"}, {"get", "getIt:"}, {"set", "setIt:forSpecifier:"}}));
  EXPECT_EQ(specifier.performGetter<NSString>().utf8(), "gotten");
  specifier.performSetterWithValue("v"_ns);
  EXPECT_THAT(AskedPage::log, ElementsAre("get k", "set k v"));
}

TEST_F(SpecifierTest, ASelectorThatTheTargetLacksDoesNothing) {
  const auto specifier =
      load_one(item({{"cell", "PSSwitchCell"}, {"key", "k"}, {"get", "noSuchGetter:"}, {"set", "no:such:"}}));
  EXPECT_FALSE(specifier.performGetter());
  specifier.performSetterWithValue("v"_ns);
  EXPECT_TRUE(AskedPage::log.empty());
}

TEST_F(SpecifierTest, DoesNotKeepItsTargetAlive) {
  PSSpecifier specifier;
  {
    const objc::AutoreleasePool pool;
    const AskedPage page = objc::make<AskedPage>();
    specifier = objc::make<PSSpecifier>();
    objc::send<"setTarget:">(specifier, page);
    EXPECT_EQ(specifier.target(), page);
  }
  EXPECT_FALSE(specifier.target());
  EXPECT_FALSE(specifier.performGetter());
}

TEST_F(SpecifierTest, HasValuesAndTitlesInOrderAndEqualValuesShareOneTitle) {
  const auto specifier = load_one(
      item({{"cell", "PSSegmentCell"}, {"key", "k"}},
           "<key>validValues</key><array><string>a</string><string>b</string><string>a</string></array>"
           "<key>validTitles</key><array><string>A</string><string>B</string><string>A2</string></array>"));
  EXPECT_EQ(specifier.values().count(), 3u);
  EXPECT_EQ(specifier.titleDictionary().count(), 2u);
  EXPECT_EQ(specifier.titleDictionary().objectForKeyedSubscript<NSString>("b"_ns).utf8(), "B");
  EXPECT_EQ(specifier.titleDictionary().objectForKeyedSubscript<NSString>("a"_ns).utf8(), "A2");
}

TEST_F(SpecifierTest, SettingAPropertyToNilRemovesIt) {
  const auto specifier = load_one(item({{"cell", "PSSwitchCell"}, {"key", "k"}}));
  specifier.setProperty(NSNumber::numberWithInt(56), "height"_ns);
  EXPECT_EQ(specifier.propertyForKey<NSNumber>("height"_ns).intValue(), 56);
  specifier.setProperty(NSObject(), "height"_ns);
  EXPECT_FALSE(specifier.propertyForKey("height"_ns));
  EXPECT_FALSE(specifier.properties().objectForKey("height"_ns));
}

TEST_F(SpecifierTest, CanBeMadeInCode) {
  const auto made = objc::send<"preferenceSpecifierNamed:target:set:get:detail:cell:edit:", PSSpecifier>(
      objc::class_for<PSSpecifier>(), "Name"_ns, page_, objc::Selector::named("setIt:forSpecifier:"),
      objc::Selector::named("getIt:"), objc::ClassRef(), NSInteger{6}, objc::ClassRef());
  EXPECT_EQ(made.name().utf8(), "Name");
  EXPECT_EQ(made.cellType(), 6);
  EXPECT_EQ(made.performGetter<NSString>().utf8(), "gotten");
  const auto group =
      objc::send<"groupSpecifierWithName:", PSSpecifier>(objc::class_for<PSSpecifier>(), "G"_ns);
  EXPECT_EQ(group.cellType(), 0);
}

TEST_F(SpecifierTest, HasShortTitlesBesideItsTitles) {
  const auto array = [](const NSString& first, const NSString& second) {
    const NSMutableArray both = NSMutableArray::array();
    both.addObject(first);
    both.addObject(second);
    return both;
  };
  const PSSpecifier specifier = objc::make<PSSpecifier>();
  specifier.setValues(array("a"_ns, "b"_ns), array("First"_ns, "Second"_ns), array("1"_ns, "2"_ns));
  EXPECT_EQ(specifier.titleDictionary().objectForKey<NSString>("b"_ns).utf8(), "Second");
  EXPECT_EQ(specifier.shortTitleDictionary().objectForKey<NSString>("b"_ns).utf8(), "2");
}

TEST_F(SpecifierTest, FindsTheClassesThatItNamesWhenAsked) {
  const auto specifier = load_one(
      item({{"cell", "PSLinkCell"}, {"detail", "PSListItemsController"}, {"cellClass", "NoSuchCell"}}));
  EXPECT_EQ(specifier.detailControllerClass(), objc::class_for<PSListItemsController>());
  EXPECT_FALSE(specifier.cellClass());
  specifier.setProperty(NSNumber::numberWithInt(1), "detail"_ns);
  EXPECT_FALSE(specifier.detailControllerClass());
}

TEST_F(SpecifierTest, WithoutADictionaryItHasNoProperties) {
  const auto specifier = load_one(item({{"cell", "PSSwitchCell"}, {"key", "k"}, {"label", "l"}}));
  specifier.setProperties(NSDictionary());
  EXPECT_EQ(specifier.properties().count(), 0u);
  EXPECT_EQ(specifier.identifier().utf8(), "l") << "its name";
  EXPECT_EQ((objc::send<"emptyGroupSpecifier", PSSpecifier>(objc::class_for<PSSpecifier>())).cellType(), 0);
}

}  // namespace
}  // namespace wispen::testing
