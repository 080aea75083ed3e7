// tests/host/files/read_file_test.cpp
#include "host/files/read_file.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "tests/host/files/failing_calls.hpp"
#include "tests/support/temporary_folder.hpp"

namespace wispen::files {
namespace {

using testing::failing_calls;
using ::testing::HasSubstr;
using testing::plan;
using wispen::testing::TemporaryFolder;
using wispen::testing::write_file;

constexpr std::size_t kLimit = 1 << 20;

class ReadFile : public ::testing::Test {
 protected:
  ReadFile() { plan() = {}; }

  std::string error_of(const std::string& path, const SystemCalls& calls = SystemCalls::real()) const {
    const Result<Buffer> bytes = read(path, kLimit, calls);
    return bytes ? "" : bytes.error().message;
  }

  TemporaryFolder folder_;
};

TEST_F(ReadFile, GivesTheBytesFollowedByZeros) {
  write_file(folder_ / "a", "some bytes");
  const Result<Buffer> bytes = read(folder_ / "a", kLimit);
  ASSERT_TRUE(bytes);
  EXPECT_EQ(bytes->view(), "some bytes");
  for (std::size_t i = 0; i < Buffer::kPadding; ++i) EXPECT_EQ(bytes->data()[bytes->size() + i], 0);
}

TEST_F(ReadFile, GivesNothingOfAnEmptyFile) {
  write_file(folder_ / "a", "");
  EXPECT_EQ(read(folder_ / "a", kLimit)->size(), 0U);
}

TEST_F(ReadFile, SaysWhyAtOnceForWhatIsNoFile) {
  ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0600), 0);
  ASSERT_EQ(::symlink("loop", (folder_ / "loop").c_str()), 0);
  EXPECT_THAT(error_of(folder_ / "missing"), HasSubstr("No such file"));
  EXPECT_THAT(error_of(folder_.path()), HasSubstr("Is a directory"));
  EXPECT_THAT(error_of(folder_ / "pipe"), HasSubstr("not a regular file"));
  EXPECT_THAT(error_of("/dev/zero"), HasSubstr("not a regular file"));
  EXPECT_THAT(error_of(folder_ / "loop"), HasSubstr("symbolic links"));
  EXPECT_THAT(error_of(folder_ / "missing/a"), HasSubstr("No such file"));
}

TEST_F(ReadFile, KeepsToTheLimit) {
  write_file(folder_ / "a", std::string(kLimit, 'x'));
  EXPECT_EQ(error_of(folder_ / "a"), "");
  write_file(folder_ / "a", std::string(kLimit + 1, 'x'));
  EXPECT_THAT(error_of(folder_ / "a"), HasSubstr("larger than 1048576 bytes"));
}

TEST_F(ReadFile, ReadsFilesThatDoNotSayHowLongTheyAre) {
  const Result<Buffer> bytes = read("/proc/self/maps", kLimit);
  ASSERT_TRUE(bytes);
  EXPECT_GT(bytes->size(), 1000U) << "the file system says 0";
}

TEST_F(ReadFile, TakesWhatIsThereOfAFileThatShrinksOrGrows) {
  SystemCalls shrunk = SystemCalls::real();
  shrunk.fstat = [](int file, struct stat* status) {
    const int result = ::fstat(file, status);
    status->st_size *= 2;
    return result;
  };
  SystemCalls grown = SystemCalls::real();
  grown.fstat = [](int file, struct stat* status) {
    const int result = ::fstat(file, status);
    status->st_size /= 1000;
    return result;
  };
  const std::string text(50000, 'x');
  write_file(folder_ / "a", text);
  EXPECT_EQ(read(folder_ / "a", kLimit, shrunk)->view(), text);
  EXPECT_EQ(read(folder_ / "a", kLimit, grown)->view(), text);
  EXPECT_THAT(read(folder_ / "a", 40000, grown).error().message, HasSubstr("larger"));
}

TEST_F(ReadFile, GoesOnAfterSignalsAndShortReads) {
  write_file(folder_ / "a", "some bytes");
  for (const int error_number : {EINTR, 0}) {
    for (int call = 1; call < 6; ++call) {
      plan() = {.fail_at = call, .error_number = error_number, .only = call % 2 == 0 ? "openat" : "read"};
      const Result<Buffer> bytes = read(folder_ / "a", kLimit, failing_calls());
      ASSERT_TRUE(bytes);
      EXPECT_EQ(bytes->view(), "some bytes");
    }
  }
  plan() = {.fail_at = 1, .only = "read", .keeps_failing = true};
  EXPECT_EQ(read(folder_ / "a", kLimit, failing_calls())->view(), "some bytes") << "a byte at a time";
}

TEST_F(ReadFile, ReportsEveryErrorAndClosesTheFile) {
  write_file(folder_ / "a", "some bytes");
  for (const int error_number : {EIO, EMFILE, EACCES, ENOMEM}) {
    bool succeeded = false;
    int call = 1;
    for (; !succeeded; ++call) {
      plan() = {.fail_at = call, .error_number = error_number};
      succeeded = error_of(folder_ / "a", failing_calls()).empty();
      EXPECT_EQ(plan().open_files, 0);
    }
    EXPECT_EQ(call - 1, 4) << "open, stat and read count; a close after reading loses nothing";
  }
}

}  // namespace
}  // namespace wispen::files
