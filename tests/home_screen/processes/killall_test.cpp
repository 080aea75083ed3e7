// tests/home_screen/processes/killall_test.cpp: the device root's killall ends what a host started there, and
// no stranger.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <csignal>

#include "home_screen/processes/end_named.hpp"
#include "host/core/spawn.hpp"
#include "tests/host/core/child.hpp"
#include "tests/host/processes/stayer_fixture.hpp"

namespace wispen {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr char kKillall[] = "/var/jb/usr/bin/killall";

class Killall : public testing::WithStayers {
 protected:
  Killall() {
    std::filesystem::copy_file(std::string(WISPEN_DEVICE_PROGRAMS) + "/killall", root().path() + kKillall);
  }
  struct Outcome {
    int status = -1;
    std::string said;
  };
  /// As a page would run it: without environment, waiting for its end while nothing else of the host runs.
  Outcome run(std::vector<std::string> words, const char* path = kKillall) {
    words.insert(words.begin(), "killall");
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const int saved = dup(STDERR_FILENO);
    const int log = open(output().c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    dup2(log, STDERR_FILENO);
    pid_t process = 0;
    const int error =
        wispen_platform_posix_spawn(&process, path, nullptr, nullptr, arguments.data(), nullptr);
    dup2(saved, STDERR_FILENO);
    close(saved);
    close(log);
    EXPECT_EQ(error, 0);
    int status = 0;
    EXPECT_EQ(wispen_platform_waitpid(process, &status, 4), process);
    return {WEXITSTATUS(status), written()};
  }
  std::string stayer() const { return root().path() + "/usr/bin/stayer"; }
  /// Another process that has started one of the root's programs, and tells which process that is.
  testing::Child other_host() const {
    return testing::Child([program = stayer()](int output) {
      const pid_t child = fork();
      if (child == 0) {
        execl(program.c_str(), "stayer", "1000", nullptr);
        _exit(1);
      }
      testing::say(output, std::to_string(child));
      pause();
    });
  }
  pid_t stayer_of(const testing::Child& host) {
    const pid_t process = std::stoi(host.line());
    run_until([&] { return look_up_process(process)->program == stayer(); });
    return process;
  }
  void expect_untouched(pid_t process, const std::string& name = "SpringBoard") {
    EXPECT_EQ(signal_named(root(), name, SIGKILL), 0u);
    EXPECT_TRUE(lives(process));
    EXPECT_EQ(waitpid(process, nullptr, WNOHANG), 0);
  }
};

TEST_F(Killall, EndsEveryProcessOfTheNameAndNoOther) {
  start_stayer("SpringBoard");
  start_stayer("SpringBoard");
  const pid_t other = start_stayer("backboardd");
  const Outcome outcome = run({"SpringBoard"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.said, "");
  run_until([&] { return table.size() == 1; });
  EXPECT_THAT(table.processes("backboardd"), ElementsAre(other));
}

TEST_F(Killall, SaysThatThereIsNoneLikeTheWellKnownCommand) {
  start_stayer("SpringBoard");
  for (const char* const name :
       {"backboardd", "Spring", "springboard", "stayer", "init", "systemd", "../SpringBoard"}) {
    const Outcome outcome = run({name});
    EXPECT_EQ(outcome.status, 1) << name;
    EXPECT_EQ(outcome.said, "No matching processes were found\n") << name;
  }
  EXPECT_EQ(table.size(), 1u);
}

TEST_F(Killall, SendsTheSignalThatItIsTold) {
  for (const auto& words :
       std::vector<std::vector<std::string>>{{"-KILL"}, {"-SIGKILL"}, {"-9"}, {"-s", "KILL"}}) {
    start_stayer("SpringBoard");
    auto all = words;
    all.emplace_back("SpringBoard");
    EXPECT_EQ(run(all).status, 0);
    run_until([&] { return table.size() == 0; });
  }
  start_stayer("SpringBoard");
  EXPECT_EQ(run({"-0", "SpringBoard"}).status, 0);
  EXPECT_EQ(table.size(), 1u);
}

TEST_F(Killall, ExplainsItselfWhereItIsUsedWrongly) {
  start_stayer("SpringBoard");
  for (const auto& words : std::vector<std::vector<std::string>>{
           {}, {"-KILL"}, {"-NOSUCH", "SpringBoard"}, {"-s"}, {"-1000", "SpringBoard"}}) {
    const Outcome outcome = run(words);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.said, HasSubstr("usage: killall"));
  }
  EXPECT_EQ(table.size(), 1u);
}

TEST_F(Killall, FindsItsRootByItsPlaceInItWhateverNameItIsCalledBy) {
  start_stayer("SpringBoard");
  std::filesystem::create_symlink(std::string("/var/jb/usr/bin/killall"), root().path() + "/usr/bin/ender");
  EXPECT_EQ(run({"SpringBoard"}, "/usr/bin/ender").status, 0);
}

TEST_F(Killall, DoesNothingOutsideOfADeviceRoot) {
  start_stayer("SpringBoard");
  const std::string command = std::string(WISPEN_DEVICE_PROGRAMS) + "/killall SpringBoard 2> " + output();
  EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
  EXPECT_THAT(written(), HasSubstr("lies in no device root"));
  EXPECT_EQ(table.size(), 1u);
}

TEST_F(Killall, KnowsNothingOfTheProcessesOfAnotherRoot) {
  start_stayer("SpringBoard");
  const auto other = DeviceRoot::open(folder_ / "other", Layout::Rootful);
  ASSERT_TRUE(other);
  EXPECT_EQ(signal_named(*other, "SpringBoard", SIGKILL), 0u);
  // Not even where the other root has a copy of the record.
  std::filesystem::copy(process_records_folder(root()), process_records_folder(*other));
  ASSERT_EQ(chmod(process_records_folder(*other).c_str(), 0700), 0);
  ASSERT_EQ(read_process_records(*other, "SpringBoard").size(), 1u);
  EXPECT_EQ(signal_named(*other, "SpringBoard", SIGKILL), 0u);
  EXPECT_EQ(table.size(), 1u);
}

TEST_F(Killall, LeavesAProcessAloneThatHasTheIdOfOneThatEnded) {
  const pid_t process = start_stayer("other");
  ProcessRecord record = record_of("SpringBoard", process);
  ++record.started;
  put_record(record);
  expect_untouched(process);
  --record.started;
  put_record(record);  // the same but for the time of its start: the record is what was wrong
  EXPECT_EQ(signal_named(root(), "SpringBoard", 0), 1u);
}

TEST_F(Killall, LeavesAChildOfTheHostAloneThatRunsAProgramFromOutsideOfTheRoot) {
  start_stayer("SpringBoard-of-another-name");  // makes the folder
  const testing::Child stranger([](int) { pause(); });
  put_record(record_of("SpringBoard", stranger.process()));
  ASSERT_EQ(read_process_records(root(), "SpringBoard").size(), 1u);
  expect_untouched(stranger.process());
}

TEST_F(Killall, LeavesAProcessAloneThatIsNoChildOfTheHostThatIsNamed) {
  start_stayer("other");
  const testing::Child parent = other_host();
  const pid_t grandchild = stayer_of(parent);
  ProcessRecord record = record_of("SpringBoard", grandchild);
  put_record(record);
  EXPECT_EQ(signal_named(root(), "SpringBoard", SIGKILL), 0u);
  record.host = parent.process();
  put_record(record);  // the right parent, which did not start when the record says
  EXPECT_EQ(signal_named(root(), "SpringBoard", SIGKILL),
            look_up_process(parent.process())->started == record.host_started);
  record.host_started += 1000;
  put_record(record);
  EXPECT_EQ(signal_named(root(), "SpringBoard", SIGKILL), 0u);
  kill(grandchild, SIGKILL);
}

TEST_F(Killall, LeavesAloneWhatAHostThatHasEndedLeftBehind) {
  start_stayer("other");
  testing::Child parent = other_host();
  const pid_t orphan = stayer_of(parent);
  const auto host = look_up_process(parent.process());
  put_record({"SpringBoard", orphan, look_up_process(orphan)->started, parent.process(), host->started});
  EXPECT_EQ(signal_named(root(), "SpringBoard", 0), 1u);
  parent.end();
  EXPECT_EQ(signal_named(root(), "SpringBoard", SIGKILL), 0u);
  kill(orphan, SIGKILL);
}

TEST_F(Killall, PassesOverRecordsThatAreNoPlainFilesOfThisUser) {
  const pid_t process = start_stayer("other");
  const std::string file = record_file(process);
  const std::string text = text_of(record_of("SpringBoard", process));
  put_record(std::to_string(process), text);
  ASSERT_EQ(signal_named(root(), "SpringBoard", 0), 1u);  // so that what follows is what makes the difference

  std::filesystem::remove(file);
  folder_.write("elsewhere", text);
  std::filesystem::create_symlink(folder_ / "elsewhere", file);
  expect_untouched(process);
  std::filesystem::remove(file);
  std::filesystem::create_hard_link(folder_ / "elsewhere", file);
  expect_untouched(process);
  std::filesystem::remove(file);
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);  // opening it for reading would wait for ever
  expect_untouched(process);
  std::filesystem::remove(file);
  std::filesystem::create_directory(file);
  expect_untouched(process);
  std::filesystem::remove(file);
  put_record("copy", text);
  expect_untouched(process);
}

TEST_F(Killall, PassesOverRecordsOfAnotherUser) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can give files away";
  const pid_t process = start_stayer("other");
  put_record(record_of("SpringBoard", process));
  ASSERT_EQ(chown(record_file(process).c_str(), 65534, 65534), 0);
  expect_untouched(process);
}

TEST_F(Killall, PassesOverAFolderThatIsALink) {
  const pid_t process = start_stayer("SpringBoard");
  const std::string place = process_records_folder(root());
  std::filesystem::rename(place, folder_ / "moved");
  std::filesystem::create_symlink(folder_ / "moved", place);
  expect_untouched(process);
}

TEST_F(Killall, PassesOverGarbageAndIdsThatAreNoProcesses) {
  const pid_t process = start_stayer("SpringBoard");
  put_record("1", "wispen process 1\nSpringBoard\n1\n0\n1\n0\n");
  put_record("-1", "wispen process 1\nSpringBoard\n-1\n0\n" + std::to_string(getpid()) + "\n0\n");
  put_record("0", "wispen process 1\nSpringBoard\n0\n0\n" + std::to_string(getpid()) + "\n0\n");
  put_record("self", text_of(record_of("SpringBoard", getpid())));
  put_record(record_of("SpringBoard", getpid()));
  put_record("empty", "");
  put_record("noise", std::string("\0\1\2\3\n\n\n\n\n\n", 10));
  put_record("large", std::string(10'000'000, '9'));
  EXPECT_EQ(signal_named(root(), "SpringBoard", SIGTERM), 1u);
  run_until([&] { return table.size() == 0; });
  EXPECT_FALSE(lives(process));
}

}  // namespace
}  // namespace wispen
