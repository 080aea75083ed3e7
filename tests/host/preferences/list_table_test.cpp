// tests/host/preferences/list_table_test.cpp: a list's rows in its page's table.

#include <string>

#include "tests/host/preferences/row_fixture.hpp"

namespace wispen::testing {
namespace {

class ListTableTest : public RowTest {
 protected:
  void show(std::initializer_list<PSSpecifier> rows) const {
    const NSMutableArray all = NSMutableArray::array();
    for (const PSSpecifier& row : rows) all.addObject(row);
    objc::send<"setSpecifiers:">(page_, all);
    page_.view().setFrame(CGRectMake(0, 0, 390, 800));
    page_.view().layoutIfNeeded();
  }
  static PSSpecifier group(const char* name) {
    return objc::send<"groupSpecifierWithName:", PSSpecifier>(objc::class_for<PSSpecifier>(), NSString(name));
  }
  PSSpecifier choice(const char* value) const {
    const PSSpecifier row = stored_row("PSListItemCell", value);
    row.setProperty(NSString(value), "value"_ns);
    return row;
  }
  void select(NSInteger section, NSInteger row) const {
    objc::send<"tableView:didSelectRowAtIndexPath:">(page_, page_.table(),
                                                     NSIndexPath::indexPathForRow(row, section));
  }
  double height(NSInteger row) const {
    return objc::send<"tableView:heightForRowAtIndexPath:", CGFloat>(page_, page_.table(),
                                                                     NSIndexPath::indexPathForRow(row, 0));
  }
};

TEST_F(ListTableTest, ARadioGroupHoldsTheValueOfTheRowThatIsChosen) {
  const PSSpecifier head = stored_row("PSGroupCell", "choice");
  head.setProperty(NSNumber::numberWithBool(true), "isRadioGroup"_ns);
  show({head, choice("a"), choice("b"), group("Other"), choice("c")});
  select(0, 1);
  EXPECT_EQ(head.performGetter<NSString>().utf8(), "b");
  select(1, 0);
  EXPECT_EQ(head.performGetter<NSString>().utf8(), "b") << "a row of no radio group chooses nothing";
}

TEST_F(ListTableTest, AHeightThatIsNoneIsTheTables) {
  const PSSpecifier tall = stored_row("PSSwitchCell", "a");
  tall.setProperty(NSNumber::numberWithInt(80), "height"_ns);
  const PSSpecifier odd = stored_row("PSSwitchCell", "b");
  odd.setProperty(NSNumber::numberWithInt(-3), "height"_ns);
  const PSSpecifier other = stored_row("PSSwitchCell", "c");
  other.setProperty(NSMutableArray::array(), "height"_ns);
  show({tall, odd, other});
  EXPECT_EQ(height(0), 80);
  EXPECT_EQ(height(1), UITableViewAutomaticDimension);
  EXPECT_EQ(height(2), UITableViewAutomaticDimension);
  EXPECT_EQ(height(9), UITableViewAutomaticDimension) << "a row that is not there";
}

TEST_F(ListTableTest, ARowOpensItsPageOnlyWhereItIsOneOfAController) {
  const PSSpecifier link = stored_row("PSLinkCell", "a");
  EXPECT_FALSE(page_.controllerForSpecifier(link));
  link.setProperty("NSObject"_ns, "detail"_ns);
  EXPECT_FALSE(page_.controllerForSpecifier(link));
  link.setProperty("PSListController"_ns, "detail"_ns);
  EXPECT_EQ(objc::class_of(page_.controllerForSpecifier(link)), objc::class_for<PSListController>());
  EXPECT_EQ(objc::class_of(page_.controllerForSpecifier(stored_row("PSLinkListCell", "b"))),
            objc::class_for<PSListItemsController>());
}

TEST_F(ListTableTest, AFooterMayBeAligned) {
  const PSSpecifier head = group("Head");
  head.setProperty("Below"_ns, "footerText"_ns);
  show({head, stored_row("PSSwitchCell", "a")});
  const auto footer = [&] {
    return objc::send<"tableView:viewForFooterInSection:", UIView>(page_, page_.table(), NSInteger{0});
  };
  EXPECT_FALSE(footer());
  head.setProperty(NSNumber::numberWithInt(static_cast<int>(NSTextAlignment::Center)), "footerAlignment"_ns);
  ASSERT_TRUE(footer());
  const auto label = footer().subviews().objectAtIndex<UILabel>(0);
  EXPECT_EQ(label.text().utf8(), "Below");
  EXPECT_EQ(label.textAlignment(), NSTextAlignment::Center);
}

}  // namespace
}  // namespace wispen::testing
