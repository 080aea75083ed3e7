// tests/host/core/process_table_test.cpp: the named processes that a device would have, started and watched.

#include "host/core/process_table.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>

#include "tests/host/core/child.hpp"
#include "tests/host/core/device_fixture.hpp"

namespace wispen {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// Programs of these tests say on a FIFO that they run, and the main loop runs until a line has come.
class Processes : public testing::OnADevice {
 protected:
  Processes() {
    EXPECT_EQ(mkfifo(fifo().c_str(), 0600), 0);
    reading_.reset(open(fifo().c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK));
    loop.watch(reading_.get(), POLLIN, [this](short) {
      char c = 0;
      while (read(reading_.get(), &c, 1) == 1) {
        if (c == '\n') {
          lines.push_back(std::exchange(line_, {}));
        } else {
          line_ += c;
        }
      }
    });
  }

  std::string fifo() const { return folder_ / "fifo"; }
  /// A program that says what it is given and then stays.
  void install_stayer() const {
    install_script("/usr/bin/stayer", "echo \"$0 $1 [$GIVEN]\" > " + fifo() + "\nexec /bin/sleep 1000");
  }
  void run_until_lines(std::size_t count) {
    while (lines.size() < count) ASSERT_TRUE(loop.run_for(5ms));
  }
  void run_until_size(std::size_t size) {
    while (table.size() != size) ASSERT_TRUE(loop.run_for(5ms));
  }
  static bool exists(pid_t process) { return kill(process, 0) == 0; }

  MainLoop loop;
  ProcessTable table{loop};
  std::vector<std::string> lines;

 private:
  UniqueFd reading_;
  std::string line_;
};

TEST_F(Processes, RunBelowTheDeviceRootWithTheirArgumentsAndEnvironment) {
  install_stayer();
  const auto started = table.start("SpringBoard", "/usr/bin/stayer", {"hello"}, {"GIVEN=yes"});
  ASSERT_TRUE(started.ok());
  EXPECT_THAT(table.processes("SpringBoard"), ElementsAre(*started));
  run_until_lines(1);
  EXPECT_THAT(lines[0], HasSubstr("hello [yes]"));
}

TEST_F(Processes, AreRefusedWithASentenceWhenThereIsNoProgram) {
  const auto started = table.start("SpringBoard", "/bin/sh");
  ASSERT_FALSE(started.ok());
  EXPECT_THAT(started.error().message, HasSubstr("cannot start 'SpringBoard' from '/bin/sh'"));
  EXPECT_EQ(table.size(), 0u);
}

TEST_F(Processes, AreEndedByTheirNameAndNoOther) {
  install_stayer();
  ASSERT_TRUE(table.start("SpringBoard", "/usr/bin/stayer").ok());
  ASSERT_TRUE(table.start("SpringBoard", "/usr/bin/stayer").ok());
  ASSERT_TRUE(table.start("backboardd", "/usr/bin/stayer").ok());
  EXPECT_EQ(table.end_by_name("SpringBoard", SIGKILL), 2u);
  run_until_size(1);
  EXPECT_THAT(table.processes("SpringBoard"), IsEmpty());
  EXPECT_EQ(table.processes("backboardd").size(), 1u);
  EXPECT_EQ(table.end_by_name("SpringBoard", SIGKILL), 0u);
}

TEST_F(Processes, OfTheSameNameThatSomebodyElseStartedAreLeftAlone) {
  const testing::Child stranger([](int) { pause(); });
  install_script("/usr/bin/sleep", "exec /bin/sleep 1000");
  ASSERT_TRUE(table.start("sleep", "/usr/bin/sleep").ok());
  EXPECT_EQ(table.end_by_name("core_test", SIGKILL), 0u);
  EXPECT_EQ(table.end_by_name("sleep", SIGKILL), 1u);
  run_until_size(0);
  EXPECT_EQ(waitpid(stranger.process(), nullptr, WNOHANG), 0);
}

TEST_F(Processes, AreStartedAgainWhenThatWasAskedFor) {
  install_stayer();
  const auto first = table.start("SpringBoard", "/usr/bin/stayer", {}, {}, WhenItEnds::StartAgain);
  ASSERT_TRUE(first.ok());
  run_until_lines(1);
  EXPECT_EQ(table.end_by_name("SpringBoard", SIGTERM), 1u);
  run_until_lines(2);
  ASSERT_EQ(table.processes("SpringBoard").size(), 1u);
  EXPECT_NE(table.processes("SpringBoard")[0], *first);
}

TEST_F(Processes, ThatEndAtOnceAreNotStartedForEver) {
  install_script("/usr/bin/crasher", "echo up > " + fifo());
  ASSERT_TRUE(table.start("crasher", "/usr/bin/crasher", {}, {}, WhenItEnds::StartAgain).ok());
  run_until_size(0);
  ASSERT_TRUE(loop.run_for(5ms));
  EXPECT_EQ(lines.size(), 1u + ProcessTable::kMaxQuickRestarts);
}

TEST_F(Processes, AreAllGoneAfterAStopAlsoThoseThatWillNotListen) {
  install_stayer();
  install_script("/usr/bin/stubborn",
                 "trap '' TERM\necho up > " + fifo() + "\nwhile :; do /bin/sleep 0.01; done");
  const auto polite = table.start("polite", "/usr/bin/stayer", {}, {}, WhenItEnds::StartAgain);
  const auto stopped = table.start("stopped", "/usr/bin/stayer");
  const auto stubborn = table.start("stubborn", "/usr/bin/stubborn", {}, {}, WhenItEnds::StartAgain);
  run_until_lines(3);
  EXPECT_EQ(table.end_by_name("stopped", SIGSTOP), 1u);
  table.stop(20ms);
  EXPECT_EQ(table.size(), 0u);
  for (const auto& each : {polite, stopped, stubborn}) {
    EXPECT_FALSE(exists(*each));
    EXPECT_EQ(waitpid(*each, nullptr, WNOHANG), -1) << "a zombie is left";
  }
}

TEST_F(Processes, ThatSomebodyElseCollectedCountAsEnded) {
  install_script("/usr/bin/short", "exit 0");
  const auto started = table.start("short", "/usr/bin/short");
  ASSERT_TRUE(started.ok());
  EXPECT_EQ(waitpid(*started, nullptr, 0), *started);
  run_until_size(0);
}

}  // namespace
}  // namespace wispen
