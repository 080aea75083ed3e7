// tests/host/preferences/cells/control_cells_test.cpp: rows with a switch, a slider or segments.

#include <string>

#include "tests/host/preferences/row_fixture.hpp"

namespace wispen::testing {
namespace {

class ControlCellsTest : public RowTest {};

TEST_F(ControlCellsTest, ASwitchShowsTheContraryOfItsValueWhereTheRowNegates) {
  const PSSpecifier row = stored_row("PSSwitchCell", "k");
  row.setProperty(NSNumber::numberWithBool(true), "negate"_ns);
  const auto cell = cell_of<PSSwitchTableCell>(row);
  EXPECT_TRUE(cell.control<UISwitch>().isOn()) << "nothing is stored";
  cell.control<UISwitch>().setOn(false, false);
  objc::send<"controlChanged:">(cell, cell.control());
  EXPECT_TRUE(row.performGetter<NSNumber>().boolValue());
}

TEST_F(ControlCellsTest, AValueOfAnotherTypeIsOffAndTheSlidersLeast) {
  const PSSpecifier row = stored_row("PSSwitchCell", "k");
  row.performSetterWithValue(NSMutableArray::array());
  EXPECT_FALSE(cell_of<PSSwitchTableCell>(row).control<UISwitch>().isOn());
  const PSSpecifier slider = stored_row("PSSliderCell", "k");
  EXPECT_EQ(cell_of<PSSliderTableCell>(slider).control<UISlider>().value(), 0);
}

TEST_F(ControlCellsTest, ASliderWithStepsRestsOnOne) {
  const PSSpecifier row = stored_row("PSSliderCell", "k");
  row.setProperty(NSNumber::numberWithDouble(10), "max"_ns);
  row.setProperty(NSNumber::numberWithBool(true), "isSegmented"_ns);
  row.setProperty(NSNumber::numberWithInt(5), "segmentCount"_ns);
  const auto cell = cell_of<PSSliderTableCell>(row);
  const auto slider = cell.control<UISlider>();
  slider.setValue(5.2F);
  objc::send<"controlChanged:">(cell, slider);
  EXPECT_EQ(slider.value(), 6);
  EXPECT_EQ(row.performGetter<NSNumber>().doubleValue(), 6);
}

TEST_F(ControlCellsTest, ASliderWithoutARangeStaysWhereItIs) {
  const PSSpecifier row = stored_row("PSSliderCell", "k");
  row.setProperty(NSNumber::numberWithInt(0), "max"_ns);
  row.setProperty(NSNumber::numberWithBool(true), "isSegmented"_ns);
  row.setProperty(NSNumber::numberWithInt(5), "segmentCount"_ns);
  const auto cell = cell_of<PSSliderTableCell>(row);
  objc::send<"controlChanged:">(cell, cell.control());
  EXPECT_EQ(cell.control<UISlider>().value(), 0);
}

TEST_F(ControlCellsTest, ASliderTellsItsValueOnlyWhereTheRowAsksForIt) {
  const PSSpecifier row = stored_row("PSSliderCell", "k");
  row.setProperty(NSNumber::numberWithBool(true), "showValue"_ns);
  const auto cell = cell_of<PSSliderTableCell>(row);
  cell.control<UISlider>().setValue(0.25F);
  objc::send<"_showSliderValue:">(cell, cell.control());
  EXPECT_EQ(texts_in(cell), "0.25");
  row.setProperty(NSObject(), "showValue"_ns);
  cell.refreshCellContentsWithSpecifier(row);
  EXPECT_EQ(texts_in(cell), "");
}

TEST_F(ControlCellsTest, SegmentsStandForTheValuesInOrder) {
  const PSSpecifier row = stored_row("PSSegmentCell", "k");
  row.setValues(array({"a", "b", "c"}), array({"A", "B"}));
  const auto cell = cell_of<PSSegmentTableCell>(row);
  const auto segments = cell.control<UISegmentedControl>();
  ASSERT_EQ(segments.numberOfSegments(), 3u);
  EXPECT_EQ(segments.titleForSegmentAtIndex(2).utf8(), "c") << "a value without a title";
  EXPECT_EQ(segments.selectedSegmentIndex(), -1);
  EXPECT_FALSE(cell.controlValue());
  segments.setSelectedSegmentIndex(1);
  objc::send<"controlChanged:">(cell, segments);
  EXPECT_EQ(row.performGetter<NSString>().utf8(), "b");
}

TEST_F(ControlCellsTest, ADisabledRowDisablesItsControl) {
  const auto cell = cell_of<PSSwitchTableCell>(stored_row("PSSwitchCell", "k"));
  cell.setCellEnabled(false);
  EXPECT_FALSE(cell.control().isEnabled());
  cell.setCellEnabled(true);
  EXPECT_TRUE(cell.control().isEnabled());
}

}  // namespace
}  // namespace wispen::testing
