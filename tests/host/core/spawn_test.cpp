// tests/host/core/spawn_test.cpp: starting programs of the device root, and reaping them one by one.

#include "host/core/spawn.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <vector>

#include "tests/host/core/device_fixture.hpp"

namespace wispen {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class Spawn : public testing::OnADevice {
 protected:
  int spawn(const char* path, std::vector<const char*> arguments = {"name"},
            char* const* environment = nullptr) {
    arguments.push_back(nullptr);
    return wispen_platform_posix_spawn(&child, path, nullptr, nullptr,
                                       const_cast<char* const*>(arguments.data()), environment);
  }
  int wait() {
    int status = -1;
    EXPECT_EQ(wispen_platform_waitpid(child, &status, 4), child);
    return status;
  }

  pid_t child = 0;
};

TEST_F(Spawn, RunsAProgramOfTheDeviceRootWithItsArguments) {
  install_script("/usr/bin/tool", "echo \"$1,$2\" > " + output() + "; exit 3");
  ASSERT_EQ(spawn("/usr/bin/tool", {"tool", "one", "two words"}), 0);
  const int status = wait();
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 3);
  EXPECT_EQ(written(), "one,two words\n");
}

TEST_F(Spawn, NeverRunsTheMachinesOwnProgramOfThatPath) {
  ASSERT_TRUE(std::filesystem::exists("/bin/sh"));
  EXPECT_EQ(spawn("/bin/sh"), ENOENT);
  EXPECT_EQ(spawn("/../../../../../../bin/sh"), ENOENT);
  std::filesystem::create_symlink("/bin/sh", root().path() + "/usr/bin/link");
  EXPECT_EQ(spawn("/usr/bin/link"), ENOENT);
}

TEST_F(Spawn, GivesTheErrorOfWhatCannotBeExecuted) {
  folder_.write("root/usr/bin/data", "no program");
  EXPECT_EQ(spawn("/usr/bin/data"), EACCES);
  EXPECT_EQ(spawn(""), ENOENT);
  set_current_root(nullptr);
  EXPECT_EQ(spawn("/usr/bin/data"), ENOENT);
}

TEST_F(Spawn, OffersNeitherFileActionsNorAttributes) {
  char* const none[] = {nullptr};
  EXPECT_EQ(wispen_platform_posix_spawn(&child, "/usr/bin/tool", &child, nullptr, none, nullptr), EINVAL);
  EXPECT_EQ(wispen_platform_posix_spawn(&child, "/usr/bin/tool", nullptr, &child, none, nullptr), EINVAL);
}

TEST_F(Spawn, TakesANullEnvironmentAsAnEmptyOne) {
  setenv("WISPEN_TEST_LEAK", "leaked", 1);
  install_script("/usr/bin/tool", "echo \"[$WISPEN_TEST_LEAK][$GIVEN]\" > " + output());
  ASSERT_EQ(spawn("/usr/bin/tool"), 0);
  wait();
  EXPECT_EQ(written(), "[][]\n");
  std::string given = "GIVEN=yes";
  char* const environment[] = {given.data(), nullptr};
  ASSERT_EQ(spawn("/usr/bin/tool", {"tool"}, environment), 0);
  wait();
  EXPECT_EQ(written(), "[][yes]\n");
  unsetenv("WISPEN_TEST_LEAK");
}

TEST_F(Spawn, HandsNoDescriptorOnBesidesTheStandardThree) {
  const int leaky = open("/dev/null", O_RDONLY);  // as a library would, without the close-on-exec flag
  ASSERT_EQ(fcntl(leaky, F_GETFD) & FD_CLOEXEC, 0);
  install_script("/usr/bin/tool",
                 "[ -e /proc/self/fd/" + std::to_string(leaky) + " ] && echo open || echo closed");
  const int saved = dup(1);
  const int file = open(output().c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644);
  dup2(file, 1);
  const int error = spawn("/usr/bin/tool");
  dup2(saved, 1);
  ASSERT_EQ(error, 0);
  wait();
  EXPECT_EQ(written(), "closed\n");
  for (int fd : {leaky, saved, file}) close(fd);
}

TEST_F(Spawn, WaitsForNothingButItsOwnChildren) {
  int status = 0;
  for (const pid_t process : {pid_t{0}, pid_t{-1}, pid_t{1}, getpid(), pid_t{-2147483647}}) {
    errno = 0;
    EXPECT_EQ(wispen_platform_waitpid(process, &status, 4), -1);
    EXPECT_EQ(errno, ECHILD);
  }
  const pid_t foreign = fork();
  if (foreign == 0) _exit(0);
  EXPECT_EQ(wispen_platform_waitpid(foreign, &status, 4), -1);
  EXPECT_EQ(waitpid(foreign, &status, 0), foreign);
}

TEST_F(Spawn, LetsAProcessBeWaitedForOnce) {
  install_script("/usr/bin/tool", "exit 0");
  ASSERT_EQ(spawn("/usr/bin/tool"), 0);
  wait();
  EXPECT_EQ(wispen_platform_waitpid(child, nullptr, 4), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST_F(Spawn, DoesNotHangWhenAskedNotTo) {
  install_script("/usr/bin/tool", "read line");
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
  const int saved = dup(0);
  dup2(ends[0], 0);
  ASSERT_EQ(spawn("/usr/bin/tool"), 0);
  dup2(saved, 0);
  close(ends[0]);
  close(saved);
  EXPECT_EQ(wispen_platform_waitpid(child, nullptr, 1), 0);
  close(ends[1]);
  EXPECT_TRUE(WIFEXITED(wait()));
}

TEST_F(Spawn, RefusesOptionsThatThePhoneDoesNotHave) {
  EXPECT_EQ(wispen_platform_waitpid(1, nullptr, 1 << 20), -1);
  EXPECT_EQ(errno, EINVAL);
}

TEST_F(Spawn, KeepsTheStatusOfAChildThatALaterSpawnCollected) {
  install_script("/usr/bin/first", "exit 5");
  install_script("/usr/bin/second", "exit 6");
  ASSERT_EQ(spawn("/usr/bin/first"), 0);
  const pid_t first = child;
  // Until the first is a zombie, there is nothing to collect.
  siginfo_t info{};
  ASSERT_EQ(waitid(P_PID, static_cast<id_t>(first), &info, WEXITED | WNOWAIT), 0);
  ASSERT_EQ(spawn("/usr/bin/second"), 0);
  EXPECT_EQ(waitid(P_PID, static_cast<id_t>(first), &info, WEXITED | WNOHANG | WNOWAIT), -1)
      << "a zombie is left";
  EXPECT_EQ(WEXITSTATUS(wait()), 6);
  int status = 0;
  EXPECT_EQ(wispen_platform_waitpid(first, &status, 4), first);
  EXPECT_EQ(WEXITSTATUS(status), 5);
}

}  // namespace
}  // namespace wispen
