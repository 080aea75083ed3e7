// tests/wispen/package/installer_test.cpp: device roots hold what was installed, and keep what was not.

#include "wispen/package/installer.hpp"

#include <elf.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <filesystem>
#include <thread>

#include "tests/support/temporary_folder.hpp"
#include "tests/wispen/package/deb_maker.hpp"
#include "tests/wispen/package/shipped_package.hpp"
#include "wispen/package/verify.hpp"

namespace wispen::testing {
namespace {

namespace fs = std::filesystem;
using package::DebFile;
using package::Entry;
using package::EntryType;
using ::testing::HasSubstr;

/// A library of this machine's as far as its header goes.
std::string code_of(const std::string& version) {
  Elf64_Ehdr header{};
  std::memcpy(header.e_ident, ELFMAG, SELFMAG);
  header.e_ident[EI_CLASS] = ELFCLASS64;
  header.e_type = ET_DYN;
#if defined(__aarch64__)
  header.e_machine = EM_AARCH64;
#else
  header.e_machine = EM_X86_64;
#endif
  return std::string(reinterpret_cast<const char*>(&header), sizeof header) + "code " + version;
}

class InstallerTest : public ::testing::TestWithParam<Layout> {
 protected:
  void SetUp() override {
    auto root = DeviceRoot::open(folder_ / "root", GetParam());
    ASSERT_TRUE(root.ok()) << root.error().message;
    root_.emplace(*root);
    prefix_ = std::string(root_->device_jbroot());
    bundle_ = root_->jbroot_prefix() + shipped_facts().folder();
  }

  /// A small package that is clean, of that version, with these further files in the bundle.
  DebFile made(const std::string& version, const std::vector<std::string>& files) const {
    DebFile deb;
    deb.control = {{"Package", shipped_facts().package},
                   {"Name", "Wispen"},
                   {"Version", version},
                   {"Architecture", GetParam() == Layout::Rootless ? "iphoneos-arm64" : "iphoneos-arm"},
                   {"Maintainer", "Nobody <nobody@example.invalid>"},
                   {"Section", "Tweaks"},
                   {"Depends", "firmware (>= 15.0), preferenceloader"},
                   {"Description", "a test"}};
    deb.control_files.push_back({"./control", EntryType::File, 0644, 0, 0, "", "x"});
    const std::string bundle = prefix_ + shipped_facts().folder();
    const std::string entry = prefix_ + shipped_facts().entry_file();
    for (const std::string& path : {bundle, fs::path(entry).parent_path().string()}) {
      std::string place = ".";
      for (const auto& part : fs::path(path).relative_path()) {
        place += "/" + part.string();
        if (std::ranges::find(deb.entries, place + "/", &Entry::path) == deb.entries.end()) {
          deb.entries.push_back({place + "/", EntryType::Folder, 0755, 0, 0, "", ""});
        }
      }
    }
    deb.entries.push_back(
        {"." + bundle + "/3dvitrelleprefs", EntryType::File, 0755, 0, 0, "", code_of(version)});
    deb.entries.push_back({"." + bundle + "/Info.plist", EntryType::File, 0644, 0, 0, "", "info"});
    deb.entries.push_back({"." + entry, EntryType::File, 0644, 0, 0, "", "entry"});
    for (const std::string& file : files) {
      deb.entries.push_back({"." + bundle + "/" + file, EntryType::File, 0644, 0, 0, "", file});
    }
    return deb;
  }

  std::string file_of(const DebFile& deb) {
    const std::string path = folder_ / ("package" + std::to_string(++files_) + ".deb");
    write_file(path, make_deb(deb));
    return path;
  }
  void install(const DebFile& deb) {
    const auto done = package::install(*root_, file_of(deb), shipped_facts());
    ASSERT_TRUE(done.ok()) << done.error().message;
  }
  std::string why_not(const DebFile& deb) {
    const auto done = package::install(*root_, file_of(deb), shipped_facts());
    return done ? "" : done.error().message;
  }

  const TemporaryFolder folder_;
  std::optional<DeviceRoot> root_;
  std::string prefix_;
  std::string bundle_;
  int files_ = 0;
};

INSTANTIATE_TEST_SUITE_P(Layouts, InstallerTest, ::testing::Values(Layout::Rootless, Layout::Rootful),
                         [](const auto& test) { return std::string(layout_name(test.param)); });

TEST_P(InstallerTest, PutsTheFilesBelowTheRootAndItsVersionIntoTheRootsDatabase) {
  EXPECT_EQ(*package::installed_version(*root_, shipped_facts()), "");
  install(made("1.2", {"Root.plist"}));
  EXPECT_EQ(contents_of(bundle_ + "/3dvitrelleprefs"), code_of("1.2"));
  EXPECT_EQ(contents_of(bundle_ + "/Root.plist"), "Root.plist");
  EXPECT_EQ(*package::installed_version(*root_, shipped_facts()), "1.2");
  EXPECT_THAT(contents_of(root_->jbroot_prefix() + "/var/lib/dpkg/status"),
              HasSubstr("com.brightmoss.wispen"));
}

TEST_P(InstallerTest, ForeignFilesSurviveInstallationUpgradeAndRemoval) {
  const std::vector<std::string> foreign = {
      bundle_ + "/mine.txt", bundle_ + "/de.lproj/mine.strings",
      root_->jbroot_prefix() + "/Library/PreferenceLoader/Preferences/other.plist", root_->path() + "/notes"};
  for (const std::string& path : foreign) write_file(path, path);
  install(made("1.0", {"old.png", "Root.plist"}));
  install(made("1.1", {"new.png", "Root.plist"}));
  EXPECT_FALSE(fs::exists(bundle_ + "/old.png")) << "the upgrade left a file of its own behind";
  EXPECT_TRUE(fs::exists(bundle_ + "/new.png"));
  const auto removed = package::remove(*root_, shipped_facts());
  ASSERT_TRUE(removed.ok()) << removed.error().message;
  EXPECT_FALSE(fs::exists(bundle_ + "/3dvitrelleprefs"));
  EXPECT_EQ(*package::installed_version(*root_, shipped_facts()), "");
  for (const std::string& path : foreign) EXPECT_EQ(contents_of(path), path);
}

TEST_P(InstallerTest, TakesNoForeignFilesPlace) {
  write_file(bundle_ + "/Root.plist", "mine");
  EXPECT_THAT(why_not(made("1.0", {"Root.plist"})), HasSubstr("no package brought it"));
  EXPECT_EQ(contents_of(bundle_ + "/Root.plist"), "mine");
  EXPECT_FALSE(fs::exists(bundle_ + "/3dvitrelleprefs"));
}

TEST_P(InstallerTest, NoPackageWritesOutsideTheRoot) {
  const std::string outside = folder_ / "outside";
  fs::create_directories(outside);
  DebFile climbing = made("1.0", {});
  climbing.entries.push_back({"./../../outside/x", EntryType::File, 0644, 0, 0, "", "x"});
  EXPECT_NE(why_not(climbing), "");

  DebFile through_link = made("1.0", {});
  const std::string bundle = "." + prefix_ + shipped_facts().folder();
  through_link.entries.push_back({bundle + "/away", EntryType::Link, 0777, 0, 0, outside, ""});
  through_link.entries.push_back({bundle + "/away/x", EntryType::File, 0644, 0, 0, "", "x"});
  EXPECT_NE(why_not(through_link), "");

  DebFile with_script = made("1.0", {});
  with_script.control_files.push_back(
      {"./preinst", EntryType::File, 0755, 0, 0, "", "#!/bin/sh\ntouch " + outside + "/x\n"});
  EXPECT_NE(why_not(with_script), "");

  fs::create_directory_symlink(outside, bundle_);  // a clean package, and a root that leads away
  EXPECT_THAT(why_not(made("1.0", {"x"})), HasSubstr("is a link"));
  EXPECT_TRUE(fs::is_empty(outside));
}

TEST_P(InstallerTest, InstallsWhatWasBuiltAnewAndOnlyThat) {
  const std::string file = file_of(made("1.9", {}));
  EXPECT_TRUE(*package::install_when_changed(*root_, file, shipped_facts()));
  EXPECT_FALSE(*package::install_when_changed(*root_, file, shipped_facts()));
  // Of the same version, as while it is written.
  fs::last_write_time(file, fs::file_time_type::clock::now() + std::chrono::hours(1));
  EXPECT_TRUE(*package::install_when_changed(*root_, file, shipped_facts()));
  ASSERT_TRUE(package::remove(*root_, shipped_facts()).ok());
  fs::last_write_time(file, fs::file_time_type::clock::now() - std::chrono::hours(1));
  EXPECT_TRUE(*package::install_when_changed(*root_, file, shipped_facts()));
  EXPECT_EQ(*package::installed_version(*root_, shipped_facts()), "1.9");
}

TEST_P(InstallerTest, RefusesThePackageOfTheOtherLayout) {
  DebFile deb = made("1.0", {});
  deb.control["Architecture"] = GetParam() == Layout::Rootless ? "iphoneos-arm" : "iphoneos-arm64";
  EXPECT_NE(why_not(deb), "");
  EXPECT_EQ(*package::installed_version(*root_, shipped_facts()), "");
}

TEST_P(InstallerTest, CodeThatIsNeitherThePhonesNorThisMachinesIsRefused) {
  DebFile deb = made("1.2", {});
  const auto code = std::ranges::find_if(
      deb.entries, [](const Entry& entry) { return entry.path.ends_with("/3dvitrelleprefs"); });
  ASSERT_NE(code, deb.entries.end());
  code->bytes = "#!/bin/sh\n";
  EXPECT_THAT(why_not(deb), HasSubstr("is not installed"));
  code->bytes = code_of("1.2");
  code->bytes[EI_CLASS] = ELFCLASS32;
  EXPECT_THAT(why_not(deb), HasSubstr("for another machine"));

  const std::string program = contents_of("/proc/self/exe");
  code->bytes = program;
  EXPECT_THAT(why_not(deb), HasSubstr("is not installed: the code is a program"));
  for (const std::size_t size : {program.size() - 1, program.size() / 2, sizeof(Elf64_Ehdr)}) {
    code->bytes = program.substr(0, size);
    EXPECT_THAT(why_not(deb), HasSubstr("is not installed: the code is cut off")) << size;
  }
  code->bytes = code_of("1.2").substr(0, 40);
  EXPECT_THAT(why_not(deb), HasSubstr("ends in its header"));
  EXPECT_EQ(*package::installed_version(*root_, shipped_facts()), "");
}

TEST_P(InstallerTest, AFileThatChangesBetweenCheckAndInstallationIsInstalledAsItWasChecked) {
  DebFile bad = made("1.3", {});
  bad.entries.push_back({"./usr/bin/", EntryType::Folder, 0755, 0, 0, "", ""});
  bad.entries.push_back({"./usr/bin/planted", EntryType::File, 0755, 0, 0, "", "x"});
  const std::string good_file = file_of(made("1.2", {}));
  const std::string bad_file = file_of(bad);
  const std::string file = folder_ / "changing.deb";
  fs::create_hard_link(good_file, file);
  std::atomic<bool> ended = false;
  std::thread swapping([&] {
    for (int i = 0; !ended; ++i) {
      const std::string next = folder_ / "next.deb";
      fs::create_hard_link(i % 2 == 0 ? bad_file : good_file, next);
      fs::rename(next, file);
    }
  });
  int installed = 0;
  // On a busy machine the bad file may lie there for a while.
  for (int i = 0; i < 40 || (installed == 0 && i < 100'000); ++i) {
    if (package::install(*root_, file, shipped_facts())) ++installed;
    std::this_thread::yield();
  }
  ended = true;
  swapping.join();
  EXPECT_GT(installed, 0);
  EXPECT_EQ(*package::installed_version(*root_, shipped_facts()), "1.2");
  EXPECT_FALSE(fs::exists(root_->path() + "/usr/bin/planted"));
}

}  // namespace
}  // namespace wispen::testing
