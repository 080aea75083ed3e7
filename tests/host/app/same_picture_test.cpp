// tests/host/app/same_picture_test.cpp: a page is one picture, whatever was seen before it.

#include <string>

#include "tests/support/page_fixture.hpp"
#include "tests/support/temporary_folder.hpp"

namespace wispen::testing {
namespace {

class SamePictureTest : public PageTest {
 protected:
  std::string picture(const char* page, bool whole = false) {
    show(page);
    const std::string file = folder_ / "page.png";
    EXPECT_EQ(wispen_host_snapshot(file.c_str(), 1, whole ? 1 : 0), 1) << wispen_host_last_error();
    return contents_of(file);
  }
};

TEST_F(SamePictureTest, ByWhateverRoadThePageIsReached) {
  ASSERT_EQ(wispen_host_offer_bundle(WISPEN_TEST_BUNDLE), 1) << wispen_host_last_error();
  const std::string direct = picture("ContextMenuLabels");
  picture("root");
  EXPECT_TRUE(picture("ContextMenuLabels") == direct) << "after the root page";
  picture("SepSettingsCell");
  EXPECT_TRUE(picture("ContextMenuLabels") == direct) << "after another page";
  picture("settings");
  EXPECT_TRUE(picture("ContextMenuLabels") == direct) << "after the list of Settings";
}

TEST_F(SamePictureTest, AlsoAfterTheTextWasLarger) {
  ASSERT_EQ(wispen_host_offer_bundle(WISPEN_TEST_BUNDLE), 1) << wispen_host_last_error();
  const std::string before = picture("ContextMenuLabels");
  ASSERT_EQ(wispen_host_set_look("text-size", "AccessibilityM"), 1);
  EXPECT_FALSE(picture("ContextMenuLabels") == before);
  ASSERT_EQ(wispen_host_set_look("text-size", "L"), 1);
  EXPECT_TRUE(picture("ContextMenuLabels") == before);
}

TEST_F(SamePictureTest, InItsFullLengthEveryRowIsThere) {
  ASSERT_EQ(wispen_host_offer_bundle(WISPEN_TEST_BUNDLE), 1) << wispen_host_last_error();
  picture("root", true);
  const auto faded =
      search(tree(), [](const Json& view) { return view.contains("row") && view.contains("shown_alpha"); });
  EXPECT_FALSE(faded) << faded->dump();
}

TEST_F(SamePictureTest, ABundleThatIsWrittenStandsForTheInstalledOneOfItsName) {
  const auto installed = device_path("/var/jb/Library/PreferenceBundles/3dvitrelleprefs.bundle");
  std::filesystem::create_directories(installed.parent_path());
  std::filesystem::copy(WISPEN_TEST_BUNDLE, installed, std::filesystem::copy_options::recursive);
  const auto entries = device_path("/var/jb/Library/PreferenceLoader/Preferences");
  std::filesystem::create_directories(entries);
  write_file(entries / "3dvitrelleprefs.plist",
             plist("<dict><key>entry</key><dict><key>label</key><string>Wispen</string>"
                   "<key>bundle</key><string>3dvitrelleprefs</string></dict></dict>"));
  ASSERT_EQ(wispen_host_offer_bundle(WISPEN_TEST_BUNDLE), 1) << wispen_host_last_error();
  show("settings");
  EXPECT_EQ(top().specifiers().count(), 2U) << "the group and one row";
}

TEST_F(SamePictureTest, AnotherLanguageRenamesTheWayBackToo) {
  ASSERT_EQ(wispen_host_offer_bundle(WISPEN_TEST_BUNDLE), 1) << wispen_host_last_error();
  show("root");
  EXPECT_TRUE(with_text("Settings"));
  ASSERT_EQ(wispen_host_set_look("language", "de"), 1);
  settle();
  EXPECT_TRUE(with_text("Einstellungen"));
  EXPECT_FALSE(with_text("Settings"));
}

}  // namespace
}  // namespace wispen::testing
