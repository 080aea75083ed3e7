// tests/host/processes/device_processes_test.cpp: the phone's own processes live, die and come again.

#include "host/processes/device_processes.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>

#include "home_screen/processes/end_named.hpp"
#include "tests/host/core/child.hpp"
#include "tests/host/processes/stayer_fixture.hpp"

namespace wispen {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Ne;
using ::testing::SizeIs;

constexpr char kHomeScreenPlace[] = "/System/Library/CoreServices/SpringBoard.app/SpringBoard";

/// The programs as they are built, but for the home screen, in whose place another one stays.
class Device : public testing::WithStayers {
 protected:
  Device() {
    fs::create_directory(programs());
    for (const char* const name : {"killall", "backboardd"}) {
      fs::copy_file(std::string(WISPEN_DEVICE_PROGRAMS) + "/" + name, programs() + "/" + name);
    }
    fs::copy_file(std::string(WISPEN_DEVICE_PROGRAMS) + "/backboardd", programs() + "/SpringBoard");
  }
  std::string programs() const { return folder_ / "programs"; }
  void start(std::vector<std::string> arguments = {}) {
    auto started = DeviceProcesses::start(loop, root(),
                                          {.programs = programs(),
                                           .home_screen_arguments = std::move(arguments),
                                           .lost = [this](const std::string& why) { lost.push_back(why); }});
    ASSERT_TRUE(started) << started.error().message;
    processes = *std::move(started);
    run_until([this] {
      return runs_own_program(process("SpringBoard")) && runs_own_program(process("backboardd"));
    });
  }
  pid_t process(const std::string& name) const {
    const auto all = processes->processes(name);
    return all.empty() ? 0 : all.front();
  }
  bool runs_own_program(pid_t process) const {
    const auto known = look_up_process(process);
    return known && known->program.starts_with(root().path());
  }

  std::unique_ptr<DeviceProcesses> processes;
  std::vector<std::string> lost;
};

TEST_F(Device, HasItsProcessesAtTheirPublicPlaces) {
  start();
  EXPECT_EQ(look_up_process(process("SpringBoard"))->program, root().path() + kHomeScreenPlace);
  EXPECT_EQ(look_up_process(process("backboardd"))->program, root().path() + "/usr/libexec/backboardd");
}

TEST_F(Device, HasItsCommandOnlyWhereTheLayoutHasIt) {
  ASSERT_TRUE(install_device_programs(root(), programs()));
  EXPECT_TRUE(fs::exists(root().path() + "/var/jb/usr/bin/killall"));
  EXPECT_FALSE(fs::exists(root().path() + "/usr/bin/killall"));
  const auto rootful = DeviceRoot::open(folder_ / "rootful", Layout::Rootful);
  ASSERT_TRUE(rootful);
  ASSERT_TRUE(install_device_programs(*rootful, programs()));
  EXPECT_TRUE(fs::exists(rootful->path() + "/usr/bin/killall"));
  EXPECT_FALSE(fs::exists(rootful->path() + "/var/jb"));
}

TEST_F(Device, StartsTheHomeScreenAgainWhenItEnds) {
  start();
  const pid_t home = process("SpringBoard");
  const pid_t below = process("backboardd");
  EXPECT_EQ(signal_named(root(), "SpringBoard", SIGTERM), 1u);
  run_until([&] { return process("SpringBoard") != home && process("SpringBoard") != 0; });
  EXPECT_EQ(process("backboardd"), below);
}

TEST_F(Device, StartsBothAgainWhenBackboarddEnds) {
  start();
  const pid_t home = process("SpringBoard");
  const pid_t below = process("backboardd");
  EXPECT_EQ(signal_named(root(), "backboardd", SIGTERM), 1u);
  run_until([&] {
    return process("backboardd") != below && process("backboardd") != 0 && process("SpringBoard") != home &&
           process("SpringBoard") != 0;
  });
  EXPECT_FALSE(lives(home));
  EXPECT_FALSE(lives(below));
}

TEST_F(Device, ComesBackHoweverOftenItIsAskedToRestart) {
  start();
  for (int i = 0; i < 3 * ProcessTable::kMaxQuickRestarts; ++i) {
    const pid_t home = process("SpringBoard");
    run_until([&] { return signal_named(root(), "SpringBoard", SIGTERM) == 1; });
    run_until([&] { return process("SpringBoard") != home; });
    ASSERT_NE(process("SpringBoard"), 0) << i;
  }
  EXPECT_THAT(lost, SizeIs(0));
}

TEST_F(Device, TellsOfAHomeScreenThatCannotLiveAndDoesNotStartItForEver) {
  fs::copy_file("/bin/false", programs() + "/SpringBoard", fs::copy_options::overwrite_existing);
  auto started = DeviceProcesses::start(
      loop, root(),
      {.programs = programs(), .lost = [this](const std::string& why) { lost.push_back(why); }});
  ASSERT_TRUE(started);
  processes = *std::move(started);
  run_until([this] { return !lost.empty(); });
  EXPECT_THAT(lost, ElementsAre(HasSubstr("'SpringBoard' ended at once each time")));
  EXPECT_EQ(process("SpringBoard"), 0);
  EXPECT_THAT(process("backboardd"), Ne(0));
}

TEST_F(Device, EndsItsProcessesWithItself) {
  start();
  const pid_t home = process("SpringBoard");
  const pid_t below = process("backboardd");
  processes.reset();
  EXPECT_FALSE(lives(home));
  EXPECT_FALSE(lives(below));
  EXPECT_TRUE(fs::is_empty(process_records_folder(root())));
}

TEST_F(Device, EndsItsProcessesAlsoWhenTheHostIsKilled) {
  testing::Child host([this](int output) {
    MainLoop own;
    const auto started = DeviceProcesses::start(own, root(), {.programs = programs()});
    if (!started) _exit(1);
    testing::say(output, std::to_string((*started)->processes("SpringBoard").front()));
    testing::say(output, std::to_string((*started)->processes("backboardd").front()));
    while (true) pause();
  });
  const pid_t home = std::stoi(host.line());
  const pid_t below = std::stoi(host.line());
  host.end(SIGKILL);
  // Whoever adopts them has to collect them too: until then they are ended and still known.
  const auto ended = [](pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    return text.empty() || text.find(") Z ") != std::string::npos;
  };
  run_until([&] { return ended(home) && ended(below); });
}

TEST_F(Device, LeavesAFileOfSomebodyElseAlone) {
  for (const char* const place : {"/var/jb/usr/bin/killall", "/usr/libexec/backboardd", kHomeScreenPlace}) {
    folder_.write(std::string("root") + place, "somebody's own");
    const auto started = DeviceProcesses::start(loop, root(), {.programs = programs()});
    ASSERT_FALSE(started);
    EXPECT_THAT(started.error().message, HasSubstr("somebody else's is there"));
    std::ifstream file(root().path() + place);
    std::string text;
    std::getline(file, text);
    EXPECT_EQ(text, "somebody's own");
    fs::remove(root().path() + place);
  }
}

TEST_F(Device, ReplacesAnOlderStandInOfAHostEvenWhileItRuns) {
  start();
  const pid_t home = process("SpringBoard");
  std::ofstream(programs() + "/SpringBoard", std::ios::app) << "newer";
  ASSERT_TRUE(install_device_programs(root(), programs()));
  EXPECT_EQ(fs::file_size(root().path() + kHomeScreenPlace), fs::file_size(programs() + "/SpringBoard"));
  // Still known by its record, though the file that it runs has no name any more.
  EXPECT_EQ(signal_named(root(), "SpringBoard", SIGTERM), 1u);
  run_until([&] { return process("SpringBoard") != home; });
}

TEST_F(Device, IsRefusedWithASentenceWhereThereAreNoPrograms) {
  const auto started = DeviceProcesses::start(loop, root(), {.programs = folder_ / "nothing"});
  ASSERT_FALSE(started);
  EXPECT_THAT(started.error().message, HasSubstr("cannot be read"));
}

}  // namespace
}  // namespace wispen
