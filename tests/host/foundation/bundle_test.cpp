// tests/host/foundation/bundle_test.cpp: bundles by path, their classes, resources and translations.

#include <filesystem>
#include <string>

#include "tests/support/host_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::HasSubstr;

class BundleTest : public HostTest {
 protected:
  NSBundle bundle() const { return NSBundle::bundleWithPath(bundle_folder().c_str()); }
  std::string localized(const char* key, const char* table = "Root", const char* value = nullptr) const {
    return bundle().localizedString(NSString(key), NSString(value), NSString(table)).utf8();
  }
};

TEST_F(BundleTest, KnowsItsPathIdentifierAndPrincipalClass) {
  load_bundle_with({});
  EXPECT_EQ(bundle().bundlePath().utf8(), bundle_folder().string());
  EXPECT_EQ(bundle().bundleIdentifier().utf8(), "test.bundle");
  EXPECT_STREQ(bundle().principalClass().name(), "WispRootListController");
  EXPECT_EQ(bundle().infoDictionary().objectForKey<NSString>("NSPrincipalClass"_ns).utf8(),
            "WispRootListController");
}

TEST_F(BundleTest, KnowsItsCodeItsLanguagesAndItsFolders) {
  load_bundle_with({{"en.lproj/Root.strings", ""}, {"de.lproj/Root.strings", ""}, {"Lists/Deep.plist", "x"}});
  const NSBundle own = bundle();
  EXPECT_TRUE((objc::send<"isLoaded", bool>(own)));
  EXPECT_TRUE((objc::send<"load", bool>(own)));
  EXPECT_EQ((objc::send<"executablePath", NSString>(own)).utf8(),
            (bundle_folder() / "3dvitrelleprefs").string());
  EXPECT_EQ((objc::send<"resourcePath", NSString>(own)).utf8(), bundle_folder().string());
  const auto languages = objc::send<"localizations", NSArray>(own);
  ASSERT_EQ(languages.count(), 2U);
  EXPECT_EQ(languages.objectAtIndex<NSString>(0).utf8(), "de");
  EXPECT_TRUE((objc::send<"localizedInfoDictionary", NSDictionary>(own)).isEqual(own.infoDictionary()));
  EXPECT_STREQ((objc::send<"classNamed:", objc::ClassRef>(own, "WispBaseController"_ns)).name(),
               "WispBaseController");
  EXPECT_EQ(
      (objc::send<"pathForResource:ofType:inDirectory:", NSString>(own, "Deep"_ns, "plist"_ns, "Lists"_ns))
          .utf8(),
      (bundle_folder() / "Lists/Deep.plist").string());
}

TEST_F(BundleTest, OwnsTheClassesThatItsCodeRegistered) {
  load_bundle_with({});
  for (const char* const name :
       {"WispRootListController", "WispBaseController", "SepSettingsCell", "SepSettingsHSCell"}) {
    EXPECT_EQ(NSBundle::bundleForClass(objc::ClassRef::named(name)), bundle()) << name;
  }
  EXPECT_FALSE(NSBundle::bundleForClass(objc::class_for<PSListController>()) == bundle());
  EXPECT_FALSE(NSBundle::bundleForClass(objc::class_for<NSString>()) == bundle());
}

TEST_F(BundleTest, TwoPathsAreTwoBundlesAlsoWithTheSameIdentifier) {
  load_bundle_with({});
  const auto copy = std::filesystem::path(folder_ / "root/copy.bundle");
  std::filesystem::copy(bundle_folder(), copy, std::filesystem::copy_options::recursive);
  const NSBundle first = bundle();
  const NSBundle second = NSBundle::bundleWithPath(copy.c_str());
  EXPECT_FALSE(first == second);
  EXPECT_EQ(second.bundlePath().utf8(), copy.string());
  ASSERT_NE(wispen_host_load_bundle(copy.c_str()), nullptr);
  EXPECT_EQ(NSBundle::bundleForClass(objc::ClassRef::named("WispBaseController")), second)
      << "the classes belong to the bundle that was loaded last";
}

TEST_F(BundleTest, IsFoundByThePathThatItHasOnThePhone) {
  const char* const path = "/var/jb/Library/PreferenceBundles/test.bundle";
  const std::string place = folder_ / "root" + path;
  write_file(place + "/Info.plist", plist("<dict/>"));
  EXPECT_EQ(NSBundle::bundleWithPath(path).bundlePath().utf8(), place);
  EXPECT_FALSE(NSBundle::bundleWithPath("/var/jb/Library/PreferenceBundles/other.bundle"));
}

TEST_F(BundleTest, SaysWhatIsWrongWithABundleThatCannotBeLoaded) {
  const auto refuses = [&](const std::string& path, const char* why) {
    EXPECT_EQ(wispen_host_load_bundle(path.c_str()), nullptr);
    EXPECT_THAT(wispen_host_last_error(), HasSubstr(why));
  };
  refuses(folder_ / "missing.bundle", "there is no bundle");
  std::filesystem::create_directories(folder_ / "empty.bundle");
  refuses(folder_ / "empty.bundle", "has no Info.plist");
  write_file(folder_ / "bad.bundle/Info.plist", "<plist><dict>");
  refuses(folder_ / "bad.bundle", "not a property list that can be read");
  write_file(folder_ / "nameless.bundle/Info.plist", plist("<dict/>"));
  refuses(folder_ / "nameless.bundle", "NSPrincipalClass");
  write_file(folder_ / "codeless.bundle/Info.plist",
             plist("<dict><key>NSPrincipalClass</key><string>Nobody</string>"
                   "<key>CFBundleExecutable</key><string>none</string></dict>"));
  refuses(folder_ / "codeless.bundle", "cannot be loaded");
  EXPECT_FALSE(NSBundle::bundleWithPath("/nonexistent"_ns));
}

TEST_F(BundleTest, FindsResourcesInTheChosenLanguageFirst) {
  load_bundle_with({{"plain.txt", "x"},
                    {"de.lproj/both.txt", "x"},
                    {"en.lproj/both.txt", "x"},
                    {"Base.lproj/base.txt", "x"}});
  EXPECT_EQ(bundle().pathForResource("plain"_ns, "txt"_ns).utf8(), (bundle_folder() / "plain.txt").string());
  EXPECT_EQ(bundle().pathForResource("both"_ns, "txt"_ns).utf8(),
            (bundle_folder() / "en.lproj/both.txt").string());
  ASSERT_EQ(wispen_host_set_languages("de,en"), 1);
  EXPECT_EQ(bundle().pathForResource("both"_ns, "txt"_ns).utf8(),
            (bundle_folder() / "de.lproj/both.txt").string());
  EXPECT_EQ(bundle().pathForResource("base.txt"_ns, NSString()).utf8(),
            (bundle_folder() / "Base.lproj/base.txt").string());
  EXPECT_FALSE(bundle().pathForResource("missing"_ns, "txt"_ns));
}

TEST_F(BundleTest, TranslatesByTheChosenLanguageAndFollowsAChange) {
  load_bundle_with({{"en.lproj/Root.strings", "\"Colour\" = \"Colour (en)\";"},
                    {"de.lproj/Root.strings", "\"Colour\" = \"Farbe\";"}});
  EXPECT_EQ(localized("Colour"), "Colour (en)");
  ASSERT_EQ(wispen_host_set_languages("de-AT, en"), 1);
  EXPECT_EQ(localized("Colour"), "Farbe") << "de-AT falls back to de";
  ASSERT_EQ(wispen_host_set_languages("fr"), 1);
  EXPECT_EQ(localized("Colour"), "Colour (en)") << "the language that the bundle was developed in";
}

TEST_F(BundleTest, AMissingKeyIsTheValueGivenOrElseTheKey) {
  load_bundle_with({{"en.lproj/Root.strings", "\"a\" = \"A\";"}});
  EXPECT_EQ(localized("missing"), "missing");
  EXPECT_EQ(localized("missing", "Root", "value"), "value");
  EXPECT_EQ(localized("missing", "NoTable", "value"), "value");
  EXPECT_EQ(localized("missing", "Root", ""), "missing");
  EXPECT_EQ(bundle().localizedString(NSString(), NSString(), "Root"_ns).utf8(), "");
}

TEST_F(BundleTest, ReadsTextXmlAndUtf16TablesAndBase) {
  load_bundle_with({{"Base.lproj/Base.strings", "\"k\" = \"from base\";"},
                    {"en.lproj/Xml.strings", plist("<dict><key>k</key><string>from xml</string></dict>")},
                    {"en.lproj/Localizable.strings", "\"k\" = \"default table\";"},
                    {"en.lproj/Wide.strings", std::string("\xFE\xFF\0k\0=\0\"\0w\0\"\0;", 14)}});
  EXPECT_EQ(localized("k", "Base"), "from base");
  EXPECT_EQ(localized("k", "Xml"), "from xml");
  EXPECT_EQ(localized("k", "Wide"), "w");
  EXPECT_EQ(localized("k", nullptr), "default table");
}

TEST_F(BundleTest, AChangedTableIsReadAnew) {
  load_bundle_with({{"en.lproj/Root.strings", "\"k\" = \"before\";"}});
  EXPECT_EQ(localized("k"), "before");
  write_file(bundle_folder() / "en.lproj/Root.strings", "\"k\" = \"and after\";");
  EXPECT_EQ(localized("k"), "and after");
  std::filesystem::remove(bundle_folder() / "en.lproj/Root.strings");
  EXPECT_EQ(localized("k"), "k");
}

TEST_F(BundleTest, ABrokenTableKeepsItsGoodPartAndSaysWhichLineIsWrong) {
  load_bundle_with({{"en.lproj/Root.strings", "\"good\" = \"kept\";\n\n\"bad\" \"no equals sign\";\n"}});
  EXPECT_EQ(localized("good"), "kept");
  EXPECT_EQ(localized("bad"), "bad");
  const auto said = problems();
  ASSERT_EQ(said.size(), 1u);
  EXPECT_THAT(said[0], ::testing::AllOf(HasSubstr("Root.strings"), HasSubstr("3")));
}

}  // namespace
}  // namespace wispen::testing
