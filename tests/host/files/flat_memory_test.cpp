// tests/host/files/flat_memory_test.cpp: nothing piles up over many operations.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "host/plist/splice.hpp"
#include "tests/support/temporary_folder.hpp"

namespace wispen::plist {
namespace {

using wispen::testing::TemporaryFolder;

/// Resident memory in KiB.
long resident_size() {
  std::ifstream status("/proc/self/status");
  std::string word;
  while (status >> word && word != "VmRSS:") {
  }
  long size = 0;
  status >> size;
  return size;
}

long open_files() {
  long count = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) ++count;
  return count;
}

std::filesystem::path memory_file_system() {
  return std::filesystem::is_directory("/dev/shm") ? "/dev/shm" : std::filesystem::temp_directory_path();
}

TEST(FlatMemory, OverAHundredThousandOperations) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  GTEST_SKIP() << "sanitizers keep freed memory";
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
  GTEST_SKIP() << "sanitizers keep freed memory";
#endif
#endif
  constexpr int kOperations = 100'000;
  constexpr int kWarmUp = 5'000;
  const TemporaryFolder folder(memory_file_system());
  const std::string path = folder / "values.plist";
  long size = 0;
  long files = 0;
  for (int i = 0; i < kOperations; ++i) {
    if (i == kWarmUp) {
      size = resident_size();
      files = open_files();
    }
    const std::string key = "key" + std::to_string(i % 50);
    if (i % 2 == 0) {
      ASSERT_TRUE(update_file(path, {{key, i % 4 == 0 ? Tree(i) : Tree("text")}}));
    } else {
      ASSERT_TRUE(Document::read(path));
      ASSERT_FALSE(Document::read(folder / "missing"));
    }
  }
  const long growth = resident_size() - size;
  EXPECT_LE(growth, 512) << "KiB";
  EXPECT_EQ(open_files(), files);
  EXPECT_EQ(folder.names().size(), 1U);
  std::printf("%d operations: memory grew by %ld KiB, open files by %ld\n", kOperations, growth,
              open_files() - files);
}

}  // namespace
}  // namespace wispen::plist
