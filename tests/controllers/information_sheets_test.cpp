// tests/controllers/information_sheets_test.cpp: the two sheets, by the rows that open them.

#include <algorithm>

#include "tests/support/page_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::DoubleEq;
using ::testing::ElementsAre;
using ::testing::Pointwise;
using ::testing::StartsWith;

class InformationSheetsTest : public PageTest {
 protected:
  void SetUp() override {
    PageTest::SetUp();
    show_shipped("root");
  }
  static void act(const char* action) {
    objc::perform<void>(top(), objc::Selector::named(action));
    settle();
  }
  static UIViewController sheet() { return navigation().presentedViewController(); }
  static void dismiss() {
    navigation().dismissViewController(true);
    settle();
  }
  /// Texts on the sheet, from top to bottom.
  static std::vector<std::string> texts() {
    std::vector<std::pair<double, std::string>> found;
    const std::function<void(const UIView&)> walk = [&](const UIView& view) {
      if (const auto label = objc::cast_or_nil<UILabel>(view)) {
        found.emplace_back(label.convertRectToView(label.bounds(), UIView()).origin.y, label.text().utf8());
      }
      const NSArray subviews = view.subviews();
      for (NSUInteger i = 0; i < subviews.count(); ++i) walk(subviews.objectAtIndex<UIView>(i));
    };
    walk(sheet().view());
    std::ranges::stable_sort(found, {}, [](const auto& each) { return each.first; });
    std::vector<std::string> all;
    for (auto& [y, text] : found) all.push_back(text);
    return all;
  }
};

TEST_F(InformationSheetsTest, TellsOfTheFeatures) {
  tap_text("Features & Explanations");
  ASSERT_TRUE(sheet());
  EXPECT_STREQ(objc::class_of(sheet()).name(), "OBWelcomeController");
  EXPECT_EQ(sheet().modalPresentationStyle(), UIModalPresentationStyle::FormSheet);
  EXPECT_THAT(rgba(sheet().view().tintColor()), Pointwise(DoubleEq(), {0.7, 0.6, 0.8, 1.0}));
  const auto all = texts();
  ASSERT_EQ(all.size(), 6U);
  EXPECT_EQ(all[0], "Inital Release");
  EXPECT_EQ(all[1], "Supports iOS 15 - 17 || Rootless & Rootfull");
  EXPECT_EQ(all[2], "Prolouge");
  EXPECT_EQ(all[3], "Made With Love & Tears & Anger by p1nefold.\n\nEnjoy!\n\n----------------------------");
  EXPECT_EQ(all[4], "Features & Explanations");
  EXPECT_EQ(NSString(all[5].c_str()).length(), 1541U);
  EXPECT_THAT(all[5], StartsWith("Separators:\n\u2022 Dynamic Color Bold Separators - will color bold "
                                 "separators with icon color \n\n"));
  EXPECT_THAT(all[5], ::testing::HasSubstr("(beacuse then the border will not be seen......) \n\n"));
  EXPECT_THAT(all[5], ::testing::EndsWith("expanded lockscreen notification with icon color\n\n"));
}

TEST_F(InformationSheetsTest, TellsOfTheChanges) {
  tap_text("Changelog");
  EXPECT_THAT(
      texts(),
      ElementsAre("Changelog", "And bug fixes", "Changelog / Fixes",
                  "  - Fixed Separator Hidden Logic \n\n- Fixed ios => 16 Hooks (Coloring, Separators) "
                  "\n\n- Fixed HomeScreen 3D Expanded Coloring, Now its merged with HomeScreen Settings "
                  "\n\n - Added proper description to sileo \n\n- Added new features & explanations "
                  "button (exclamation mark icon)"));
}

TEST_F(InformationSheetsTest, IsMadeOnceAndTappedEveryTime) {
  act("showWtfChangedInThisVersion");
  const UIViewController first = sheet();
  dismiss();
  EXPECT_FALSE(sheet());
  act("showWtfChangedInThisVersion");
  EXPECT_EQ(sheet(), first);
  EXPECT_EQ(texts().size(), 6U);  // nothing is added twice
  EXPECT_EQ(wispen_host_sound_count(), 2U);
  EXPECT_EQ(wispen_host_sound(0), 1521U);
  EXPECT_EQ(wispen_host_sound(1), 1521U);
  dismiss();
  act("showWtfChangedInThisVersion2");
  EXPECT_NE(sheet(), first);
}

TEST_F(InformationSheetsTest, HasNoIconBecauseThePrefixIsPutTwice) {
  const auto has_icon = [] {
    bool found = false;
    const std::function<void(const UIView&)> walk = [&](const UIView& view) {
      const auto image = objc::cast_or_nil<UIImageView>(view);
      found = found || (image && image.image() && !image.image().isSymbolImage());
      const NSArray subviews = view.subviews();
      for (NSUInteger i = 0; i < subviews.count(); ++i) walk(subviews.objectAtIndex<UIView>(i));
    };
    walk(sheet().view());
    return found;
  };
  const std::string assets = "/var/jb/Library/PreferenceBundles/3dvitrelleprefs.bundle/Assets";
  const auto put = [](const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    std::filesystem::copy_file(std::string(WISPEN_TEST_BUNDLE) + "/Assets/1.png", folder / "1.png");
  };
  put(device_path(assets));
  act("showWtfChangedInThisVersion");
  EXPECT_FALSE(has_icon());
  dismiss();
  put(device_path("/var/jb" + assets));
  act("showWtfChangedInThisVersion2");
  EXPECT_TRUE(has_icon());
}

TEST_F(InformationSheetsTest, FindsNoLoadedViewForItsBackdrop) {
  // The view is loaded by the tint, which comes after; so the sheet keeps its own background.
  act("showWtfChangedInThisVersion");
  EXPECT_FALSE(search(tree(), [](const Json& view) { return view["class"] == "_UIBackdropView"; }));
}

TEST_F(InformationSheetsTest, IsLeftByEscapeAndByADragDown) {
  act("showWtfChangedInThisVersion2");
  wispen_host_key("escape");
  settle();
  EXPECT_FALSE(sheet());
  act("showWtfChangedInThisVersion2");
  wispen_host_touch(WISPEN_HOST_TOUCH_BEGAN, 195, 120);
  for (int i = 1; i <= 20; ++i) {
    wispen_host_advance(1.0 / 60);
    wispen_host_touch(WISPEN_HOST_TOUCH_MOVED, 195, 120 + 30.0 * i);
  }
  wispen_host_touch(WISPEN_HOST_TOUCH_ENDED, 195, 720);
  settle();
  EXPECT_FALSE(sheet());
}

TEST_F(InformationSheetsTest, IsABoxOnAPadThatAClickBesideCloses) {
  ASSERT_EQ(wispen_host_set_look("device", "pad"), 1);
  settle();
  act("showWtfChangedInThisVersion");
  const CGRect frame = sheet().view().convertRectToView(sheet().view().bounds(), UIView());
  EXPECT_EQ(frame.size, (CGSize{540, 620}));
  wispen_host_touch(WISPEN_HOST_TOUCH_BEGAN, 20, 20);
  wispen_host_touch(WISPEN_HOST_TOUCH_ENDED, 20, 20);
  settle();
  EXPECT_FALSE(sheet());
}

}  // namespace
}  // namespace wispen::testing
