// tests/host/files/killed_writers_test.cpp: what writers leave that die at any moment.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cstdio>
#include <random>

#include "host/plist/splice.hpp"
#include "tests/support/temporary_folder.hpp"

namespace wispen::plist {
namespace {

using wispen::testing::TemporaryFolder;

constexpr int kWriters = 1000;
constexpr int kKeys = 100;

/// Every value is the same number, so that half of one write and half of another would show.
Tree state(int number) {
  Dictionary members;
  for (int i = 0; i < kKeys; ++i) members.push_back({"key" + std::to_string(i), number});
  return members;
}

/// Writes state after state until it is killed, and says on the pipe what it is about to write.
[[noreturn]] void write_for_ever(const std::string& path, int progress, int first) {
  for (int number = first;; ++number) {
    std::vector<Change> changes;
    for (int i = 0; i < kKeys; ++i) changes.push_back({"key" + std::to_string(i), number});
    if (::write(progress, &number, sizeof number) != sizeof number) ::_exit(1);
    if (!update_file(path, changes)) ::_exit(1);
  }
}

/// The number that all values of the file share, or -1.
int state_of(const std::string& path) {
  const Result<Document> document = Document::read(path);
  if (!document || document->root().count() != kKeys) return -1;
  const auto number = static_cast<int>(document->root().find("key0")->integer().signed_value());
  return Tree::of(document->root()) == state(number) ? number : -1;
}

TEST(KilledWriters, LeaveTheOldStateOrTheNewOne) {
  const TemporaryFolder folder;
  const std::string path = folder / "values.plist";
  ASSERT_TRUE(update_file(path, {}));
  ASSERT_TRUE(update_file(path, [] {
    std::vector<Change> changes;
    for (int i = 0; i < kKeys; ++i) changes.push_back({"key" + std::to_string(i), 0});
    return changes;
  }()));
  std::mt19937 random(7);
  int written = 0;
  int orphans = 0;
  for (int round = 0; round < kWriters; ++round) {
    int progress[2];
    ASSERT_EQ(::pipe(progress), 0);
    const int before = state_of(path);
    const pid_t writer = ::fork();
    ASSERT_GE(writer, 0);
    if (writer == 0) {
      ::close(progress[0]);
      write_for_ever(path, progress[1], before + 1);
    }
    ::close(progress[1]);
    int started = 0;
    ASSERT_EQ(::read(progress[0], &started, sizeof started), static_cast<ssize_t>(sizeof started));
    // The moment is spread over several writes; no wait is for something to happen.
    const timespec moment = {0, static_cast<long>(random() % 3'000'000)};
    ::nanosleep(&moment, nullptr);
    ::kill(writer, SIGKILL);
    ::waitpid(writer, nullptr, 0);
    int last = started;
    while (::read(progress[0], &started, sizeof started) == static_cast<ssize_t>(sizeof started))
      last = started;
    ::close(progress[0]);
    const int now = state_of(path);
    ASSERT_TRUE(now == last || now == last - 1) << "round " << round << ": " << now << " after " << last;
    written += last - before;
    const std::size_t names = folder.names().size();
    ASSERT_LE(names, 2U) << "an orphan of an earlier writer was not swept";
    orphans += names == 2 ? 1 : 0;
  }
  ASSERT_TRUE(update_file(path, {{"key0", 1}}));
  EXPECT_EQ(folder.names().size(), 1U);
  EXPECT_GT(orphans, 0) << "no writer died in the middle: the test has shown nothing";
  std::printf("%d writers killed in %d writes: 0 unreadable files, %d temporary files left and swept\n",
              kWriters, written, orphans);
}

TEST(ConcurrentReaders, NeverSeePartOfAFile) {
  const TemporaryFolder folder;
  const std::string path = folder / "values.plist";
  std::vector<Change> changes;
  for (int i = 0; i < kKeys; ++i) changes.push_back({"key" + std::to_string(i), 0});
  ASSERT_TRUE(update_file(path, changes));
  int progress[2];
  ASSERT_EQ(::pipe(progress), 0);
  const pid_t writer = ::fork();
  if (writer == 0) write_for_ever(path, progress[1], 1);
  ::close(progress[1]);
  int reads = 0;
  int last = 0;
  int started = 0;
  while (started < 300 && ::read(progress[0], &started, sizeof started) > 0) {
    for (int i = 0; i < 5; ++i, ++reads) {
      const int now = state_of(path);
      ASSERT_GE(now, last);
      last = now;
    }
  }
  ::kill(writer, SIGKILL);
  ::waitpid(writer, nullptr, 0);
  ::close(progress[0]);
  EXPECT_GE(last, 100);
  std::printf("%d reads during %d writes\n", reads, started);
}

}  // namespace
}  // namespace wispen::plist
