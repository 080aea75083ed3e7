// tests/host/app/long_run_test.cpp: what stays the same over a long life: memory, descriptors, the account's
// home.

#include <pwd.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "tests/support/page_fixture.hpp"

namespace wispen::testing {
namespace {

namespace fs = std::filesystem;

// The sanitizers keep freed memory aside and slow everything down.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int kOperations = 5'000;
constexpr long kMoreKilobytes = 100'000;
#else
constexpr int kOperations = 100'000;
constexpr long kMoreKilobytes = 4'000;
#endif

long resident_kilobytes() {
  std::ifstream statm("/proc/self/statm");
  long size = 0;
  long resident = 0;
  statm >> size >> resident;
  return resident * ::sysconf(_SC_PAGESIZE) / 1024;
}

std::size_t open_descriptors() {
  std::size_t count = 0;
  for ([[maybe_unused]] const auto& entry : fs::directory_iterator("/proc/self/fd")) ++count;
  return count;
}

class LongRunTest : public HostTest {};

TEST_F(LongRunTest, AHundredThousandValuesReadAndWrittenLeaveMemoryAndDescriptorsFlat) {
  // The root in memory, where there is such: this is about memory and not about the disk.
  const TemporaryFolder memory(fs::is_directory("/dev/shm") ? fs::path("/dev/shm")
                                                            : fs::temp_directory_path());
  ASSERT_EQ(wispen_host_stop(), 1);
  wispen_host_options options{};
  options.size = sizeof options;
  const std::string root = memory / "root";
  options.root = root.c_str();
  ASSERT_EQ(wispen_host_start(&options), 1) << wispen_host_last_error();
  load_shipped_bundle();
  const auto page = open_page("SepSettingsCell");
  PSSpecifier row;
  for (NSUInteger i = 0; !row; ++i) {
    const auto candidate = page.specifiers().objectAtIndex<PSSpecifier>(i);
    if (candidate.propertyForKey("key"_ns)) row = candidate;
  }
  const auto work = [&](int from, int to) {
    for (int i = from; i < to; ++i) {
      const objc::AutoreleasePool pool;
      row.performSetterWithValue(NSNumber::numberWithInt(i));
      ASSERT_EQ(row.performGetter<NSNumber>().intValue(), i);
      if (i % 100 == 0) {
        const PSListController opened = open_page("ContextMenuLabels");
        ASSERT_GT(opened.specifiers().count(), 0u);
      }
    }
  };
  work(0, kOperations / 10);
  const long memory_before = resident_kilobytes();
  const std::size_t descriptors_before = open_descriptors();
  work(kOperations / 10, kOperations);
  const long memory_after = resident_kilobytes();
  std::printf("%d values written and read, %d pages opened: %ld KB before, %ld KB after, %zu descriptors\n",
              kOperations, kOperations / 100, memory_before, memory_after, open_descriptors());
  EXPECT_LT(memory_after - memory_before, kMoreKilobytes);
  EXPECT_EQ(open_descriptors(), descriptors_before);
  EXPECT_EQ(wispen_host_posted_count(), static_cast<std::size_t>(kOperations));
}

TEST_F(LongRunTest, AHostStartsAndStopsManyTimesOnManyRoots) {
  load_shipped_bundle();
  std::size_t descriptors_before = 0;
  for (int i = 0; i < 50; ++i) {
    if (i == 5) descriptors_before = open_descriptors();  // with a notification's file open, which is kept
    ASSERT_EQ(wispen_host_stop(), 1);
    wispen_host_options options{};
    options.size = sizeof options;
    const std::string root = folder_ / ("root" + std::to_string(i % 5));
    options.root = root.c_str();
    options.layout = i % 5 < 3 ? "rootless" : "rootful";
    ASSERT_EQ(wispen_host_start(&options), 1) << wispen_host_last_error();
    const auto page = open_page("SepSettingsCell");
    const PSSpecifier row = page.specifiers().objectAtIndex<PSSpecifier>(1);
    row.performSetterWithValue(NSNumber::numberWithInt(i));
    // The root-path library answers for the root of this moment, though it was loaded for the first.
    const std::string file = root + (i % 5 < 3 ? "/var/jb" : "") +
                             "/var/mobile/Library/Preferences/com.m0rrow5.vitrelle3dtouch.plist";
    ASSERT_TRUE(fs::exists(file)) << file;
    ASSERT_EQ(row.performGetter<NSNumber>().intValue(), i);
  }
  EXPECT_EQ(open_descriptors(), descriptors_before);
}

TEST_F(LongRunTest, TheAccountsHomeIsNotTouched) {
  const struct passwd* const account = ::getpwuid(::getuid());
  ASSERT_NE(account, nullptr);
  const auto listing = [&] {
    std::set<std::string> names;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(account->pw_dir, error))
      names.insert(entry.path().filename());
    return names;
  };
  const auto before = listing();
  // Foundation would make its folder there at the first use of the user's defaults.
  const auto defaults = objc::send<"standardUserDefaults", NSUserDefaults>(objc::class_for<NSUserDefaults>());
  objc::send<"setObject:forKey:">(defaults, "value"_ns, "WispenTestKey"_ns);
  objc::send<"synchronize", bool>(defaults);
  EXPECT_EQ(listing(), before);
  EXPECT_FALSE(fs::exists(fs::path(account->pw_dir) / "GNUstep"));
}

class LongVisitTest : public PageTest, public ::testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(Pages, LongVisitTest,
                         ::testing::Values("root", "SepSettingsCell", "SepSettingsHSCell",
                                           "BackgroundSettingsCell", "ContextMenuLabels",
                                           "Expanded3DAdjustments"),
                         [](const auto& test) { return std::string(test.param); });

TEST_P(LongVisitTest, AHundredVisitsFreeThePageEachTimeAndLeaveMemoryFlat) {
  constexpr int kVisits = 100;
  show_shipped("settings");
  std::vector<objc::Weak<NSObject>> pages;
  long memory_before = 0;
  std::size_t descriptors_before = 0;
  for (int i = 0; i < kVisits; ++i) {
    const objc::AutoreleasePool pool;
    show(GetParam());
    pages.emplace_back(top());
    pages.emplace_back(top().view());
    ASSERT_TRUE(pages.back().lock());
    show("settings");
    // What is made once is there by then: pictures, fonts, laid out texts.
    if (i != kVisits / 5) continue;
    memory_before = resident_kilobytes();
    descriptors_before = open_descriptors();
  }
  for (const objc::Weak<NSObject>& each : pages) ASSERT_FALSE(each.lock());
  const long memory_after = resident_kilobytes();
  std::printf("%d visits: %ld KB before, %ld KB after\n", kVisits, memory_before, memory_after);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
  EXPECT_LT(memory_after - memory_before, kMoreKilobytes);
#endif
  EXPECT_EQ(open_descriptors(), descriptors_before);
}

}  // namespace
}  // namespace wispen::testing
