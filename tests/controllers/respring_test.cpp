// tests/controllers/respring_test.cpp: both commands, in their order, and never a wait for what is not there.

#include <sys/stat.h>

#include <fstream>

#include "tests/support/page_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr char kSystemPath[] = "/usr/bin/killall";
constexpr char kJailbreakPath[] = "/var/jb/usr/bin/killall";

class RespringTest : public PageTest {
 protected:
  void SetUp() override {
    PageTest::SetUp();
    load_shipped_bundle();
    for (const char* const path : {kSystemPath, kJailbreakPath}) {
      std::filesystem::remove(device_path(path));
    }
  }
  /// A command at that place which writes down how it was called.
  void put_recorder(const char* path, const std::string& more = "") {
    const auto file = device_path(path);
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file) << "#!/bin/sh\n"
                        << more << "echo \"$0 $*\" >> " << log_ << "\nenv > " << log_ << ".env\n";
    ::chmod(file.c_str(), 0755);
  }
  std::vector<std::string> calls(std::size_t wanted) {
    std::vector<std::string> lines;
    // The second command is not waited for: it is watched until it has written, or the test fails.
    for (int i = 0; i == 0 || (i < 5000 && lines.size() < wanted); ++i) {
      if (i > 0) ::usleep(1000);
      lines.clear();
      std::ifstream file(log_);
      for (std::string line; std::getline(file, line);) lines.push_back(line.substr(line.rfind('/') + 1));
      wispen_host_run_until_idle();
    }
    return lines;
  }
  void press() {
    const auto page = open_page("WispRootListController");
    objc::send<"respring">(page);
  }
  const std::string log_ = folder_ / "calls";
};

TEST_F(RespringTest, DoesNothingAtOnceWhereThereIsNoCommand) {
  press();  // a wait for what was never started would not come back
  for (const char* const path : {kSystemPath, kJailbreakPath}) {
    EXPECT_FALSE(std::filesystem::exists(device_path(path)));
  }
  EXPECT_THAT(problems(), IsEmpty());
}

TEST_F(RespringTest, EndsOnlyBackboarddWhereOnlyTheJailbreakHasTheCommand) {
  put_recorder(kJailbreakPath);
  press();
  EXPECT_THAT(calls(1), ElementsAre("killall backboardd"));
}

TEST_F(RespringTest, EndsSpringBoardAndThenStillStartsTheSecond) {
  put_recorder(kSystemPath);
  put_recorder(kJailbreakPath);
  press();
  EXPECT_THAT(calls(2), ElementsAre("killall SpringBoard", "killall backboardd"));
}

TEST_F(RespringTest, WaitsForTheFirstCommandOnly) {
  put_recorder(kSystemPath, "sleep 0.2\n");
  press();
  EXPECT_THAT(calls(1), ElementsAre("killall SpringBoard"));  // written before the method came back
  put_recorder(kJailbreakPath, "sleep 0.2\n");
  std::filesystem::remove(device_path(kSystemPath));
  std::filesystem::remove(log_);
  press();
  EXPECT_FALSE(std::filesystem::exists(log_));
  EXPECT_THAT(calls(1), ElementsAre("killall backboardd"));
}

TEST_F(RespringTest, GivesTheCommandsNoEnvironment) {
  put_recorder(kSystemPath);
  press();
  EXPECT_THAT(calls(1), ElementsAre("killall SpringBoard"));
  std::ifstream file(log_ + ".env");
  for (std::string line; std::getline(file, line);) {
    EXPECT_TRUE(line.starts_with("PWD=") || line.starts_with("_=") || line.starts_with("SHLVL=")) << line;
  }
}

TEST_F(RespringTest, GivesBothCommandsTwoArgumentsTheirNameFirstAndNoEnvironment) {
  // A script is not told how it was called, but the shell is: as the command itself, it runs the file that
  // its one argument names.
  for (const char* const path : {kSystemPath, kJailbreakPath}) {
    std::filesystem::create_directories(device_path(path).parent_path());
    std::filesystem::copy_file("/bin/sh", device_path(path));
  }
  const auto record_of = [&](const std::string& name) { return folder_ / (name + ".arguments"); };
  for (const std::string name : {"SpringBoard", "backboardd"}) {
    folder_.write(name, "tr '\\0' '|' < /proc/$$/cmdline > '" + record_of(name) +
                            "'\ntr '\\0' '|' < /proc/$$/environ >> '" + record_of(name) + "'\necho >> '" +
                            record_of(name) + "'\n");
  }
  const auto page = open_page("WispRootListController");
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder_.path());
  objc::send<"respring">(page);
  std::filesystem::current_path(before);
  EXPECT_EQ(contents_of(record_of("SpringBoard")), "killall|SpringBoard|\n");
  std::string second;
  for (int i = 0; i < 5000 && !second.ends_with('\n'); ++i) {  // not waited for
    second = contents_of(record_of("backboardd"));
    ::usleep(1000);
  }
  EXPECT_EQ(second, "killall|backboardd|\n");
}

TEST_F(RespringTest, IsWhatTheButtonInTheBarDoes) {
  put_recorder(kSystemPath);  // is waited for, so that a call would be seen at once
  put_recorder(kJailbreakPath);
  show_shipped("root");
  const auto button = objc::cast_or_nil<UIButton>(top().navigationItem().titleView());
  ASSERT_TRUE(button);
  const auto view = search(tree(), [](const Json& each) {
    return each["class"] == "UIButton" && each.value("text", "") == "Respring";
  });
  ASSERT_TRUE(view);
  button.sendActionsForControlEvents(~UIControlEventTouchUpInside);
  EXPECT_THAT(calls(0), IsEmpty());
  tap(*view);
  EXPECT_THAT(calls(2), ElementsAre("killall SpringBoard", "killall backboardd"));
}

TEST_F(RespringTest, IsNotOfTheSubPages) {
  for (const char* const page : {"SepSettingsCell", "BackgroundSettingsCell", "ContextMenuLabels",
                                 "Expanded3DAdjustments", "SepSettingsHSCell"}) {
    EXPECT_FALSE(objc::responds_to(open_page(page), objc::selector<"respring">())) << page;
  }
}

}  // namespace
}  // namespace wispen::testing
