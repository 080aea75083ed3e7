// tests/host/app/golden_test.cpp: every page as it is to look, in a few devices, languages and appearances.

#include "tests/support/golden.hpp"

#include <algorithm>

#include "tests/support/page_fixture.hpp"

namespace wispen::testing {
namespace {

struct Look {
  const char* name;  // of the file
  const char* page;
  const char* appearance = "light";
  const char* device = "phone";
  const char* language = "en";
  const char* text_size = "L";
  const char* direction = "natural";
  double scrolled = 0;
  const char* action = "";  // sent to the page once it is at rest
  bool half_way = false;    // the sliding button half-way down
};

class GoldenTest : public PageTest, public ::testing::WithParamInterface<Look> {
 protected:
  /// What lies at these heights, for the message: rows by their ids.
  static std::string rows_between(double top, double bottom) {
    std::string names;
    const std::function<void(const Json&)> walk = [&](const Json& view) {
      if (view.contains("row")) {
        const double y = view["frame"][1];
        const double height = view["frame"][3];
        if (y < bottom && y + height > top) names += " " + view["row"].value("id", std::string());
      }
      for (const Json& subview : view.value("subviews", Json::array())) walk(subview);
    };
    for (const Json& window : tree()) walk(window);
    return names.empty() ? " none" : names;
  }
};

INSTANTIATE_TEST_SUITE_P(
    Pages, GoldenTest,
    ::testing::Values(
        Look{"settings", "settings"}, Look{"settings-dark", "settings", "dark"}, Look{"root", "root"},
        Look{"root-dark", "root", "dark"}, Look{.name = "root-scrolled", .page = "root", .scrolled = 420},
        Look{"root-pad", "root", "light", "pad"}, Look{"root-pad-dark", "root", "dark", "pad"},
        Look{.name = "root-sliding", .page = "root", .half_way = true},
        Look{.name = "sheet-features", .page = "root", .action = "showWtfChangedInThisVersion"},
        Look{.name = "sheet-features-dark",
             .page = "root",
             .appearance = "dark",
             .action = "showWtfChangedInThisVersion"},
        Look{.name = "sheet-features-pad",
             .page = "root",
             .device = "pad",
             .action = "showWtfChangedInThisVersion"},
        Look{.name = "sheet-changelog", .page = "root", .action = "showWtfChangedInThisVersion2"},
        Look{.name = "sheet-changelog-pad-dark",
             .page = "root",
             .appearance = "dark",
             .device = "pad",
             .action = "showWtfChangedInThisVersion2"},
        Look{"root-german", "root", "light", "phone-small", "de"}, Look{"lock-separators", "SepSettingsCell"},
        Look{"lock-separators-dark", "SepSettingsCell", "dark"}, Look{"home-separators", "SepSettingsHSCell"},
        Look{"background", "BackgroundSettingsCell"},
        Look{"background-right-to-left", "BackgroundSettingsCell", "light", "phone", "en", "L", "rtl"},
        Look{"context-menu", "ContextMenuLabels"},
        Look{"context-menu-largest", "ContextMenuLabels", "light", "phone", "de", "AccessibilityXL"},
        Look{"notification", "Expanded3DAdjustments"},
        Look{"notification-dark", "Expanded3DAdjustments", "dark"}),
    [](const auto& test) {
      std::string name = test.param.name;
      std::ranges::replace(name, '-', '_');
      return name;
    });

TEST_P(GoldenTest, LooksAsItIsToLook) {
  const Look look = GetParam();
  for (const auto& [name, value] :
       {std::pair("device", look.device), std::pair("appearance", look.appearance),
        std::pair("language", look.language), std::pair("text-size", look.text_size),
        std::pair("direction", look.direction)}) {
    ASSERT_EQ(wispen_host_set_look(name, value), 1) << wispen_host_last_error();
  }
  const auto banner = device_path("/var/jb/Library/PreferenceBundles/3dvitrelleprefs.bundle/Assets");
  std::filesystem::create_directories(banner);
  std::filesystem::copy_file(std::string(WISPEN_TEST_BUNDLE) + "/Assets/1@2x.png", banner / "1.png");
  show_shipped(look.page);
  if (look.scrolled > 0) {
    wispen_host_wheel(195, 500, -look.scrolled);
    settle();
  }
  if (*look.action != '\0') {
    objc::perform<void>(top(), objc::Selector::named(look.action));
    settle();
  }
  if (look.half_way) {
    objc::send<"viewWillAppear:">(top(), false);
    wispen_host_advance(0.5);
  }
  const std::string file = folder_ / "actual.png";
  ASSERT_EQ(wispen_host_snapshot(file.c_str(), 1, 0), 1) << wispen_host_last_error();
  EXPECT_TRUE(looks_like({WISPEN_GOLDENS, WISPEN_GOLDEN_FAILURES}, look.name, file,
                         [](double top, double bottom) { return ", rows:" + rows_between(top, bottom); }));
}

}  // namespace
}  // namespace wispen::testing
