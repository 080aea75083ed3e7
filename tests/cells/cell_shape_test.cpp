// tests/cells/cell_shape_test.cpp: what every class of cells has in common: bases, variables, and nothing
// where the framework gives nothing.

#include "tests/support/class_variables.hpp"
#include "tests/support/page_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// While it lives, the framework gives no cell.
class FrameworkWithoutCells {
 public:
  FrameworkWithoutCells() { put(reinterpret_cast<objc::abi::IMP>(&refuse)); }
  ~FrameworkWithoutCells() { put(original_); }
  FrameworkWithoutCells(const FrameworkWithoutCells&) = delete;
  FrameworkWithoutCells& operator=(const FrameworkWithoutCells&) = delete;

 private:
  static objc::abi::Class cell_class() { return objc::class_for<PSTableCell>().borrow(); }
  static objc::abi::SEL initializer() {
    return objc::selector<"initWithStyle:reuseIdentifier:specifier:">().borrow();
  }
  static objc::abi::id refuse(objc::abi::id self, objc::abi::SEL, NSInteger, objc::abi::id, objc::abi::id) {
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

}  // namespace
}  // namespace wispen::testing
