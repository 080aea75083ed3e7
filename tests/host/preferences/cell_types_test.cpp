// tests/host/preferences/cell_types_test.cpp: the kinds of rows.

#include "tests/host/preferences/list_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class CellTypesTest : public ListTest {};

TEST_F(CellTypesTest, KnowsEveryPublicCellType) {
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

TEST_F(CellTypesTest, AnUnknownCellIsReportedAndShownAsText) {
  const auto specifier = load_one(item({{"cell", "PSHologramCell"}, {"label", "x"}}));
  EXPECT_EQ(specifier.cellType(), 7);
  EXPECT_THAT(problems(), ElementsAre(HasSubstr("PSHologramCell")));
}

}  // namespace
}  // namespace wispen::testing
