// tests/host/foundation/device_paths_test.cpp: where the bundle's paths lead.

#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "tests/support/host_fixture.hpp"

namespace wispen::testing {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

/// A root beside a folder that plays the machine's own files.
class DevicePathsTest : public HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    folder_.write("machine/file.plist", "the machine's");
  }
  void TearDown() override {
    EXPECT_EQ(contents_of(machine() / "file.plist"), "the machine's");
    EXPECT_EQ(entries_of(machine()), 1) << "nothing was made there";
    HostTest::TearDown();
  }
  fs::path machine() const { return folder_ / "machine"; }
  /// The same below the root, where the phone's own such place is.
  fs::path twin() const { return folder_ / "root" + machine().string(); }

  static std::ptrdiff_t entries_of(const fs::path& folder) {
    return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
  }
  static bool write(const std::string& path) {
    const NSMutableDictionary dictionary = NSMutableDictionary::dictionary();
    dictionary.setObject("v"_ns, "k"_ns);
    return dictionary.writeToFile(path.c_str(), true);
  }
  static bool can_read(const std::string& path) {
    return static_cast<bool>(NSDictionary::dictionaryWithContentsOfFile(path.c_str()));
  }
  static NSData some_data() { return NSData::dataWithBytes("x", 1); }
  static NSObject manager() {
    return objc::send<"defaultManager", NSObject>(objc::ClassRef::named("NSFileManager"));
  }
};

TEST_F(DevicePathsTest, AnyAbsolutePathIsThePhonesOwn) {
  fs::create_directories(twin());
  for (const std::string& path : {"/var/anything.plist"s, (machine() / "file.plist").string(),
                                  (machine() / "new.plist").string(), "relative.plist"s}) {
    EXPECT_TRUE(write(path)) << path;
    EXPECT_TRUE(can_read(path)) << path;
    EXPECT_TRUE(fs::is_regular_file(folder_ / "root/" + path)) << path;
  }
  EXPECT_FALSE(fs::exists("/var/anything.plist"));
  EXPECT_FALSE(fs::exists("relative.plist"));
}

TEST_F(DevicePathsTest, ALinkedDomainFileIsWrittenBelowTheRoot) {
  load_shipped_bundle();
  const auto page = open_page("SepSettingsCell");
  fs::create_directories(twin());
  fs::create_symlink(machine() / "file.plist", domain_file());
  const fs::path place = twin() / "file.plist";
  const auto row = page.specifiers().objectAtIndex<PSSpecifier>(1);
  row.performSetterWithValue(NSNumber::numberWithInt(7));
  EXPECT_EQ(row.performGetter<NSNumber>().intValue(), 7);
  EXPECT_TRUE(fs::is_regular_file(place));
}

TEST_F(DevicePathsTest, ALinkedFolderOfPreferencesStaysBelowTheRoot) {
  load_shipped_bundle();
  const auto page = open_page("SepSettingsCell");
  const fs::path preferences = folder_ / "root/var/jb/var/mobile/Library/Preferences";
  fs::remove_all(preferences);
  for (const std::string& target : {machine().string(), "../../../../../../../machine"s}) {
    fs::remove(preferences);
    fs::create_directories(twin());
    fs::create_directories(folder_ / "root/machine");
    fs::create_directory_symlink(target, preferences);
    const auto row = page.specifiers().objectAtIndex<PSSpecifier>(1);
    row.performSetterWithValue(NSNumber::numberWithInt(8));
    EXPECT_EQ(row.performGetter<NSNumber>().intValue(), 8);
  }
  EXPECT_TRUE(fs::is_regular_file(twin() / "com.m0rrow5.vitrelle3dtouch.plist"));
  EXPECT_TRUE(fs::is_regular_file(folder_ / "root/machine/com.m0rrow5.vitrelle3dtouch.plist"));
}

TEST_F(DevicePathsTest, ABundleReadsItsOwnFolderWhereverThatIsAndWritesThereNever) {
  load_bundle_with({{"Values.plist", plist("<dict><key>a</key><true/></dict>")}});
  const std::string own = bundle_folder() / "Values.plist";
  EXPECT_TRUE(can_read(own));
  EXPECT_FALSE(can_read(bundle_folder() / "../machine/file.plist"));
  EXPECT_FALSE(write(own));
  EXPECT_NE(contents_of(own).find("<true/>"), std::string::npos);
}

TEST_F(DevicePathsTest, WhatFoundationWritesOtherwiseIsBelowTheRootToo) {
  fs::create_directories(twin());
  const auto place = [&](const char* name) { return NSString((machine() / name).c_str()); };
  EXPECT_TRUE((objc::send<"writeToFile:atomically:", bool>(some_data(), place("data"), true)));
  EXPECT_TRUE((objc::send<"writeToFile:atomically:", bool>("text"_ns, place("text"), false)));
  NSMutableArray list = NSMutableArray::array();
  list.addObject("x"_ns);
  EXPECT_TRUE((objc::send<"writeToFile:atomically:", bool>(list, place("list"), true)));
  EXPECT_TRUE((objc::send<"createFileAtPath:contents:attributes:", bool>(manager(), place("made"),
                                                                         some_data(), NSDictionary())));
  EXPECT_TRUE((objc::send<"createDirectoryAtPath:withIntermediateDirectories:attributes:error:", bool>(
      manager(), place("a/b"), true, NSDictionary(), static_cast<void*>(nullptr))));
  EXPECT_TRUE((objc::send<"moveItemAtPath:toPath:error:", bool>(manager(), place("made"), place("moved"),
                                                                static_cast<void*>(nullptr))));
  for (const char* const name : {"data", "text", "list", "moved", "a/b"})
    EXPECT_TRUE(fs::exists(twin() / name)) << name;
}

TEST_F(DevicePathsTest, RemovingALinkRemovesTheLinkAndNotWhatItLeadsTo) {
  fs::create_symlink(machine() / "file.plist", folder_ / "root/tmp/link");
  EXPECT_TRUE(
      (objc::send<"removeItemAtPath:error:", bool>(manager(), "/tmp/link"_ns, static_cast<void*>(nullptr))));
  EXPECT_FALSE(fs::is_symlink(folder_ / "root/tmp/link"));
  objc::send<"removeItemAtPath:error:", bool>(manager(), NSString((machine() / "file.plist").c_str()),
                                              static_cast<void*>(nullptr));
  EXPECT_TRUE(fs::exists(machine() / "file.plist")) << "there is none of that name below the root";
}

TEST_F(DevicePathsTest, AJailbreakBehindALinkInsideTheRootWorks) {
  load_shipped_bundle();
  const auto page = open_page("SepSettingsCell");
  const fs::path root = folder_ / "root";
  fs::create_directories(root / "private/preboot/0123");
  fs::rename(root / "var/jb", root / "private/preboot/0123/jb");
  fs::create_directory_symlink("/private/preboot/0123/jb", root / "var/jb");
  const auto row = page.specifiers().objectAtIndex<PSSpecifier>(1);
  row.performSetterWithValue(NSNumber::numberWithInt(9));
  EXPECT_EQ(row.performGetter<NSNumber>().intValue(), 9);
  EXPECT_TRUE(fs::exists(root / "private/preboot/0123/jb/var/mobile/Library/Preferences" /
                         "com.m0rrow5.vitrelle3dtouch.plist"));
}

}  // namespace
}  // namespace wispen::testing
