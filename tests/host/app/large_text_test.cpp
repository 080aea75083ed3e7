// tests/host/app/large_text_test.cpp: no title of our pages is cut while it has room, at any size of text.

#include <string>

#include "tests/support/page_fixture.hpp"

namespace wispen::testing {
namespace {

class LargeTextTest : public PageTest, public ::testing::WithParamInterface<const char*> {
 protected:
  /// Whether anything but what is around it or in it stands within so many points to the right of the view.
  static constexpr double kRoom = 40;  // an arrow takes some
  static bool has_room(const Json& label, const Json& views, double end) {
    const double right = label["frame"][0].get<double>() + label["frame"][2].get<double>();
    for (const Json& view : views) {
      const double left = view["frame"][0];
      const double bottom = view["frame"][1].get<double>() + view["frame"][3].get<double>();
      const bool beside = bottom > label["frame"][1].get<double>() && view["frame"][3].get<double>() > 0 &&
                          !view.value("hidden", false);
      if (beside && left >= right && left < right + kRoom) return false;
      if (view.contains("subviews") && !has_room(label, view["subviews"], end)) return false;
    }
    return right + kRoom < end;
  }
  /// The texts that are cut beside room for more of them, in rows, in headers and in footers.
  static std::string cut_texts(const Json& views, const Json* part) {
    std::string cut;
    for (const Json& view : views) {
      const bool begins = view.contains("row") || view["class"] == "UITableViewHeaderFooterView";
      const Json* const inside = begins ? &view : part;
      if (inside != nullptr && view.value("truncated", false)) {
        const double end = (*inside)["frame"][0].get<double>() + (*inside)["frame"][2].get<double>();
        if (has_room(view, (*inside)["subviews"], end)) cut += " \"" + view["text"].get<std::string>() + "\"";
      }
      if (view.contains("subviews")) cut += cut_texts(view["subviews"], inside);
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
        EXPECT_EQ(cut_texts(tree(), nullptr), "") << page << " in " << language;
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
