// tests/cells/styled_cells_test.cpp: button, slider and toggle rows in the bundle's colours.

#include <cstdlib>

#include "tests/support/page_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::DoubleEq;
using ::testing::Pointwise;

class StyledCellsTest : public PageTest {
 protected:
  void SetUp() override {
    PageTest::SetUp();
    const std::string list = specifier_list(
        item({{"cell", "PSButtonCell"},
              {"cellClass", "WispButton"},
              {"label", "Plain"},
              {"action", "reloadSpecifiers"}}) +
        item({{"cell", "PSButtonCell"},
              {"cellClass", "WispButton"},
              {"label", "Grey"},
              {"style", "disabled"},
              {"action", "reloadSpecifiers"}}) +
        item({{"cell", "PSButtonCell"},
              {"cellClass", "WispButton"},
              {"label", "Capital"},
              {"style", "Disabled"}}) +
        item(
            {{"cell", "PSSliderCell"}, {"cellClass", "WispSlider"}, {"label", "Slider"}, {"key", "slider"}}) +
        item(
            {{"cell", "PSSwitchCell"}, {"cellClass", "WispToggle"}, {"label", "Toggle"}, {"key", "toggle"}}));
    show("SepSettingsCell",
         {{"Root.plist",
           specifier_list(item({{"cell", "PSLinkCell"}, {"label", "Page"}, {"detail", "SepSettingsCell"}}))},
          {"SepSettingsLS.plist", list}});
  }
};

TEST_F(StyledCellsTest, ButtonsHaveTheColourOfALabelOrAreGrey) {
  EXPECT_TRUE(cell("Plain").textLabel().textColor().isEqual(UIColor::labelColor()));
  EXPECT_TRUE(cell("Capital").textLabel().textColor().isEqual(UIColor::labelColor()));
  EXPECT_TRUE(cell("Grey").textLabel().textColor().isEqual(UIColor::systemGrayColor()));
  for (const char* const name : {"Plain", "Grey"}) {
    EXPECT_THAT(rgba(cell(name).textLabel().highlightedTextColor()),
                Pointwise(DoubleEq(), {0.5, 0.6, 0.1, 1.0}));
  }
  // Grey is only a colour: the row acts.
  const NSArray before = top().specifiers();
  tap_text("Grey");
  EXPECT_NE(top().specifiers().as<NSArray>(), before);
}

TEST_F(StyledCellsTest, AButtonFollowsItsStyleAtTheNextLayout) {
  const PSTableCell button = cell("Plain");
  button.specifier().setProperty("disabled"_ns, "style"_ns);
  button.setNeedsLayout();
  button.layoutIfNeeded();
  EXPECT_TRUE(button.textLabel().textColor().isEqual(UIColor::systemGrayColor()));
}

TEST_F(StyledCellsTest, SlidersAndTogglesAreLaidOutAsSubtitles) {
  EXPECT_TRUE(make_cell("WispSlider").detailTextLabel());
  EXPECT_TRUE(make_cell("WispToggle").detailTextLabel());
  EXPECT_FALSE(make_cell("PSTableCell").detailTextLabel());
}

TEST_F(StyledCellsTest, SlidersAndTogglesHaveTheAccent) {
  const auto slider = cell<PSSliderTableCell>("slider").control<UISlider>();
  EXPECT_THAT(rgba(slider.minimumTrackTintColor()), Pointwise(DoubleEq(), {0.5, 0.3, 0.55, 1.0}));
  const auto toggle = cell<PSSwitchTableCell>("toggle");
  EXPECT_THAT(rgba(toggle.control<UISwitch>().onTintColor()), Pointwise(DoubleEq(), {0.5, 0.3, 0.55, 1.0}));
  EXPECT_TRUE(toggle.titleLabel().font().isEqual(UIFont::systemFontOfSize(18)));
}

TEST_F(StyledCellsTest, AThousandOfEachClassLeaveNothingBehind) {
  show("root");  // whose view makes the run-time class
  for (const char* const cls :
       {"WispButton", "WispSlider", "WispToggle", "XXXSegmentTableImageCell", "XXXSwitchWithInfoCell",
        "XXXLabeledSliderCell", "OndrelTintCell", "WispHeader"}) {
    const bool header = std::string(cls) == "WispHeader";
    ASSERT_TRUE(objc::ClassRef::named(cls)) << cls;
    std::vector<objc::Weak<NSObject>> made;
    // Each banner asks the package manager, which is another process: fewer of those, one after the other,
    // unless somebody has the time.
    const char* const wanted = std::getenv("WISPEN_TEST_BANNERS");
    const int banners = wanted != nullptr ? std::atoi(wanted) : 10;
    for (int i = 0; i < (header ? banners : 1000); ++i) {
      const objc::AutoreleasePool pool;
      const PSSpecifier specifier = plain_specifier();
      const PSTableCell cell = header ? allocate<PSTableCell>(cls).initialize<"initWithSpecifier:">(specifier)
                                      : make_cell(cls, specifier);
      cell.refreshCellContentsWithSpecifier(specifier);
      cell.setFrame({{0, 0}, {358, 60}});
      cell.layoutIfNeeded();
      made.emplace_back(cell);
      const NSArray subviews = cell.contentView().subviews();
      for (NSUInteger each = 0; each < subviews.count(); ++each)
        made.emplace_back(subviews.objectAtIndex(each));
      if (header) {
        ASSERT_EQ(wispen_host_run_until_idle(), 1) << wispen_host_last_error();
      }
    }
    ASSERT_EQ(wispen_host_run_until_idle(), 1) << wispen_host_last_error();
    std::size_t alive = 0;
    for (const auto& each : made) alive += each.lock() ? 1U : 0U;
    EXPECT_EQ(alive, 0U) << cls;
  }
}

TEST_F(StyledCellsTest, AToggleStandsOnBlurThatFollowsItsSize) {
  const auto toggle = cell<PSSwitchTableCell>("toggle");
  const auto blur = objc::cast_or_nil<UIVisualEffectView>(toggle.subviews().objectAtIndex(0));
  ASSERT_TRUE(blur);
  EXPECT_EQ((objc::send<"_style", NSInteger>(blur.effect())), 6);  // the thinnest material
  EXPECT_EQ(blur.autoresizingMask(), 18U);
  EXPECT_EQ(blur.frame(), toggle.bounds());
  toggle.setFrame({{0, 0}, {200, 77}});
  EXPECT_EQ(blur.frame(), toggle.bounds());
}

}  // namespace
}  // namespace wispen::testing
