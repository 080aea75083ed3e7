// tests/host/preferences/choice_page_test.cpp: the page on which one of a row's values is chosen.

#include <string>
#include <vector>

#include "tests/support/host_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::ElementsAre;

class ChoicePageTest : public HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    asking_ = objc::make<PSListController>();
    row_ = objc::send<"preferenceSpecifierNamed:target:set:get:detail:cell:edit:", PSSpecifier>(
        objc::class_for<PSSpecifier>(), "Colour"_ns, asking_,
        objc::selector<"setPreferenceValue:specifier:">(), objc::selector<"readPreferenceValue:">(),
        objc::class_for<PSListItemsController>(), NSInteger{2}, objc::ClassRef());
    row_.setProperty("colour"_ns, "key"_ns);
    row_.setProperty("some.domain"_ns, "defaults"_ns);
    row_.setProperty("One of three."_ns, "staticTextMessage"_ns);
    row_.setValues(array({"r", "g", "b"}), array({"Red", "Green"}));
    page_ = asking_.controllerForSpecifier(row_).as<PSListController>();
  }
  void TearDown() override {
    page_ = PSListController();
    row_ = PSSpecifier();
    asking_ = PSListController();
    HostTest::TearDown();
  }
  static NSArray array(std::initializer_list<const char*> texts) {
    const NSMutableArray all = NSMutableArray::array();
    for (const char* const text : texts) all.addObject(NSString(text));
    return all;
  }
  PSSpecifier at(NSUInteger index) const { return page_.specifiers().objectAtIndex<PSSpecifier>(index); }

  PSListController asking_;
  PSSpecifier row_;
  PSListController page_;
};

TEST_F(ChoicePageTest, ListsTheValuesByTheirTitlesBelowOneHead) {
  ASSERT_EQ(objc::class_of(page_), objc::class_for<PSListItemsController>());
  ASSERT_EQ(page_.specifiers().count(), 4u);
  EXPECT_EQ(at(0).cellType(), 0);
  EXPECT_EQ(at(0).propertyForKey<NSString>("footerText"_ns).utf8(), "One of three.");
  std::vector<std::string> names;
  for (NSUInteger i = 1; i < 4; ++i) names.push_back(at(i).name().utf8());
  EXPECT_THAT(names, ElementsAre("Red", "Green", "b")) << "a value without a title is told as it is";
  EXPECT_EQ(page_.title().utf8(), "Colour");
}

TEST_F(ChoicePageTest, ItsHeadReadsAndStoresByTheRowThatOpenedIt) {
  EXPECT_FALSE(at(0).performGetter());
  at(0).performSetterWithValue("g"_ns);
  EXPECT_EQ(row_.performGetter<NSString>().utf8(), "g");
  EXPECT_EQ(at(0).performGetter<NSString>().utf8(), "g");
}

TEST_F(ChoicePageTest, WithoutARowItListsNothing) {
  const auto page = objc::make<PSListItemsController>();
  EXPECT_EQ(page.specifiers().count(), 0u);
}

}  // namespace
}  // namespace wispen::testing
