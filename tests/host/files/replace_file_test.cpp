// tests/host/files/replace_file_test.cpp: new content for a file, all of it or none of it.
#include "host/files/replace_file.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <functional>

#include "tests/host/files/failing_calls.hpp"
#include "tests/support/temporary_folder.hpp"

namespace wispen::files {
namespace {

using ::testing::ElementsAre;
using testing::failing_calls;
using ::testing::HasSubstr;
using testing::plan;
using wispen::testing::contents_of;
using wispen::testing::TemporaryFolder;
using wispen::testing::write_file;

constexpr mode_t kPermissions = 07777;

/// Runs in a child process, whose limits and user may be changed; 0 when it returned true.
int in_child(const std::function<bool()>& work) {
  std::fflush(stdout);  // a sanitizer's exit would print the parent's buffer again
  const pid_t child = ::fork();
  if (child == 0) ::_exit(work() ? 0 : 1);
  int status = 0;
  ::waitpid(child, &status, 0);
  return status;
}

class ReplaceFile : public ::testing::Test {
 protected:
  ReplaceFile() : path_(folder_ / "values") { plan() = {}; }

  static std::string error_of(const std::string& path, std::string_view bytes,
                              const SystemCalls& calls = SystemCalls::real()) {
    const Result<void> done = replace(path, bytes, calls);
    return done ? "" : done.error().message;
  }
  struct stat status() const {
    struct stat status = {};
    EXPECT_EQ(::lstat(path_.c_str(), &status), 0);
    return status;
  }

  TemporaryFolder folder_;
  std::string path_;
};

TEST_F(ReplaceFile, MakesAFileWithTheModeThatTheUmaskLeaves) {
  const mode_t before = ::umask(027);
  EXPECT_EQ(error_of(path_, "new"), "");
  ::umask(before);
  EXPECT_EQ(contents_of(path_), "new");
  EXPECT_EQ(status().st_mode & kPermissions, 0640U);
  EXPECT_THAT(folder_.names(), ElementsAre("values"));
}

TEST_F(ReplaceFile, KeepsTheModeWhateverTheUmask) {
  for (const mode_t mode : {0600U, 0644U, 0666U, 0400U, 0000U, 04755U}) {
    write_file(path_, "old");
    ASSERT_EQ(::chmod(path_.c_str(), mode), 0);
    EXPECT_EQ(error_of(path_, "new"), "");
    EXPECT_EQ(status().st_mode & kPermissions, mode);
    ::unlink(path_.c_str());
  }
}

TEST_F(ReplaceFile, KeepsTheOwnerAndNeverOpensTheFileToOthersMeanwhile) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can give files away";
  constexpr uid_t kUser = 1234;
  write_file(path_, "old");
  ASSERT_EQ(::chown(path_.c_str(), kUser, kUser), 0);
  ASSERT_EQ(::chmod(path_.c_str(), 0644), 0);
  static mode_t mode_while_writing = 0;
  SystemCalls calls = SystemCalls::real();
  calls.write = [](int file, const void* bytes, std::size_t count) {
    struct stat status = {};
    ::fstat(file, &status);
    mode_while_writing = status.st_mode & kPermissions;
    return ::write(file, bytes, count);
  };
  EXPECT_EQ(error_of(path_, "new", calls), "");
  EXPECT_EQ(mode_while_writing, 0600U);
  EXPECT_EQ(status().st_uid, kUser);
  EXPECT_EQ(status().st_gid, kUser);
  EXPECT_EQ(status().st_mode & kPermissions, 0644U);
}

TEST_F(ReplaceFile, TakesAFileOverWhenItCannotBeGivenBack) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can become another user";
  write_file(path_, "old");
  ASSERT_EQ(::chmod(path_.c_str(), 06755), 0);
  ASSERT_EQ(::chmod(folder_.path().c_str(), 0777), 0);
  const auto as_other = [&] {
    return ::setgid(65534) == 0 && ::setuid(65534) == 0 && replace(path_, "new").ok();
  };
  EXPECT_EQ(in_child(as_other), 0);
  EXPECT_EQ(contents_of(path_), "new");
  EXPECT_EQ(status().st_uid, 65534U);
  EXPECT_EQ(status().st_mode & kPermissions, 0755U);
}

TEST_F(ReplaceFile, DoesItsStepsInTheOrderThatSurvivesAPowerCut) {
  write_file(path_, "old");
  EXPECT_EQ(error_of(path_, "new", failing_calls()), "");
  std::vector<std::string> steps;
  for (const std::string& call : plan().log) {
    if (call == "write" || call == "fsync" || call == "renameat") steps.push_back(call);
  }
  EXPECT_THAT(steps, ElementsAre("write", "fsync", "renameat", "fsync"));
  EXPECT_EQ(plan().open_files, 0);
}

TEST_F(ReplaceFile, WritesThroughLinksAndKeepsThem) {
  const TemporaryFolder elsewhere;
  write_file(elsewhere / "target", "old");
  ASSERT_EQ(::symlink((elsewhere / "target").c_str(), (folder_ / "middle").c_str()), 0);
  ASSERT_EQ(::symlink("middle", path_.c_str()), 0);
  EXPECT_EQ(error_of(path_, "new"), "");
  EXPECT_TRUE(S_ISLNK(status().st_mode));
  EXPECT_EQ(contents_of(elsewhere / "target"), "new");
  EXPECT_THAT(elsewhere.names(), ElementsAre("target"));
}

TEST_F(ReplaceFile, MakesTheFileThatALinkNamesInVain) {
  ASSERT_EQ(::symlink("target", path_.c_str()), 0);
  EXPECT_EQ(error_of(path_, "new"), "");
  EXPECT_TRUE(S_ISLNK(status().st_mode));
  EXPECT_EQ(contents_of(folder_ / "target"), "new");
}

TEST_F(ReplaceFile, RefusesWhatIsNoFileAndLeavesItAlone) {
  ASSERT_EQ(::mkdir((folder_ / "folder").c_str(), 0700), 0);
  ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0600), 0);
  ASSERT_EQ(::symlink("loop", (folder_ / "loop").c_str()), 0);
  EXPECT_THAT(error_of(folder_ / "folder", "new"), HasSubstr("Is a directory"));
  EXPECT_THAT(error_of(folder_ / "folder/", "new"), HasSubstr("Is a directory"));
  EXPECT_THAT(error_of(folder_ / "pipe", "new"), HasSubstr("not a regular file"));
  EXPECT_THAT(error_of(folder_ / "loop", "new"), HasSubstr("symbolic links"));
  EXPECT_THAT(error_of(folder_ / "missing/values", "new"), HasSubstr("No such file"));
  EXPECT_THAT(error_of("", "new"), HasSubstr("directory"));
  EXPECT_THAT(error_of(folder_ / std::string(256, 'x'), "new"), HasSubstr("too long"));
  EXPECT_THAT(folder_.names(), ::testing::UnorderedElementsAre("folder", "pipe", "loop"));
}

TEST_F(ReplaceFile, TakesTheLongestNameThereIs) {
  EXPECT_EQ(error_of(folder_ / std::string(255, 'x'), "new"), "");
  EXPECT_EQ(contents_of(folder_ / std::string(255, 'x')), "new");
}

TEST_F(ReplaceFile, LeavesTheOldFileWhenAnyCallFails) {
  const std::string long_text(10000, 'n');
  for (const int error_number : {EIO, ENOSPC, EMFILE, EACCES, EDQUOT, EROFS}) {
    write_file(path_, "old");
    ASSERT_EQ(::chmod(path_.c_str(), 0640), 0);
    int call = 0;
    do {
      plan() = {.fail_at = ++call, .error_number = error_number};
      const std::string error = error_of(path_, long_text, failing_calls());
      const bool struck = plan().calls >= call;
      const std::string place = "call " + std::to_string(call) + ", " +
                                (struck ? plan().log[static_cast<std::size_t>(call) - 1] : "none");
      const std::string now = contents_of(path_);
      if (now != "old") {
        // After the rename the new file is there, whole; only that it will stay is then in doubt.
        ASSERT_EQ(now, long_text) << place;
        EXPECT_TRUE(error.empty() || error.find("sync the folder") != std::string::npos) << place;
      } else {
        EXPECT_NE(error, "") << place;
      }
      EXPECT_EQ(status().st_mode & kPermissions, 0640U) << place;
      EXPECT_EQ(plan().open_files, 0) << place;
      EXPECT_THAT(folder_.names(), ElementsAre("values")) << place;
      if (now != "old") write_file(path_, "old");
    } while (plan().calls >= call);
    EXPECT_GE(call, 8);
  }
}

TEST_F(ReplaceFile, SaysThatTheUsersQuotaIsExhausted) {
  // Where the quota is noticed depends on the file system: when the file is made, as its bytes are written,
  // when they are given their place on the disk, or when it is closed.
  for (const char* name : {"openat", "write", "fsync", "close"}) {
    write_file(path_, "old");
    plan() = {.fail_at = 1, .error_number = EDQUOT, .only = name, .keeps_failing = true};
    if (std::string(name) == "openat") plan().fail_at = 2;  // the first is the folder
    EXPECT_THAT(error_of(path_, "new", failing_calls()), HasSubstr(path_ + ": Disk quota exceeded")) << name;
    EXPECT_EQ(contents_of(path_), "old") << name;
    EXPECT_THAT(folder_.names(), ElementsAre("values")) << name;
  }
}

TEST_F(ReplaceFile, GoesOnAfterSignalsAndShortWrites) {
  for (const char* name : {"openat", "write", "fsync", "close"}) {
    write_file(path_, "old");
    plan() = {.fail_at = 1, .error_number = EINTR, .only = name};
    EXPECT_EQ(error_of(path_, "new", failing_calls()), "") << name;
    EXPECT_EQ(contents_of(path_), "new") << name;
  }
  plan() = {.fail_at = 1, .only = "write", .keeps_failing = true};
  EXPECT_EQ(error_of(path_, "a byte at a time", failing_calls()), "");
  EXPECT_EQ(contents_of(path_), "a byte at a time");
}

TEST_F(ReplaceFile, DoesNotLoopOnAWriteThatWritesNothing) {
  SystemCalls calls = SystemCalls::real();
  calls.write = [](int, const void*, std::size_t) -> ssize_t { return 0; };
  write_file(path_, "old");
  EXPECT_NE(error_of(path_, "new", calls), "");
  EXPECT_EQ(contents_of(path_), "old");
}

TEST_F(ReplaceFile, AsksNoMoreOfFileSystemsThatCannotSyncFolders) {
  plan() = {.fail_at = 2, .error_number = EINVAL, .only = "fsync"};
  EXPECT_EQ(error_of(path_, "new", failing_calls()), "");
}

TEST_F(ReplaceFile, LeavesTheOldFileWhenTheDiskIsFull) {
  write_file(path_, "old");
  const auto limited = [&] {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {4096, 4096};
    if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) return false;
    return !replace(path_, std::string(100000, 'n')).ok() && contents_of(path_) == "old" &&
           replace(path_, "new").ok();
  };
  EXPECT_EQ(in_child(limited), 0);
  EXPECT_EQ(contents_of(path_), "new");
  EXPECT_THAT(folder_.names(), ElementsAre("values"));
}

TEST_F(ReplaceFile, SaysSoWhenTheFolderTakesNoFiles) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can become a user whom the folder refuses";
  write_file(path_, "old");
  ASSERT_EQ(::chmod(folder_.path().c_str(), 0755), 0);
  const auto as_other = [&] { return ::setuid(65534) == 0 && !replace(path_, "new").ok(); };
  EXPECT_EQ(in_child(as_other), 0);
  EXPECT_EQ(contents_of(path_), "old");
}

TEST_F(ReplaceFile, WritesIntoAFolderThatMayNotBeListed) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can make a folder for another user";
  ASSERT_EQ(::chmod(folder_.path().c_str(), 0733), 0);
  const auto as_other = [&] { return ::setuid(65534) == 0 && replace(path_, "new").ok(); };
  EXPECT_EQ(in_child(as_other), 0);
  EXPECT_EQ(contents_of(path_), "new");
}

TEST_F(ReplaceFile, SweepsWhatDeadWritersLeftAndNothingElse) {
  const pid_t dead = ::fork();
  if (dead == 0) ::_exit(0);
  ::waitpid(dead, nullptr, 0);
  const std::string stale = ".wispen-" + std::to_string(dead) + "-7.tmp";
  const std::string living = ".wispen-" + std::to_string(::getppid()) + "-7.tmp";
  const std::vector<std::string> others = {".wispen-",
                                           ".wispen-.tmp",
                                           ".wispen-x-1.tmp",
                                           ".wispen--1-1.tmp",
                                           ".wispen-99999999999999-1.tmp",
                                           "wispen-1-1.tmp",
                                           ".tmp",
                                           living};
  for (const std::string& name : others) write_file(folder_ / name, "");
  write_file(folder_ / stale, "");
  EXPECT_EQ(error_of(path_, "new"), "");
  std::vector<std::string> expected = others;
  expected.push_back("values");
  EXPECT_THAT(folder_.names(), ::testing::UnorderedElementsAreArray(expected));
}

TEST_F(ReplaceFile, PassesOverNamesThatAPredecessorWithTheSameNumberLeft) {
  EXPECT_EQ(error_of(path_, "old", failing_calls()), "");
  for (int i = 0; i < 1000; ++i) {
    write_file(folder_ / (".wispen-" + std::to_string(::getpid()) + "-" + std::to_string(i * 3) + ".tmp"),
               "");
  }
  EXPECT_EQ(error_of(path_, "new"), "");
  EXPECT_EQ(contents_of(path_), "new");
}

}  // namespace
}  // namespace wispen::files
