// tests/cells/cell_shape_test.cpp: what every class of cells has in common: bases, variables, and nothing
// where the framework gives nothing.

#include <algorithm>

#include "tests/support/class_variables.hpp"
#include "tests/support/page_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// While it lives, the framework gives no cell, but notes the style that it is asked for.
class FrameworkWithoutCells {
 public:
  FrameworkWithoutCells() { put(reinterpret_cast<objc::abi::IMP>(&refuse)); }
  ~FrameworkWithoutCells() { put(original_); }
  FrameworkWithoutCells(const FrameworkWithoutCells&) = delete;
  FrameworkWithoutCells& operator=(const FrameworkWithoutCells&) = delete;

  static inline NSInteger style = -1;

 private:
  static objc::abi::Class cell_class() { return objc::class_for<PSTableCell>().borrow(); }
  static objc::abi::SEL initializer() {
    return objc::selector<"initWithStyle:reuseIdentifier:specifier:">().borrow();
  }
  static objc::abi::id refuse(objc::abi::id self, objc::abi::SEL, NSInteger asked, objc::abi::id,
                              objc::abi::id) {
    style = asked;
    objc::abi::call<void>(self, objc::selector<"release">().borrow());
    return nullptr;
  }
  void put(objc::abi::IMP implementation) const {
    objc::abi::replace_method(cell_class(), initializer(), implementation,
                              objc::abi::method_getTypeEncoding(method_));
  }

  const objc::abi::Method method_ = objc::abi::class_getInstanceMethod(cell_class(), initializer());
  const objc::abi::IMP original_ = objc::abi::method_getImplementation(method_);
};

/// What the framework's own class of cells heard from the bundle's.
std::vector<std::string> heard;
objc::Original<void()> tint_changed;
void note_tint(const PSTableCell& cell) {
  heard.emplace_back("tint");
  tint_changed(cell);
}
objc::Original<void(PSSpecifier)> refreshed;
void note_refresh(const PSTableCell& cell, const PSSpecifier& specifier) {
  heard.emplace_back("refresh");
  refreshed(cell, specifier);
}
objc::Original<void()> laid_out;
void note_layout(const PSTableCell& cell) {
  heard.emplace_back("layout");
  laid_out(cell);
}

class CellShapeTest : public PageTest {
 protected:
  void SetUp() override {
    PageTest::SetUp();
    load_shipped_bundle();
  }
  static std::string base_of(const char* cls) { return objc::ClassRef::named(cls).superclass().name(); }
};

TEST_F(CellShapeTest, EachClassStandsOnTheFrameworksOwn) {
  EXPECT_EQ(base_of("WispHeader"), "PSTableCell");
  EXPECT_EQ(base_of("WispButton"), "PSTableCell");
  EXPECT_EQ(base_of("WispSlider"), "PSSliderTableCell");
  EXPECT_EQ(base_of("WispToggle"), "PSSwitchTableCell");
  EXPECT_EQ(base_of("XXXLabeledSliderCell"), "PSSliderTableCell");
  EXPECT_EQ(base_of("XXXSwitchWithInfoCell"), "PSSwitchTableCell");
  EXPECT_EQ(base_of("XXXSegmentTableImageCell"), "PSSegmentTableCell");
}

TEST_F(CellShapeTest, EachClassKeepsItsVariablesByNameAndInOrder) {
  EXPECT_THAT(variables_of("XXXLabeledSliderCell"),
              ElementsAre("_stackView", "_sliderStackView", "_sliderLabel", "_valueLabel"));
  EXPECT_THAT(variables_of("XXXSwitchWithInfoCell"), ElementsAre("_infoButton"));
  EXPECT_THAT(variables_of("XXXSegmentTableImageCell"), ElementsAre("_bundle"));
  for (const char* const cls : {"WispHeader", "WispButton", "WispSlider", "WispToggle"}) {
    EXPECT_THAT(variables_of(cls), IsEmpty()) << cls;
  }
}

TEST_F(CellShapeTest, WhatIsOverriddenIsHandedOnToTheFramework) {
  if (!laid_out) {
    objc::Category<PSTableCell>()
        .method<"tintColorDidChange", &note_tint>(tint_changed)
        .method<"refreshCellContentsWithSpecifier:", &note_refresh>(refreshed)
        .method<"layoutSubviews", &note_layout>(laid_out);
  }
  for (const char* const cls : {"XXXLabeledSliderCell", "XXXSwitchWithInfoCell"}) {
    const PSTableCell cell = make_cell(cls);
    heard.clear();
    objc::send<"tintColorDidChange">(cell);
    EXPECT_THAT(heard, ElementsAre("tint")) << cls;
  }
  for (const char* const cls :
       {"XXXLabeledSliderCell", "XXXSwitchWithInfoCell", "XXXSegmentTableImageCell"}) {
    const PSTableCell cell = make_cell(cls);
    heard.clear();
    cell.refreshCellContentsWithSpecifier(plain_specifier());
    EXPECT_EQ(std::ranges::count(heard, "refresh"), 1) << cls;
  }
  const PSTableCell button = make_cell("WispButton");
  heard.clear();
  objc::send<"layoutSubviews">(button);
  EXPECT_THAT(heard, ElementsAre("layout"));
}

TEST_F(CellShapeTest, NothingFromTheFrameworkStaysNothing) {
  const FrameworkWithoutCells without;
  for (const char* const cls : {"WispSlider", "WispToggle", "XXXLabeledSliderCell", "XXXSwitchWithInfoCell",
                                "XXXSegmentTableImageCell"}) {
    const PSSpecifier specifier = plain_specifier();
    EXPECT_FALSE(make_cell(cls, specifier)) << cls;
    EXPECT_FALSE(specifier.propertyForKey("height"_ns)) << cls;
  }
  EXPECT_FALSE(allocate<PSTableCell>("WispHeader").initialize<"initWithSpecifier:">(plain_specifier()));
}

TEST_F(CellShapeTest, SlidersAndTogglesIgnoreTheStyleThatTheyAreGivenOnPurpose) {
  const FrameworkWithoutCells without;
  const auto style_of = [](const char* cls, NSInteger given) {
    allocate<PSTableCell>(cls).initialize<"initWithStyle:reuseIdentifier:specifier:">(given, "x"_ns,
                                                                                      plain_specifier());
    return FrameworkWithoutCells::style;
  };
  for (const NSInteger given : {0, 1, 3}) {
    EXPECT_EQ(style_of("WispSlider", given), 3);
    EXPECT_EQ(style_of("WispToggle", given), 3);
    for (const char* const cls :
         {"XXXLabeledSliderCell", "XXXSwitchWithInfoCell", "XXXSegmentTableImageCell"}) {
      EXPECT_EQ(style_of(cls, given), given) << cls;
    }
  }
  allocate<PSTableCell>("WispHeader").initialize<"initWithSpecifier:">(plain_specifier());
  EXPECT_EQ(FrameworkWithoutCells::style, 0);
}

}  // namespace
}  // namespace wispen::testing
