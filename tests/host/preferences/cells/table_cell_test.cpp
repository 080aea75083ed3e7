// tests/host/preferences/cells/table_cell_test.cpp: a row that shows a specifier.

#include <string>

#include "tests/host/preferences/row_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class TableCellTest : public RowTest {};

TEST_F(TableCellTest, ShowsTheTitleOfItsValueTheShortOneFirst) {
  const PSSpecifier row = stored_row("PSTitleValueCell", "k");
  row.setValues(array({"a", "b"}), array({"Long A", "Long B"}), array({"A"}));
  row.performSetterWithValue("a"_ns);
  EXPECT_EQ(cell_of(row).detailTextLabel().text().utf8(), "A");
  row.performSetterWithValue("b"_ns);
  EXPECT_EQ(cell_of(row).detailTextLabel().text().utf8(), "Long B");
  row.performSetterWithValue(NSNumber::numberWithInt(7));
  EXPECT_EQ(cell_of(row).detailTextLabel().text().utf8(), "7");
}

TEST_F(TableCellTest, AClassThatIsNoCellIsReportedAndTheUsualOneTaken) {
  const PSSpecifier row = stored_row("PSSwitchCell", "k");
  row.setProperty("NSObject"_ns, "cellClass"_ns);
  EXPECT_EQ(objc::class_of(cell_of(row)), objc::class_for<PSSwitchTableCell>());
  EXPECT_THAT(problems(), ::testing::Each(HasSubstr("the class NSObject is not a cell of a settings page")));
  row.setProperty("NoSuchCell"_ns, "cellClass"_ns);
  EXPECT_EQ(objc::class_of(cell_of(row)), objc::class_for<PSSwitchTableCell>());
  EXPECT_THAT(problems(), ::testing::Each(HasSubstr("there is no cell class NoSuchCell")));
}

TEST_F(TableCellTest, ATypeIsKnownByItsName) {
  const auto type = [](const NSString& name) {
    return objc::send<"cellTypeFromString:", NSInteger>(objc::class_for<PSTableCell>(), name);
  };
  EXPECT_EQ(type("PSSwitchCell"_ns), 6);
  EXPECT_EQ(type("PSHologramCell"_ns), 0);
  EXPECT_EQ(type(NSString()), 0);
}

TEST_F(TableCellTest, AButtonIsTintedAndADestructiveOneRed) {
  const PSSpecifier row = stored_row("PSButtonCell", "k");
  const PSTableCell cell = cell_of(row);
  EXPECT_TRUE(cell.textLabel().textColor().isEqual(cell.tintColor()));
  row.setProperty(NSNumber::numberWithBool(true), "isDestructive"_ns);
  EXPECT_TRUE(cell_of(row).textLabel().textColor().isEqual(UIColor::systemRedColor()));
  cell.setCellEnabled(false);
  EXPECT_TRUE(cell.textLabel().textColor().isEqual(UIColor::tertiaryLabelColor()));
}

TEST_F(TableCellTest, AChosenRowIsTicked) {
  const PSTableCell cell = cell_of(stored_row("PSListItemCell", "k"));
  cell.setChecked(true);
  EXPECT_TRUE(cell.isChecked());
  EXPECT_EQ(cell.accessoryType(), UITableViewCellAccessoryType::Checkmark);
  cell.setChecked(false);
  EXPECT_EQ(cell.accessoryType(), UITableViewCellAccessoryType::None);
}

}  // namespace
}  // namespace wispen::testing
