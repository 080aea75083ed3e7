// tests/host/preferences/public_methods_test.cpp: the further methods of pages, rows and cells.

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/host_fixture.hpp"
#include "tests/support/kept.hpp"

namespace wispen::testing {
namespace {

using ::testing::ElementsAre;

class PublicMethodsTest : public HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    page_ = objc::make<PSListController>();
    NSMutableArray all = NSMutableArray::array();
    for (const char* const name : {"Group", "a", "b"}) all.addObject(row(name));
    objc::send<"setSpecifiers:">(page_, all);
  }
  void TearDown() override {
    page_ = nullptr;
    HostTest::TearDown();
  }
  static PSSpecifier made(const NSString& name, const NSObject& target, objc::Selector setter,
                          objc::Selector getter, NSInteger cell) {
    return objc::send<"preferenceSpecifierNamed:target:set:get:detail:cell:edit:", PSSpecifier>(
        objc::class_for<PSSpecifier>(), name, target, setter, getter, objc::ClassRef(), cell,
        objc::ClassRef());
  }
  static PSSpecifier row(const char* identifier) {
    const bool group = std::string(identifier) == "Group";
    const PSSpecifier specifier =
        made(NSString(identifier), NSObject(), objc::Selector(), objc::Selector(), group ? 0 : 6);
    specifier.setProperty(NSString(identifier), "id"_ns);
    return specifier;
  }
  static NSMutableArray several(std::initializer_list<const char*> names) {
    NSMutableArray all = NSMutableArray::array();
    for (const char* const name : names) all.addObject(row(name));
    return all;
  }
  std::vector<std::string> shown() const {
    std::vector<std::string> names;
    for (NSUInteger i = 0; i < page_.specifiers().count(); ++i) {
      names.push_back(page_.specifiers().objectAtIndex<PSSpecifier>(i).identifier().utf8());
    }
    return names;
  }
  PSSpecifier by_id(const char* name) const {
    return objc::send<"specifierForID:", PSSpecifier>(page_, NSString(name));
  }

  PSListController page_;
};

TEST_F(PublicMethodsTest, RowsAreAdded) {
  objc::send<"addSpecifier:">(page_, row("c"));
  objc::send<"addSpecifier:animated:">(page_, row("d"), true);
  objc::send<"insertSpecifier:afterSpecifier:">(page_, row("a2"), by_id("a"));
  EXPECT_THAT(shown(), ElementsAre("Group", "a", "a2", "b", "c", "d"));
  objc::send<"insertContiguousSpecifiers:afterSpecifier:animated:">(page_, several({"x", "y"}), by_id("a"),
                                                                    true);
  objc::send<"insertContiguousSpecifiers:atIndex:animated:">(page_, several({"z"}), NSInteger{1}, false);
  EXPECT_THAT(shown(), ElementsAre("Group", "z", "a", "x", "y", "a2", "b", "c", "d"));
}

TEST_F(PublicMethodsTest, RowsAreFoundAndRemoved) {
  EXPECT_TRUE((objc::send<"containsSpecifier:", bool>(page_, by_id("b"))));
  EXPECT_FALSE((objc::send<"containsSpecifier:", bool>(page_, row("b"))));
  EXPECT_EQ((objc::send<"indexOfSpecifierID:", NSInteger>(page_, "b"_ns)), 2);
  EXPECT_EQ((objc::send<"specifiersInGroup:", NSArray>(page_, NSInteger{0})).count(), 3U);
  objc::send<"removeSpecifierID:">(page_, "a"_ns);
  EXPECT_THAT(shown(), ElementsAre("Group", "b"));
  objc::send<"removeSpecifier:">(page_, by_id("b"));
  objc::send<"removeSpecifierID:animated:">(page_, "Group"_ns, true);
  EXPECT_THAT(shown(), ElementsAre());
}

TEST_F(PublicMethodsTest, RowsAreReplaced) {
  NSMutableArray old = NSMutableArray::array();
  old.addObject(by_id("a"));
  objc::send<"replaceContiguousSpecifiers:withSpecifiers:">(page_, old, several({"c", "d"}));
  EXPECT_THAT(shown(), ElementsAre("Group", "c", "d", "b"));
  old = NSMutableArray::array();
  old.addObject(by_id("b"));
  objc::send<"updateSpecifiers:withSpecifiers:">(page_, old, several({"e"}));
  EXPECT_THAT(shown(), ElementsAre("Group", "c", "d", "e"));
}

TEST_F(PublicMethodsTest, ARowIsReloadedByItself) {
  page_.view();
  objc::send<"reloadSpecifier:">(page_, by_id("a"));
  objc::send<"reloadSpecifier:animated:">(page_, by_id("b"), true);
  EXPECT_THAT(shown(), ElementsAre("Group", "a", "b"));
}

TEST_F(PublicMethodsTest, ListsOfAnotherBundleAreLoaded) {
  const auto folder = device_path("/Library/Other.bundle");
  std::filesystem::create_directories(folder);
  write_file(folder / "Info.plist", plist("<dict/>"));
  write_file(folder / "Rows.plist",
             specifier_list(item({{"cell", "PSSwitchCell"}, {"key", "k"}, {"label", "K"}})));
  const auto other =
      objc::send<"bundleWithPath:", NSBundle>(objc::class_for<NSBundle>(), "/Library/Other.bundle"_ns);
  const auto rows =
      objc::send<"loadSpecifiersFromPlistName:target:bundle:", NSArray>(page_, "Rows"_ns, page_, other);
  ASSERT_EQ(rows.count(), 1U);
  EXPECT_EQ(rows.objectAtIndex<PSSpecifier>(0).name().utf8(), "K");
}

TEST_F(PublicMethodsTest, PagesKnowThePagesAroundThem) {
  const PSListController root = objc::make<PSListController>();
  objc::send<"setRootController:">(page_, root);
  objc::send<"setParentController:">(page_, root);
  EXPECT_EQ((objc::send<"rootController", NSObject>(page_)), root);
  EXPECT_EQ((objc::send<"parentController", NSObject>(page_)), root);
  const auto navigation = UINavigationController::alloc().initWithRootViewController(root);
  const UIWindow window = objc::make<UIWindow>();
  window.setRootViewController(navigation);
  window.makeKeyAndVisible();
  objc::send<"pushController:">(root, page_);
  EXPECT_EQ(navigation.topViewController(), page_);
}

TEST_F(PublicMethodsTest, ARowLosesAProperty) {
  const PSSpecifier specifier = row("a");
  specifier.setProperty("x"_ns, "extra"_ns);
  objc::send<"removePropertyForKey:">(specifier, "extra"_ns);
  EXPECT_FALSE(specifier.propertyForKey("extra"_ns));
  const PSSpecifier both = made("n"_ns, page_, objc::selector<"setPreferenceValue:specifier:">(),
                                objc::selector<"readPreferenceValue:">(), 6);
  EXPECT_EQ((objc::send<"getter", objc::Selector>(both)), objc::selector<"readPreferenceValue:">());
  EXPECT_EQ((objc::send<"setter", objc::Selector>(both)), objc::selector<"setPreferenceValue:specifier:">());
}

TEST_F(PublicMethodsTest, ACellKeepsWhatItIsMadeFor) {
  const objc::ClassRef cells = objc::class_for<PSTableCell>();
  EXPECT_EQ((objc::send<"cellTypeFromString:", NSInteger>(cells, "PSSwitchCell"_ns)), 6);
  const PSSpecifier specifier = row("a");
  EXPECT_TRUE((objc::send<"cellClassForSpecifier:", objc::ClassRef>(cells, specifier)).is_subclass_of(cells));
  EXPECT_TRUE((objc::send<"reuseIdentifierForSpecifier:", NSString>(cells, specifier)));
  const PSTableCell cell =
      objc::allocate<PSTableCell>().initialize<"initWithStyle:reuseIdentifier:specifier:">(NSInteger{1},
                                                                                           "r"_ns, specifier);
  expect_kept<"cellTarget", "setCellTarget:">(cell, NSObject(page_));
  expect_kept<"cellAction", "setCellAction:">(cell, objc::selector<"reload">());
  expect_kept<"type", "setType:">(cell, NSInteger{3});
  EXPECT_TRUE((objc::send<"canReload", bool>(cell)));
  EXPECT_FALSE((objc::send<"getIcon", UIImage>(cell)));
  specifier.setName("Renamed"_ns);
  objc::send<"reloadWithSpecifier:animated:">(cell, specifier, false);
  EXPECT_EQ((objc::send<"titleTextLabel", UILabel>(cell)).text().utf8(), "Renamed");
  EXPECT_TRUE((objc::send<"valueLabel", UILabel>(cell)));
}

}  // namespace
}  // namespace wispen::testing
