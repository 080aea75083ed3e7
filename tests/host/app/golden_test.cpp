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

/// The page of a look that shows one row of every class of the bundle's own.
constexpr const char* kCells = "cells";

std::string list_of_cells() {
  const auto row = [](const char* cell, const char* cls, const char* label, const std::string& more = "") {
    return item({{"cell", cell}, {"cellClass", cls}, {"label", label}, {"key", cls}, {"id", cls}}, more);
  };
  const std::string range = "<key>min</key><real>0</real><key>max</key><real>8</real><key>default</key>";
  return specifier_list(
      item({{"cell", "PSStaticTextCell"}, {"cellClass", "WispHeader"}, {"id", "WispHeader"}},
           "<key>height</key><integer>100</integer>") +
      item({{"cell", "PSGroupCell"}, {"label", "Rows"}}) +
      row("PSLinkCell", "OndrelTintCell", "A page", "<key>icon</key><string>background.png</string>") +
      row("PSButtonCell", "WispButton", "A button", "<key>icon</key><string>features.png</string>") +
      row("PSSwitchCell", "WispToggle", "A switch", "<key>default</key><true/>") +
      row("PSSwitchCell", "XXXSwitchWithInfoCell", "A switch and why",
          "<key>infoMessage</key><string>Why</string><key>default</key><false/>") +
      item({{"cell", "PSGroupCell"}, {"label", "Values"}}) +
      row("PSSliderCell", "WispSlider", "A slider", range + "<real>2</real><key>showValue</key><true/>") +
      row("PSSliderCell", "XXXLabeledSliderCell", "A slider's title", range + "<real>5.5</real>") +
      row("PSSegmentCell", "XXXSegmentTableImageCell", "Pictures",
          "<key>validValues</key><array><string>thin</string><string>regular</string><string>thick</string>"
          "</array><key>validTitles</key><array><string>blur-thin</string><string>blur-regular</string>"
          "<string>blur-thick</string></array><key>default</key><string>regular</string>"));
}

class GoldenTest : public PageTest, public ::testing::WithParamInterface<Look> {
 protected:
  /// One row of every class, with the shipped pictures.
  void show_cells() {
    for (const auto& file : std::filesystem::directory_iterator(WISPEN_TEST_BUNDLE)) {
      if (file.path().extension() != ".png") continue;
      std::filesystem::create_directories(bundle_folder());
      std::filesystem::copy_file(file.path(), bundle_folder() / file.path().filename());
    }
    show("SepSettingsCell",
         {{"Root.plist",
           specifier_list(item({{"cell", "PSLinkCell"}, {"label", "Page"}, {"detail", "SepSettingsCell"}}))},
          {"SepSettingsLS.plist", list_of_cells()}});
  }
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
        Look{"notification-dark", "Expanded3DAdjustments", "dark"}, Look{"cells", kCells},
        Look{"cells-dark", kCells, "dark"}, Look{"cells-pad", kCells, "light", "pad-mini"},
        Look{"cells-right-to-left", kCells, "light", "phone", "en", "L", "rtl"},
        Look{"cells-largest", kCells, "dark", "phone", "en", "AccessibilityXL"}),
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
  look.page == std::string_view(kCells) ? show_cells() : show_shipped(look.page);
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
