// tests/host/preferences/specifier_test.cpp: rows, as a list describes them.

#include <string>
#include <utility>
#include <vector>

#include "tests/support/host_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// A page whose rows name selectors of their own.
class AskedPage : public objc::Authored<AskedPage, PSListController> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestAskedPage"};
  using Authored::Authored;
  static inline std::vector<std::string> log;

  NSObject get_it(const PSSpecifier& specifier) const {
    log.push_back("get " + specifier.identifier().utf8());
    return "gotten"_ns;
  }
  void set_it(const NSObject& value, const PSSpecifier& specifier) const {
    log.push_back("set " + specifier.identifier().utf8() + " " + value.description().utf8());
  }
  NSArray value_source(const PSSpecifier&) const {
    NSMutableArray values = NSMutableArray::array();
    values.addObject(NSNumber::numberWithInt(1));
    values.addObject(NSNumber::numberWithInt(2));
    return values;
  }
  NSArray title_source(const PSSpecifier&) const {
    NSMutableArray titles = NSMutableArray::array();
    titles.addObject("One"_ns);
    titles.addObject("Two"_ns);
    return titles;
  }
  NSBundle bundle_under_test() const {
    return NSBundle::bundleForClass(objc::ClassRef::named("WispBaseController"));
  }
  static void define() {
    objc::Class<AskedPage>()
        .method<"getIt:", &AskedPage::get_it>()
        .method<"setIt:forSpecifier:", &AskedPage::set_it>()
        .method<"valueSource:", &AskedPage::value_source>()
        .method<"titleSource:", &AskedPage::title_source>()
        .method<"bundle", &AskedPage::bundle_under_test>()
        .register_class();
  }
};

class SpecifierTest : public HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    AskedPage::define();
    AskedPage::log.clear();
    page_ = objc::make<AskedPage>();
  }
  void TearDown() override {
    page_ = AskedPage();
    HostTest::TearDown();
  }
  NSMutableArray load(const std::string& items, std::vector<std::pair<std::string, std::string>> more = {}) {
    more.emplace_back("List.plist", specifier_list(items));
    load_bundle_with(more);
    return page_.loadSpecifiersFromPlistName("List"_ns, page_);
  }
  PSSpecifier load_one(const std::string& one) { return load(one).objectAtIndex<PSSpecifier>(0); }

  AskedPage page_;
};

TEST_F(SpecifierTest, KeepsEveryPropertyOfItsDictionaryKnownOrNot) {
  const auto specifier =
      load_one(item({{"cell", "PSSliderCell"}, {"key", "k"}, {"someKeyOfOurs", "x"}},
                    "<key>min</key><real>-1.5</real><key>nested</key><array><true/></array>"));
  EXPECT_EQ(specifier.propertyForKey<NSString>("someKeyOfOurs"_ns).utf8(), "x");
  EXPECT_EQ(specifier.propertyForKey<NSNumber>("min"_ns).doubleValue(), -1.5);
  EXPECT_EQ(specifier.propertyForKey<NSArray>("nested"_ns).count(), 1u);
  EXPECT_EQ(specifier.propertyForKey<NSString>("localizationTable"_ns).utf8(), "List");
}

TEST_F(SpecifierTest, ATableThatTheRowNamesItselfWins) {
  const auto specifier = load_one(item({{"cell", "PSSwitchCell"}, {"localizationTable", "Other"}}));
  EXPECT_EQ(specifier.propertyForKey<NSString>("localizationTable"_ns).utf8(), "Other");
}

TEST_F(SpecifierTest, KnowsEveryPublicCellType) {
  const std::vector<std::string> names{
      "PSGroupCell",          "PSLinkCell",    "PSLinkListCell",     "PSListItemCell",
      "PSTitleValueCell",     "PSSliderCell",  "PSSwitchCell",       "PSStaticTextCell",
      "PSEditTextCell",       "PSSegmentCell", "PSGiantIconCell",    "PSGiantCell",
      "PSSecureEditTextCell", "PSButtonCell",  "PSEditTextViewCell", "PSSpinnerCell"};
  std::string items;
  for (const std::string& name : names) items += item({{"cell", name.c_str()}});
  const NSMutableArray specifiers = load(items);
  ASSERT_EQ(specifiers.count(), names.size());
  for (std::size_t i = 0; i < names.size(); ++i) {
    EXPECT_EQ(specifiers.objectAtIndex<PSSpecifier>(i).cellType(), static_cast<NSInteger>(i)) << names[i];
  }
  EXPECT_TRUE(problems().empty());
}

TEST_F(SpecifierTest, AnUnknownCellIsReportedAndShownAsText) {
  const auto specifier = load_one(item({{"cell", "PSHologramCell"}, {"label", "x"}}));
  EXPECT_EQ(specifier.cellType(), 7);
  EXPECT_THAT(problems(), ElementsAre(HasSubstr("PSHologramCell")));
}

TEST_F(SpecifierTest, ItsNameIsTheTranslatedLabelAndItsLabelStaysAsWritten) {
  const auto specifiers =
      load(item({{"cell", "PSGroupCell"}, {"label", "Colours"}, {"footerText", "Foot"}}) +
               item({{"cell", "PSEditTextCell"}, {"label", "Untranslated"}, {"placeholder", "Hint"}}),
           {{"en.lproj/List.strings", "Colours = \"Farben\"; Foot = \"Fu\xC3\x9F\"; Hint = \"Wink\";"}});
  const auto group = specifiers.objectAtIndex<PSSpecifier>(0);
  EXPECT_EQ(group.name().utf8(), "Farben");
  EXPECT_EQ(group.propertyForKey<NSString>("label"_ns).utf8(), "Colours");
  EXPECT_EQ(group.propertyForKey<NSString>("footerText"_ns).utf8(), "Fu\xC3\x9F");
  const auto text = specifiers.objectAtIndex<PSSpecifier>(1);
  EXPECT_EQ(text.name().utf8(), "Untranslated");
  EXPECT_EQ(text.propertyForKey<NSString>("placeholder"_ns).utf8(), "Wink");
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

TEST_F(SpecifierTest, TakesItsChoicesFromDataSourcesOfTheTarget) {
  const auto specifier = load_one(item({{"cell", "PSLinkListCell"},
                                        {"key", "k"},
                                        {"valuesDataSource", "valueSource:"},
                                        {"titlesDataSource", "titleSource:"}}));
  EXPECT_EQ(specifier.values().count(), 2u);
  EXPECT_EQ(specifier.titleDictionary().objectForKey<NSString>(NSNumber::numberWithInt(2)).utf8(), "Two");
}

TEST_F(SpecifierTest, ValuesAndTitlesOfDifferentNumberAreReported) {
  load_one(item({{"cell", "PSSegmentCell"}, {"key", "odd"}},
                "<key>validValues</key><array><string>a</string><string>b</string></array>"
                "<key>validTitles</key><array><string>A</string></array>"));
  EXPECT_THAT(problems(),
              ElementsAre(::testing::AllOf(HasSubstr("odd"), HasSubstr("2 values and 1 titles"))));
}

TEST_F(SpecifierTest, ARowThatNeedsWhatTheDeviceLacksIsLeftOut) {
  const auto specifiers =
      load(item({{"cell", "PSSwitchCell"}, {"key", "a"}},
                "<key>requiredCapabilities</key><array><string>wifi</string></array>") +
           item({{"cell", "PSSwitchCell"}, {"key", "b"}},
                "<key>requiredCapabilities</key><array><string>warp-drive</string></array>"));
  ASSERT_EQ(specifiers.count(), 1u);
  EXPECT_EQ(specifiers.objectAtIndex<PSSpecifier>(0).identifier().utf8(), "a");
}

TEST_F(SpecifierTest, OddItemsArePassedOverAndReported) {
  const auto specifiers = load("<string>no dictionary</string>" +
                               item({{"cell", "PSSwitchCell"}, {"key", "a"}}) + "<integer>3</integer>");
  EXPECT_EQ(specifiers.count(), 1u);
  EXPECT_THAT(problems(), ElementsAre(HasSubstr("item 0"), HasSubstr("item 2")));
}

TEST_F(SpecifierTest, ABrokenListIsEmptyAndReported) {
  load_bundle_with({{"List.plist", "<plist><dict>"}, {"NoItems.plist", plist("<dict/>")}});
  EXPECT_EQ(page_.loadSpecifiersFromPlistName("List"_ns, page_).count(), 0u);
  EXPECT_EQ(page_.loadSpecifiersFromPlistName("NoItems"_ns, page_).count(), 0u);
  EXPECT_EQ(problems().size(), 2u);
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

}  // namespace
}  // namespace wispen::testing
