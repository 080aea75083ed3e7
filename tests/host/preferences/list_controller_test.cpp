// tests/host/preferences/list_controller_test.cpp: pages, groups, and rows by the framework's own methods.

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/host_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::ElementsAre;

class ListControllerTest : public HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    page_ = objc::make<PSListController>();
  }
  void TearDown() override {
    page_ = nullptr;
    HostTest::TearDown();
  }

  static PSSpecifier row(const char* identifier, const char* cell = "PSSwitchCell") {
    NSMutableDictionary properties = NSMutableDictionary::dictionary();
    properties.setObject(NSString(identifier), "id"_ns);
    const PSSpecifier specifier = objc::make<PSSpecifier>();
    objc::send<"setProperties:">(specifier, properties);
    objc::send<"setCellType:">(specifier, NSInteger{std::string(cell) == "PSGroupCell" ? 0 : 6});
    return specifier;
  }
  static NSMutableArray rows(std::initializer_list<const char*> identifiers) {
    NSMutableArray result = NSMutableArray::array();
    for (const char* const identifier : identifiers) {
      result.addObject(row(identifier, identifier[0] == 'G' ? "PSGroupCell" : "PSSwitchCell"));
    }
    return result;
  }
  void show(std::initializer_list<const char*> identifiers) {
    objc::send<"setSpecifiers:">(page_, rows(identifiers));
    objc::send<"clearSpecifierChanges">(page_);
  }
  std::vector<std::string> shown() const {
    std::vector<std::string> result;
    for (NSUInteger i = 0; i < page_.specifiers().count(); ++i) {
      result.push_back(page_.specifiers().objectAtIndex<PSSpecifier>(i).identifier().utf8());
    }
    return result;
  }
  PSSpecifier by_id(const char* identifier) const {
    return objc::send<"specifierForID:", PSSpecifier>(page_, NSString(identifier));
  }

  PSListController page_;
};

TEST_F(ListControllerTest, InsertsAfterASpecifierAnIdOrAtAnIndex) {
  show({"a", "c"});
  page_.insertSpecifierAfterSpecifier(row("b"), by_id("a"), true);
  EXPECT_THAT(shown(), ElementsAre("a", "b", "c"));
  objc::send<"insertSpecifier:afterSpecifierID:animated:">(page_, row("d"), "c"_ns, false);
  objc::send<"insertSpecifier:atIndex:animated:">(page_, row("first"), NSInteger{0}, true);
  EXPECT_THAT(shown(), ElementsAre("first", "a", "b", "c", "d"));
}

TEST_F(ListControllerTest, AnAnchorThatIsNotShownMeansTheEnd) {
  show({"a"});
  page_.insertSpecifierAfterSpecifier(row("b"), row("elsewhere"), true);
  page_.insertSpecifierAfterSpecifier(row("c"), PSSpecifier(), true);
  EXPECT_THAT(shown(), ElementsAre("a", "b", "c"));
  EXPECT_ANY_THROW((objc::send<"insertSpecifier:atIndex:animated:">(page_, row("x"), NSInteger{9}, true)));
}

TEST_F(ListControllerTest, RemovesAndReplacesRowsAlsoSeveralAtOnce) {
  show({"a", "b", "c", "d"});
  page_.removeSpecifier(by_id("b"), true);
  page_.removeSpecifier(row("not there"), true);
  EXPECT_THAT(shown(), ElementsAre("a", "c", "d"));
  NSMutableArray two = NSMutableArray::array();
  two.addObject(by_id("c"));
  two.addObject(by_id("d"));
  objc::send<"replaceContiguousSpecifiers:withSpecifiers:animated:">(page_, two, rows({"x", "y", "z"}), true);
  EXPECT_THAT(shown(), ElementsAre("a", "x", "y", "z"));
  objc::send<"removeContiguousSpecifiers:animated:">(page_, page_.specifiers(), false);
  EXPECT_TRUE(shown().empty());
}

TEST_F(ListControllerTest, RecordsEveryChangeInOrder) {
  show({"a"});
  page_.insertSpecifierAfterSpecifier(row("b"), by_id("a"), true);
  page_.removeSpecifier(by_id("a"), false);
  objc::send<"reloadSpecifierID:">(page_, "b"_ns);
  page_.reloadSpecifiers();
  const auto changes = objc::send<"specifierChanges", NSArray>(page_);
  std::vector<std::string> kinds;
  for (NSUInteger i = 0; i < changes.count(); ++i) {
    const auto change = changes.objectAtIndex<NSDictionary>(i);
    kinds.push_back(change.objectForKey<NSString>("change"_ns).utf8() +
                    (change.objectForKey<NSNumber>("animated"_ns).boolValue() ? " animated" : ""));
  }
  EXPECT_THAT(kinds, ElementsAre("insert animated", "remove", "replace", "reload"));
}

TEST_F(ListControllerTest, EveryGroupStartsASectionAndRowsBeforeTheFirstFormOne) {
  show({"a", "G1", "b", "c", "G2", "G3", "d"});
  EXPECT_EQ((objc::send<"numberOfGroups", NSInteger>(page_)), 4);
  const auto rows_in = [&](NSInteger group) { return objc::send<"rowsForGroup:", NSInteger>(page_, group); };
  EXPECT_EQ(rows_in(0), 1);
  EXPECT_EQ(rows_in(1), 2);
  EXPECT_EQ(rows_in(2), 0);
  EXPECT_EQ(rows_in(3), 1);
  EXPECT_EQ(rows_in(4), 0);
  EXPECT_EQ(rows_in(-1), 0);
  NSInteger group = -9;
  NSInteger index = -9;
  EXPECT_TRUE((objc::send<"getGroup:row:ofSpecifier:", bool>(page_, &group, &index, by_id("c"))));
  EXPECT_EQ(group, 1);
  EXPECT_EQ(index, 1);
  EXPECT_FALSE((objc::send<"getGroup:row:ofSpecifier:", bool>(page_, &group, &index, row("not there"))));
}

TEST_F(ListControllerTest, GroupsFollowTheRowsThatComeAndGo) {
  show({"G1", "a"});
  EXPECT_EQ((objc::send<"numberOfGroups", NSInteger>(page_)), 1);
  page_.insertSpecifierAfterSpecifier(row("G2", "PSGroupCell"), by_id("a"), true);
  EXPECT_EQ((objc::send<"numberOfGroups", NSInteger>(page_)), 2);
  page_.removeSpecifier(by_id("G2"), true);
  EXPECT_EQ((objc::send<"numberOfGroups", NSInteger>(page_)), 1);
}

TEST_F(ListControllerTest, AnIndexPathNamesSectionAndRowAndAHeadHasNone) {
  show({"G1", "a", "b"});
  const auto path = objc::send<"indexPathForSpecifier:", NSObject>(page_, by_id("b"));
  ASSERT_TRUE(path);
  EXPECT_EQ((objc::send<"indexAtPosition:", NSUInteger>(path, NSUInteger{0})), 0u);
  EXPECT_EQ((objc::send<"indexAtPosition:", NSUInteger>(path, NSUInteger{1})), 1u);
  EXPECT_FALSE((objc::send<"indexPathForSpecifier:", NSObject>(page_, by_id("G1"))));
}

TEST_F(ListControllerTest, FindsRowsByIndexAndNothingOutside) {
  show({"a", "b"});
  EXPECT_EQ((objc::send<"indexOfSpecifier:", NSInteger>(page_, by_id("b"))), 1);
  EXPECT_EQ((objc::send<"indexOfSpecifier:", NSInteger>(page_, row("b"))),
            static_cast<NSInteger>(NSNotFound));
  EXPECT_EQ((objc::send<"specifierAtIndex:", PSSpecifier>(page_, NSInteger{0})), by_id("a"));
  EXPECT_FALSE((objc::send<"specifierAtIndex:", PSSpecifier>(page_, NSInteger{2})));
  EXPECT_FALSE((objc::send<"specifierAtIndex:", PSSpecifier>(page_, NSInteger{-1})));
  EXPECT_FALSE(by_id("missing"));
}

}  // namespace
}  // namespace wispen::testing
