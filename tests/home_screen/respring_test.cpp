// tests/home_screen/respring_test.cpp: "Respring" on the real page restarts the real home screen.

#include <csignal>
#include <fstream>
#include <iterator>
#include <vector>

#include "host/core/process_record.hpp"
#include "platform/CoreFoundation.hpp"
#include "tests/support/page_fixture.hpp"

namespace wispen::testing {
namespace {

/// On a wall clock, for other processes live on that.
class RespringOf : public PageTest {
 protected:
  using PageTest::PageTest;

  void SetUp() override {
    wispen_host_options options{};
    options.size = sizeof options;
    const std::string root = folder_ / "root";
    options.root = root.c_str();
    options.layout = layout_;
    options.wall_clock = 1;
    ASSERT_EQ(wispen_host_start(&options), 1) << wispen_host_last_error();
    ASSERT_EQ(wispen_host_offer_bundle(WISPEN_TEST_BUNDLE), 1) << wispen_host_last_error();
    ASSERT_EQ(wispen_host_show_page("root"), 1) << wispen_host_last_error();
    ASSERT_EQ(wispen_host_run_for(1.3), 1);  // until the button has slid into its place
  }
  void start_processes() {
    const std::string root = folder_ / "root";
    const std::string file = picture();
    const std::vector<const char*> words{"--root",           root.c_str(), "--bundle",
                                         WISPEN_TEST_BUNDLE, "--picture",  file.c_str(),
                                         "--scale",          "0.5",        nullptr};
    ASSERT_EQ(wispen_host_start_processes(nullptr, words.data(), nullptr, nullptr), 1)
        << wispen_host_last_error();
    until([this] { return std::filesystem::exists(picture()); });
  }
  std::string picture() const { return folder_ / "home.png"; }
  std::string painted() const {
    std::ifstream file(picture(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }
  static pid_t home() { return wispen_host_process("SpringBoard"); }
  static pid_t below() { return wispen_host_process("backboardd"); }

  template <class Condition>
  static void until(Condition condition) {
    bool held = condition();
    for (int i = 0; i < 2000 && !held; ++i) {
      ASSERT_EQ(wispen_host_run_for(0.01), 1);
      held = condition();
    }
    EXPECT_TRUE(held);
  }
  void tap_respring() {
    const auto view = search(tree(), [](const Json& each) {
      return each["class"] == "UIButton" && each.value("text", "") == "Respring";
    });
    ASSERT_TRUE(view);
    const Json& frame = (*view)["frame"];
    const double x = frame[0].get<double>() + frame[2].get<double>() / 2;
    const double y = frame[1].get<double>() + frame[3].get<double>() / 2;
    ASSERT_EQ(wispen_host_touch(WISPEN_HOST_TOUCH_BEGAN, x, y), 1);
    ASSERT_EQ(wispen_host_touch(WISPEN_HOST_TOUCH_ENDED, x, y), 1);
  }
};

class RespringOfARootlessRoot : public RespringOf {
 protected:
  RespringOfARootlessRoot() : RespringOf("rootless") {}
};
class RespringOfARootfulRoot : public RespringOf {
 protected:
  RespringOfARootfulRoot() : RespringOf("rootful") {}
};

class HomeScreenPicture : public RespringOf {
 protected:
  HomeScreenPicture() : RespringOf("rootless") {}
};

// An answer too many would be taken for the next request's, and an old picture for a new one.
TEST_F(HomeScreenPicture, IsAnsweredForOnceAtTheStartAndOnceARequest) {
  int answers = 0;
  ASSERT_NE(wispen_host_listen(
                "wispen.home-screen.painted",
                [](const char*, unsigned long long, void* count) { ++*static_cast<int*>(count); }, &answers),
            0);
  start_processes();
  until([&] { return answers == 1; });
  const char* const domain =
      wispen_host_jailbreak_path("/var/mobile/Library/Preferences/com.m0rrow5.vitrelle3dtouch.plist");
  ASSERT_NE(domain, nullptr);
  const std::string file = domain;
  std::filesystem::create_directories(std::filesystem::path(file).parent_path());
  for (const int before : {1, 2}) {
    const std::string old = painted();
    std::ofstream(file) << "<plist version=\"1.0\"><dict><key>enabled</key>"
                        << (before == 1 ? "<false/>" : "<true/>") << "</dict></plist>";
    CFNotificationCenterPostNotification(CFNotificationCenterGetDarwinNotifyCenter(),
                                         "wispen.home-screen.paint"_ns, nullptr, NSDictionary(), true);
    until([&] { return answers > before; });
    EXPECT_EQ(answers, before + 1);
    EXPECT_NE(painted(), old);
  }
}

TEST_F(RespringOfARootlessRoot, RestartsBackboarddAndTheHomeScreenWithIt) {
  start_processes();
  const pid_t old_home = home();
  const pid_t old_below = below();
  ASSERT_GT(old_home, 0);
  ASSERT_GT(old_below, 0);
  std::filesystem::remove(picture());
  tap_respring();
  until([&] { return home() > 0 && home() != old_home && below() > 0 && below() != old_below; });
  EXPECT_NE(kill(old_home, 0), 0);
  until([this] { return std::filesystem::exists(picture()); });  // and it shows something again
}

TEST_F(RespringOfARootfulRoot, RestartsTheHomeScreenAlone) {
  start_processes();
  const pid_t old_home = home();
  const pid_t old_below = below();
  ASSERT_GT(old_home, 0);
  std::filesystem::remove(picture());
  tap_respring();
  until([&] { return home() > 0 && home() != old_home; });
  until([this] { return std::filesystem::exists(picture()); });
  EXPECT_EQ(below(), old_below);
}

TEST_F(RespringOfARootlessRoot, DoesNothingAtOnceWhereThereIsNoCommand) {
  start_processes();
  std::filesystem::remove(device_path("/var/jb/usr/bin/killall"));
  const pid_t old_home = home();
  const pid_t old_below = below();
  const double before = wispen_host_now();
  tap_respring();
  EXPECT_LT(wispen_host_now() - before, 1);
  ASSERT_EQ(wispen_host_run_for(0.1), 1);
  EXPECT_EQ(home(), old_home);
  EXPECT_EQ(below(), old_below);
}

TEST_F(RespringOfARootlessRoot, IsNotNeededForAValueToBeSeen) {
  start_processes();
  const std::string usual = painted();
  const auto page = open_page("WispRootListController");
  const auto row = objc::send<"specifierForID:", PSSpecifier>(page, "enabled"_ns);
  ASSERT_TRUE(row);
  row.performSetterWithValue(NSNumber::numberWithBool(false));
  until([&] { return painted() != usual; });
  const std::string plain = painted();
  row.performSetterWithValue(NSNumber::numberWithBool(true));
  until([&] { return painted() == usual; });
  EXPECT_NE(plain, usual);
}

}  // namespace
}  // namespace wispen::testing
