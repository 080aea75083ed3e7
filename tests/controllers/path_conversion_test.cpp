// tests/controllers/path_conversion_test.cpp: which paths go through the root-path library, and how often.
//
// A program of its own: the choice of the library is made once a process.

#include <dlfcn.h>

#include <array>
#include <string>

#include "tests/support/page_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr char kDomain[] = "/var/mobile/Library/Preferences/com.m0rrow5.vitrelle3dtouch.plist";
constexpr char kBanner[] = "/var/jb/Library/PreferenceBundles/3dvitrelleprefs.bundle/Assets/1.png";

constexpr std::array kPages{"WispRootListController", "SepSettingsCell",       "BackgroundSettingsCell",
                            "ContextMenuLabels",      "Expanded3DAdjustments", "SepSettingsHSCell"};

class PathConversionTest : public PageTest {
 protected:
  PathConversionTest() : PageTest("rootless", false, TEST_LIBRARIES) {}
  void SetUp() override {
    PageTest::SetUp();
    library_ = ::dlopen(TEST_LIBRARIES "/libroot.dylib", RTLD_NOW);
    ASSERT_NE(library_, nullptr);
    forget();
  }
  void TearDown() override {
    ::dlclose(library_);
    PageTest::TearDown();
  }

  void forget() const { reinterpret_cast<void (*)()>(::dlsym(library_, "recording_libroot_forget"))(); }
  std::vector<std::string> asked() const {
    const auto question =
        reinterpret_cast<const char* (*)(int)>(::dlsym(library_, "recording_libroot_asked"));
    std::vector<std::string> paths;
    for (int i = 0; const char* const path = question(i); ++i) paths.emplace_back(path);
    return paths;
  }
  static std::filesystem::path answer(int number, const char* path) {
    return device_path("/var/mobile/answer-" + std::to_string(number) + path);
  }
  static PSSpecifier specifier_for(const char* key) {
    const PSSpecifier specifier = objc::make<PSSpecifier>();
    specifier.setProperty(NSString(key), "key"_ns);
    return specifier;
  }

  void* library_ = nullptr;
};

TEST_F(PathConversionTest, AReadConvertsTheDomainsPathOnceAndAWriteTwice) {
  load_shipped_bundle();
  std::filesystem::create_directories(answer(2, kDomain).parent_path());
  for (const char* const name : kPages) {
    forget();
    const auto page = open_page(name);
    write_file(answer(1, kDomain), plist("<dict><key>a</key><integer>1</integer></dict>"));
    EXPECT_EQ((objc::send<"readPreferenceValue:", NSNumber>(page, specifier_for("a"))).intValue(), 1) << name;
    EXPECT_THAT(asked(), ElementsAre(kDomain)) << name;

    forget();
    objc::send<"setPreferenceValue:specifier:">(page, NSNumber::numberWithInt(2), specifier_for("b"));
    EXPECT_THAT(asked(), ElementsAre(kDomain, kDomain)) << name;
    // Read where the first answer led, written where the second did.
    const auto whole = NSDictionary::dictionaryWithContentsOfFile(answer(2, kDomain).c_str());
    EXPECT_EQ(whole.count(), 2U) << name;
    EXPECT_EQ(whole.objectForKey<NSNumber>("b"_ns).intValue(), 2) << name;
    EXPECT_EQ(NSDictionary::dictionaryWithContentsOfFile(answer(1, kDomain).c_str()).count(), 1U) << name;
    std::filesystem::remove(answer(2, kDomain));
  }
}

TEST_F(PathConversionTest, TheSheetsConvertTheirIconsPathAtEveryCall) {
  show_shipped("root");
  for (const char* const action : {"showWtfChangedInThisVersion", "showWtfChangedInThisVersion2"}) {
    for (int i = 0; i < 2; ++i) {
      forget();
      objc::perform<void>(top(), objc::Selector::named(action));
      EXPECT_THAT(asked(), ElementsAre(kBanner)) << action << ", call " << i;
      settle();
      navigation().dismissViewController(false);
      settle();
    }
  }
}

TEST_F(PathConversionTest, TheBannerAndTheRestartAskForNoConversionOnPurpose) {
  load_shipped_bundle();
  const auto page = open_page("WispRootListController");
  objc::send<"headerCell">(page);
  objc::send<"respring">(page);
  EXPECT_THAT(asked(), IsEmpty());
}

}  // namespace
}  // namespace wispen::testing
