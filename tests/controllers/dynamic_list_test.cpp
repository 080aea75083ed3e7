// tests/controllers/dynamic_list_test.cpp: rows that come and go.

#include <set>
#include <string>
#include <vector>

#include "tests/controllers/decided_page.hpp"
#include "tests/support/host_fixture.hpp"
#include "tests/support/raised.hpp"

namespace wispen::testing {
namespace {

using ::testing::ElementsAre;

/// The registered class, as a handle that can be derived from.
class WispRootListController : public WispBaseController {
 public:
  static constexpr objc::FixedString kClass{"WispRootListController"};
  using WispBaseController::WispBaseController;
};

std::set<std::string> hidden;
std::vector<std::string> asked;

bool is_visible(const PSSpecifier& specifier) {
  const std::string key = specifier.propertyForKey<NSString>("key"_ns).utf8();
  asked.push_back(key);
  return !hidden.contains(key);
}

/// The root page, with rows that a test decides.
class RootPage : public objc::Authored<RootPage, WispRootListController> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestRootPage"};
  using Authored::Authored;
  bool visible(const PSSpecifier& specifier) const { return is_visible(specifier); }
  // A page's bundle is the one that its class came from, which for these is the test program.
  NSBundle bundle_under_test() const {
    return NSBundle::bundleForClass(objc::class_for<WispBaseController>());
  }
  static void define() {
    objc::Class<RootPage>()
        .method<"isSpecifierVisible:", &RootPage::visible>()
        .method<"bundle", &RootPage::bundle_under_test>()
        .register_class();
  }
};

/// A page for which the framework has no list.
class ListlessPage : public objc::Authored<ListlessPage, WispBaseController> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestListlessPage"};
  using Authored::Authored;
  NSMutableArray load(const NSString&, const NSObject&) const { return NSMutableArray(); }
  static void define() {
    objc::Class<ListlessPage>()
        .method<"loadSpecifiersFromPlistName:target:", &ListlessPage::load>()
        .register_class();
  }
};

class DynamicListTest : public HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    std::string items;
    for (const char* const key : {"R1", "R2", "R3", "R4", "R5"}) {
      items += item({{"cell", "PSSwitchCell"}, {"key", key}, {"label", key}});
    }
    load_bundle_with({{"Root.plist", specifier_list(items)}});
    DecidedPage::define();
    DecidedPage::is_visible = is_visible;
    RootPage::define();
    hidden = {"R2", "R4"};
    asked.clear();
  }

  template <class Page>
  Page open() const {
    Page page = objc::make<Page>();
    page.specifiers();
    objc::send<"clearSpecifierChanges">(page);
    asked.clear();
    return page;
  }

  static std::vector<std::string> keys(const NSArray& specifiers) {
    std::vector<std::string> result;
    for (NSUInteger i = 0; i < specifiers.count(); ++i) {
      result.push_back(specifiers.objectAtIndex<PSSpecifier>(i).propertyForKey<NSString>("key"_ns).utf8());
    }
    return result;
  }
  static std::vector<std::string> shown(const PSListController& page) { return keys(page.specifiers()); }
  static std::vector<std::string> saved(const PSListController& page) {
    return keys(objc::send<"savedSpecifiers", NSArray>(page));
  }
  /// "insert R4 @2", "remove R3 @1", "reload".
  static std::vector<std::string> changes(const PSListController& page) {
    std::vector<std::string> result;
    const auto record = objc::send<"specifierChanges", NSArray>(page);
    for (NSUInteger i = 0; i < record.count(); ++i) {
      const auto change = record.objectAtIndex<NSDictionary>(i);
      std::string text = change.objectForKey<NSString>("change"_ns).utf8();
      if (const auto specifier = change.objectForKey<PSSpecifier>("specifier"_ns)) {
        text += " " + specifier.propertyForKey<NSString>("key"_ns).utf8() + " @" +
                change.objectForKey<NSNumber>("index"_ns).stringValue().utf8();
        if (!change.objectForKey<NSNumber>("animated"_ns).boolValue()) text += " at once";
      }
      result.push_back(text);
    }
    return result;
  }
  static void update(const PSListController& page) { objc::send<"updateSpecifiers">(page); }
};

TEST_F(DynamicListTest, TheFirstBuildShowsTheVisibleRowsInOrderAndSavesAll) {
  const auto page = open<RootPage>();
  EXPECT_THAT(shown(page), ElementsAre("R1", "R3", "R5"));
  EXPECT_THAT(saved(page), ElementsAre("R1", "R2", "R3", "R4", "R5"));
}

TEST_F(DynamicListTest, TheFirstBuildAsksFromTheLastRowToTheFirst) {
  RootPage page = objc::make<RootPage>();
  page.specifiers();
  EXPECT_THAT(asked, ElementsAre("R5", "R4", "R3", "R2", "R1"));
}

TEST_F(DynamicListTest, TheFilteredListIsMutableAndTheSavedOneIsNot) {
  const auto page = open<RootPage>();
  EXPECT_TRUE(page.specifiers().isKindOfClass(objc::class_for<NSMutableArray>()));
  const auto saved_list = objc::send<"savedSpecifiers", NSArray>(page);
  EXPECT_FALSE(saved_list.isKindOfClass(objc::class_for<NSMutableArray>()));
}

TEST_F(DynamicListTest, TheListIsBuiltOnceAndKept) {
  const auto page = open<RootPage>();
  hidden.clear();
  EXPECT_EQ(page.specifiers(), page.specifiers());
  EXPECT_THAT(shown(page), ElementsAre("R1", "R3", "R5"));
  EXPECT_TRUE(asked.empty());
}

TEST_F(DynamicListTest, ARowThatBecomesVisibleGoesAfterItsPredecessor) {
  const auto page = open<DecidedPage>();
  hidden = {"R2"};
  update(page);
  EXPECT_THAT(shown(page), ElementsAre("R1", "R3", "R4", "R5"));
  EXPECT_THAT(changes(page), ElementsAre("insert R4 @2"));
}

TEST_F(DynamicListTest, TwoRowsPutBackInOneRefreshBothFindTheirPlaces) {
  const auto page = open<DecidedPage>();
  hidden = {};
  update(page);
  EXPECT_THAT(shown(page), ElementsAre("R1", "R2", "R3", "R4", "R5"));
  EXPECT_THAT(changes(page), ElementsAre("insert R2 @1", "insert R4 @3"));
}

TEST_F(DynamicListTest, ARowWhosePredecessorIsHiddenGoesToTheEndOnPurpose) {
  const auto page = open<DecidedPage>();
  hidden = {"R2", "R3"};
  update(page);
  EXPECT_THAT(shown(page), ElementsAre("R1", "R5", "R4"));
  EXPECT_THAT(changes(page), ElementsAre("remove R3 @1", "insert R4 @2"));
}

TEST_F(DynamicListTest, ARowThatBecomesHiddenIsRemovedAnimatedAndTheRestIsLeftAlone) {
  const auto page = open<DecidedPage>();
  hidden = {"R2", "R4", "R5"};
  update(page);
  EXPECT_THAT(shown(page), ElementsAre("R1", "R3"));
  EXPECT_THAT(changes(page), ElementsAre("remove R5 @2"));
}

TEST_F(DynamicListTest, ARefreshWithoutAChangeCausesNoCall) {
  const auto page = open<DecidedPage>();
  update(page);
  EXPECT_THAT(changes(page), ElementsAre());
  EXPECT_THAT(asked, ElementsAre("R1", "R2", "R3", "R4", "R5"));
}

TEST_F(DynamicListTest, OnlyTheRootPageReloadsAfterARefresh) {
  const auto base = open<DecidedPage>();
  update(base);
  EXPECT_THAT(changes(base), ElementsAre());
  const auto root = open<RootPage>();
  update(root);
  EXPECT_THAT(changes(root), ElementsAre("reload"));
}

TEST_F(DynamicListTest, TheReloadOfTheRootPageBuildsItsListAnew) {
  const auto page = open<RootPage>();
  hidden = {"R2", "R3"};
  update(page);
  // The refresh alone would have left R1, R5, R4; the reload puts the order right again.
  EXPECT_THAT(shown(page), ElementsAre("R1", "R4", "R5"));
  EXPECT_THAT(changes(page), ElementsAre("remove R3 @1", "insert R4 @2", "reload"));
}

TEST_F(DynamicListTest, AnAbsentFirstRowRaisesTheOutOfRangeExceptionOnPurpose) {
  const auto page = open<DecidedPage>();
  hidden = {"R1"};
  update(page);  // removes R1, and may
  EXPECT_THAT(shown(page), ElementsAre("R3", "R4", "R5", "R2"));
  EXPECT_EQ(raised_by([&] { update(page); }), "NSRangeException")
      << "the anchor is looked for whether the row is visible or not";
  hidden = {};
  EXPECT_EQ(raised_by([&] { update(page); }), "NSRangeException");
}

TEST_F(DynamicListTest, ARefreshBeforeAnyFilteredBuildDoesNothingButTheReload) {
  const DecidedPage base = objc::make<DecidedPage>();
  update(base);
  EXPECT_THAT(changes(base), ElementsAre());
  EXPECT_TRUE(asked.empty()) << "no list was loaded, so no row was asked for";
  EXPECT_FALSE((objc::send<"savedSpecifiers", NSArray>(base)));
  const RootPage root = objc::make<RootPage>();
  objc::send<"setSpecifiers:">(root, NSMutableArray::array());
  objc::send<"clearSpecifierChanges">(root);
  update(root);
  EXPECT_THAT(changes(root), ElementsAre("reload"));
}

TEST_F(DynamicListTest, ARowIsAddedToAPageThatTheSameRefreshHasEmptied) {
  hidden = {"R2", "R3", "R4", "R5"};
  const auto page = open<DecidedPage>();
  hidden = {"R1", "R3", "R4", "R5"};
  update(page);
  EXPECT_THAT(shown(page), ElementsAre("R2"));
}

TEST_F(DynamicListTest, ARefreshLeavesTheSavedRowsAsTheyAre) {
  const auto page = open<DecidedPage>();
  const auto before = objc::send<"savedSpecifiers", NSArray>(page);
  hidden = {"R3", "R5"};
  update(page);
  EXPECT_EQ((objc::send<"savedSpecifiers", NSArray>(page)), before);
  EXPECT_THAT(keys(before), ElementsAre("R1", "R2", "R3", "R4", "R5"));
}

TEST_F(DynamicListTest, TheBaseControllersOwnListIsNotFiltered) {
  const WispBaseController page = objc::make<WispBaseController>();
  EXPECT_THAT(shown(page), ElementsAre("R1", "R2", "R3", "R4", "R5"));
  EXPECT_EQ(page.specifiers(), page.specifiers());
  EXPECT_EQ(page.specifiers().objectAtIndex<PSSpecifier>(0).target(), page);
  EXPECT_FALSE((objc::send<"savedSpecifiers", NSArray>(page)));
}

TEST_F(DynamicListTest, AnUnknownListIsSimplyEmpty) {
  const auto page = open<RootPage>();
  const auto list = objc::send<"dynamicSpecifiersFromPlist:", NSMutableArray>(page, "NoSuchList"_ns);
  EXPECT_TRUE(list);
  EXPECT_EQ(list.count(), 0u);
  EXPECT_THAT(problems(), ElementsAre(::testing::HasSubstr("NoSuchList.plist")));
}

TEST_F(DynamicListTest, WhereTheFrameworkGivesNoListThereIsNone) {
  ListlessPage::define();
  const ListlessPage page = objc::make<ListlessPage>();
  EXPECT_FALSE((objc::send<"dynamicSpecifiersFromPlist:", NSMutableArray>(page, "Root"_ns)));
  EXPECT_FALSE((objc::send<"savedSpecifiers", NSArray>(page)));
}

TEST_F(DynamicListTest, SavedSpecifiersIsAPlainProperty) {
  const auto page = open<RootPage>();
  const NSArray mine = NSArray::array();
  objc::send<"setSavedSpecifiers:">(page, mine);
  EXPECT_EQ((objc::send<"savedSpecifiers", NSArray>(page)), mine);
}

TEST_F(DynamicListTest, APageAndItsRowsAreFreedTogether) {
  objc::Weak<PSSpecifier> row;
  objc::Weak<RootPage> weak_page;
  {
    const objc::AutoreleasePool pool;
    const auto page = open<RootPage>();
    weak_page = page;
    row = page.specifiers().objectAtIndex<PSSpecifier>(0);
    EXPECT_EQ(row.lock().target(), page);
  }
  EXPECT_FALSE(weak_page.lock());
  EXPECT_FALSE(row.lock());
}

}  // namespace
}  // namespace wispen::testing
