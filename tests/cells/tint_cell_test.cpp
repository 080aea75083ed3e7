// tests/cells/tint_cell_test.cpp: the cell class that is made at run time.

#include "tests/support/page_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::DoubleEq;
using ::testing::Pointwise;

class TintCellTest : public PageTest {};

TEST_F(TintCellTest, ColoursItsTitleWhateverItIsAndHoweverOften) {
  show_shipped("root");
  const objc::ClassRef cls = objc::ClassRef::named("OndrelTintCell");
  ASSERT_TRUE(cls);
  EXPECT_EQ(cls.superclass(), objc::class_for<PSTableCell>());
  const auto made = make_cell("OndrelTintCell");
  for (const char* const title : {"One", "Two"}) {
    made.setTitle(NSString(title));
    EXPECT_EQ(made.titleLabel().text().utf8(), title);
    EXPECT_THAT(rgba(made.titleLabel().textColor()), Pointwise(DoubleEq(), {0.7, 0.6, 0.8, 1.0}));
    EXPECT_THAT(rgba(made.titleLabel().highlightedTextColor()), Pointwise(DoubleEq(), {0.7, 0.6, 0.8, 1.0}));
    made.titleLabel().setTextColor(UIColor::redColor());
  }
}

TEST_F(TintCellTest, IsARowOfTheRootPage) {
  show_shipped("root");
  const auto found = [] {
    return search(tree(), [](const Json& view) { return view["class"] == "OndrelTintCell"; });
  };
  for (int i = 0; i < 30 && !found(); ++i) {
    wispen_host_wheel(200, 500, -200);
    settle();
  }
  const auto view = found();
  ASSERT_TRUE(view);
  const auto label = part(*view, "UILabel");
  ASSERT_TRUE(label);
  EXPECT_EQ((*label)["colour"], "#B399CCFF");
}

}  // namespace
}  // namespace wispen::testing
