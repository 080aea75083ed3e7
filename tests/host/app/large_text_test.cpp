// tests/host/app/large_text_test.cpp: no title of our pages is cut while it has room, at any size of text.

#include <string>

#include "tests/support/page_fixture.hpp"

namespace wispen::testing {
namespace {

class LargeTextTest : public PageTest, public ::testing::WithParamInterface<const char*> {
 protected:
  /// The texts that are cut in rows, in headers and in footers.
  static std::string cut_texts(const Json& views, bool inside) {
    std::string cut;
    for (const Json& view : views) {
      const std::string cls = view["class"];
      const bool part = inside || view.contains("row") || cls == "UITableViewHeaderFooterView";
      if (part && view.value("truncated", false)) cut += " \"" + view["text"].get<std::string>() + "\"";
      if (view.contains("subviews")) cut += cut_texts(view["subviews"], part);
    }
    return cut;
  }
};

INSTANTIATE_TEST_SUITE_P(Sizes, LargeTextTest,
                         ::testing::Values("XS", "S", "M", "L", "XL", "XXL", "XXXL", "AccessibilityM",
                                           "AccessibilityL", "AccessibilityXL", "AccessibilityXXL",
                                           "AccessibilityXXXL"),
                         [](const auto& test) { return std::string(test.param); });

TEST_P(LargeTextTest, CutsNoTitleOfAnyPageInAnyLanguage) {
  ASSERT_EQ(wispen_host_set_look("text-size", GetParam()), 1) << wispen_host_last_error();
  ASSERT_EQ(wispen_host_offer_bundle(WISPEN_TEST_BUNDLE), 1) << wispen_host_last_error();
  for (const char* const language : {"en", "de"}) {
    ASSERT_EQ(wispen_host_set_look("language", language), 1) << wispen_host_last_error();
    for (const char* const page : {"root", "SepSettingsCell", "SepSettingsHSCell", "BackgroundSettingsCell",
                                   "ContextMenuLabels", "Expanded3DAdjustments"}) {
      show(page);
      for (int screens = 0; screens < 30; ++screens) {
        EXPECT_EQ(cut_texts(tree(), false), "") << page << " in " << language;
        const CGPoint before = top().table().contentOffset();
        wispen_host_wheel(195, 500, -500);
        settle();
        if (top().table().contentOffset().y == before.y) break;
      }
    }
  }
}

}  // namespace
}  // namespace wispen::testing
