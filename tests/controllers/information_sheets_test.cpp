// tests/controllers/information_sheets_test.cpp: the two sheets, by the rows that open them.

#include <algorithm>

#include "platform/OnBoardingKit.hpp"
#include "tests/support/page_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::DoubleEq;
using ::testing::ElementsAre;
using ::testing::Pointwise;

// As it was released: spelling, blanks before line ends and dots are part of the text.
constexpr char kFeatures[] =
    "Separators:\n"
    "\u2022 Dynamic Color Bold Separators - will color bold separators with icon color \n\n"
    "\u2022 Dynamic Color Thin Separators - will color this separators with icon color \n\n"
    "\u2022 Thickness Adjustment - will change the thickness of the separators (both thin and bold) "
    "\n\n"
    "\u2022 Sides Trim (Width) Adjustment - width of both of separators (higher value = less width) "
    "\n\n"
    "Context Menu:\n"
    "\u2022 Border - will create a border, dynamic background coloring should be disable if using "
    "this feature (beacuse then the border will not be seen......) \n\n"
    "\u2022 Dynamic Border Coloring - will color the border of the menu with icon color "
    "(automatically when setting a border) \n\n"
    "\u2022 Vitrelle Background - will remove original dark/light background and replace this with a "
    "vitrelle blur background\n\n"
    "\u2022 Dynamic Primary Icon Background Color - will color the background with icon color \n\n"
    "\u2022 Dynamic Primary Label Coloring - will color the labels of the menu with icon color \n\n"
    "\u2022 Hide Separators - can hide bold / thin separately \n\n"
    "\u2022 Dynamic Cell Hiding - will hide 3d menu cells , to hide multiple cells please use ';' "
    "between (i.e Remove App;Share) \n\n"
    "\u2022 Custom Corner Radius\n\n"
    "Expanded 3D Menu (long pressing on a notification)\n"
    "\u2022 Dynamic Primary Icon Title Coloring - will color the title of the expanded lockscreen "
    "notificcation with icon color \n\n"
    "\u2022 Dynamic Primary Subtitle Coloring - will color the subtitle of the expanded lockscreen "
    "notification with icon color \n\n"
    "\u2022 Dynamic Primary Background Coloring - will color the background of the expanded "
    "lockscreen notification with icon color\n\n";

std::vector<std::string> struck;
objc::Original<void(NSString, NSObject, NSRange)> add_attribute;

void note_attribute(const NSMutableAttributedString& text, const NSString& name, const NSObject& value,
                    NSRange range) {
  if (name.isEqual(NSStrikethroughStyleAttributeName) && range.location == 0 &&
      range.length == text.length() && value.isEqual(NSNumber::numberWithInt(1))) {
    struck.push_back(text.string().utf8());
  }
  add_attribute(text, name, value, range);
}

// A framework that loads a sheet's view when it gets its first item.
bool load_early = false;
objc::Original<void(NSString, NSString, UIImage)> add_item;

void load_and_add(const OBWelcomeController& sheet, const NSString& title, const NSString& description,
                  const UIImage& image) {
  if (load_early) (void)sheet.view();
  add_item(sheet, title, description, image);
}

std::vector<NSInteger> styles;
objc::Original<NSObject(NSInteger)> settings_for_style;

NSObject note_style(objc::ClassRef settings, NSInteger style) {
  styles.push_back(style);
  return settings_for_style(settings, style);
}

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
  static void expect_frosted() {
    const UIView view = sheet().view();
    EXPECT_EQ(rgba(view.backgroundColor()), rgba(UIColor::clearColor()));
    const NSArray subviews = view.subviews();
    int panes = 0;
    for (NSUInteger i = 0; i < subviews.count(); ++i) {
      if (std::string(objc::class_of(subviews.objectAtIndex(i)).name()) != "_UIBackdropView") continue;
      ++panes;
      EXPECT_EQ(i, 0U) << "behind everything";
      const auto pane = subviews.objectAtIndex<UIView>(i);
      EXPECT_TRUE(pane.clipsToBounds());
      EXPECT_EQ(pane.frame(), view.bounds());  // fits its superview by itself
    }
    EXPECT_EQ(panes, 1);
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
  EXPECT_EQ(all[5], kFeatures);
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

TEST_F(InformationSheetsTest, HasASymbolBesideEveryItem) {
  const auto symbols = [] {
    std::vector<UIImage> found;
    const std::function<void(const UIView&)> walk = [&](const UIView& view) {
      const auto image = objc::cast_or_nil<UIImageView>(view);
      if (image && image.image()) found.push_back(image.image());
      const NSArray subviews = view.subviews();
      for (NSUInteger i = 0; i < subviews.count(); ++i) walk(subviews.objectAtIndex<UIView>(i));
    };
    walk(sheet().view());
    return found;
  };
  act("showWtfChangedInThisVersion");
  auto found = symbols();
  ASSERT_EQ(found.size(), 2U);
  EXPECT_TRUE(found[0].isEqual(UIImage::systemImageNamed("applelogo"_ns)));
  EXPECT_TRUE(found[1].isEqual(UIImage::systemImageNamed("exclamationmark.circle.fill"_ns)));
  EXPECT_FALSE(found[0].isEqual(found[1]));
  dismiss();
  act("showWtfChangedInThisVersion2");
  found = symbols();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_TRUE(found[0].isEqual(UIImage::systemImageNamed("wrench.fill"_ns)));
}

TEST_F(InformationSheetsTest, StrikesTheChangesOutInACopyThatNobodySeesOnPurpose) {
  if (!add_attribute) {
    objc::Category<NSMutableAttributedString>().method<"addAttribute:value:range:", &note_attribute>(
        add_attribute);
  }
  struck.clear();
  act("showWtfChangedInThisVersion2");
  EXPECT_THAT(struck, ElementsAre(texts().back()));
  dismiss();
  act("showWtfChangedInThisVersion2");
  act("showWtfChangedInThisVersion");
  EXPECT_EQ(struck.size(), 1U);
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

TEST_F(InformationSheetsTest, FrostsAViewThatIsLoadedBeforeItsTime) {
  if (!add_item) {
    objc::Category<OBWelcomeController>()
        .method<"addBulletedListItemWithTitle:description:image:", &load_and_add>(add_item);
    objc::Category<UIBackdropViewSettings>().class_method<"settingsForStyle:", &note_style>(
        settings_for_style);
  }
  load_early = true;
  styles.clear();
  act("showWtfChangedInThisVersion");
  expect_frosted();
  EXPECT_THAT(styles, ElementsAre(1));
  dismiss();
  act("showWtfChangedInThisVersion");  // is there already: nothing is put twice
  expect_frosted();
  EXPECT_THAT(styles, ElementsAre(1));
  dismiss();
  act("showWtfChangedInThisVersion2");
  expect_frosted();
  EXPECT_THAT(styles, ElementsAre(1, 2));
  load_early = false;
}

TEST_F(InformationSheetsTest, LivesAsLongAsItsPage) {
  objc::Weak<UIViewController> features;
  objc::Weak<UIViewController> changes;
  {
    const objc::AutoreleasePool pool;
    act("showWtfChangedInThisVersion");
    features = sheet();
    dismiss();
    act("showWtfChangedInThisVersion2");
    changes = sheet();
    dismiss();
  }
  EXPECT_TRUE(features.lock());
  EXPECT_TRUE(changes.lock());
  {
    const objc::AutoreleasePool pool;
    navigation().popViewController(false);
    settle();
  }
  EXPECT_FALSE(features.lock());
  EXPECT_FALSE(changes.lock());
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
