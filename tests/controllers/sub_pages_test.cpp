// tests/controllers/sub_pages_test.cpp: the root page and the five pages below it.

#include <array>
#include <string>

#include "tests/support/host_fixture.hpp"

namespace wispen::testing {
namespace {

struct Page {
  const char* cls;
  const char* list;
};

constexpr std::array kSubPages{
    Page{"SepSettingsCell", "SepSettingsLS"}, Page{"BackgroundSettingsCell", "BackgroundSettings"},
    Page{"ContextMenuLabels", "ContextMenuSettings"}, Page{"Expanded3DAdjustments", "ExpandedAdjusments"},
    Page{"SepSettingsHSCell", "SepSettingsHS"}};

class SubPagesTest : public HostTest, public ::testing::WithParamInterface<Page> {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    std::vector<std::pair<std::string, std::string>> files;
    for (const Page& page : kSubPages) {
      files.emplace_back(
          std::string(page.list) + ".plist",
          specifier_list(item({{"cell", "PSGroupCell"}, {"label", page.list}}) +
                         item({{"cell", "PSSwitchCell"}, {"key", "a"}, {"depends", "nothing"}}) +
                         item({{"cell", "PSSwitchCell"}, {"key", "regularColor"}})));
    }
    load_bundle_with(files);
  }
};

INSTANTIATE_TEST_SUITE_P(EachPage, SubPagesTest, ::testing::ValuesIn(kSubPages),
                         [](const auto& test) { return std::string(test.param.cls); });

TEST_P(SubPagesTest, ShowsEveryRowOfItsOwnListAlsoThoseThatTheRulesWouldHide) {
  const auto page = open_page(GetParam().cls);
  const NSMutableArray rows = page.specifiers();
  ASSERT_EQ(rows.count(), 3u);
  EXPECT_EQ(rows.objectAtIndex<PSSpecifier>(0).name().utf8(), GetParam().list);
  const auto depending = rows.objectAtIndex<PSSpecifier>(1);
  EXPECT_FALSE((objc::send<"isSpecifierVisible:", bool>(page, depending)))
      << "the rule is there, and not asked";
}

TEST_P(SubPagesTest, BuildsItsListOnceAndAgainAfterAReload) {
  const auto page = open_page(GetParam().cls);
  const NSMutableArray first = page.specifiers();
  EXPECT_EQ(page.specifiers(), first);
  page.reloadSpecifiers();
  EXPECT_FALSE(page.specifiers() == first);
  EXPECT_EQ(page.specifiers().count(), 3u);
}

TEST_P(SubPagesTest, DerivesFromTheFrameworksControllerDirectly) {
  const objc::ClassRef cls = objc::ClassRef::named(GetParam().cls);
  EXPECT_EQ(cls.superclass(), objc::class_for<PSListController>());
}

TEST_P(SubPagesTest, IsTheTargetOfItsRows) {
  const auto page = open_page(GetParam().cls);
  EXPECT_EQ(page.specifiers().objectAtIndex<PSSpecifier>(1).target(), page);
  EXPECT_EQ(page.bundle().bundlePath().utf8(), bundle_folder().string());
}

class RootPageTest : public HostTest {};

TEST_F(RootPageTest, IsThePrincipalClassAndFiltersItsList) {
  load_bundle_with(
      {{"Root.plist", specifier_list(item({{"cell", "PSSwitchCell"}, {"key", "a"}}) +
                                     item({{"cell", "PSSwitchCell"}, {"key", "b"}, {"depends", "c"}}))}});
  const auto page = open_page(nullptr);
  EXPECT_STREQ(objc::class_of(page).name(), "WispRootListController");
  EXPECT_STREQ(objc::class_of(page).superclass().name(), "WispBaseController");
  EXPECT_EQ(page.specifiers().count(), 1u);
  EXPECT_EQ((objc::send<"savedSpecifiers", NSArray>(page)).count(), 2u);
}

TEST_F(RootPageTest, SeesAValueThatASubPageSet) {
  load_bundle_with({{"Root.plist", specifier_list(item({{"cell", "PSSwitchCell"}, {"key", "a"}}))},
                    {"SepSettingsLS.plist", specifier_list(item({{"cell", "PSSwitchCell"}, {"key", "a"}}))}});
  const auto root = open_page(nullptr);
  const auto sub = open_page("SepSettingsCell");
  EXPECT_FALSE(root.specifiers().objectAtIndex<PSSpecifier>(0).performGetter());
  sub.specifiers().objectAtIndex<PSSpecifier>(0).performSetterWithValue(NSNumber::numberWithBool(true));
  EXPECT_TRUE(root.specifiers().objectAtIndex<PSSpecifier>(0).performGetter<NSNumber>().boolValue());
}

TEST_F(RootPageTest, TheShippedListsLoadWithoutAProblem) {
  load_shipped_bundle();
  EXPECT_GT(open_page(nullptr).specifiers().count(), 0u);
  for (const Page& page : kSubPages) EXPECT_GT(open_page(page.cls).specifiers().count(), 0u) << page.cls;
  EXPECT_THAT(problems(), ::testing::IsEmpty());
}

}  // namespace
}  // namespace wispen::testing
