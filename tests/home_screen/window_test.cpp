// tests/home_screen/window_test.cpp: both windows of `wispen run` on a display of their own, used by its
// events.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>

#include <chrono>
#include <csignal>
#include <filesystem>

#include "host/core/process_record.hpp"
#include "tests/host/app/window/x_server.hpp"
#include "tests/support/temporary_folder.hpp"

namespace wispen::testing {
namespace {

using namespace std::chrono_literals;

/// The program, in a process of its own.
class Running {
 public:
  explicit Running(const std::vector<std::string>& words) {
    std::vector<char*> arguments;
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    if (posix_spawn(&process_, WISPEN_PROGRAM, nullptr, nullptr, arguments.data(), environ) != 0)
      process_ = 0;
  }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;
  ~Running() {
    if (process_ > 0) end(SIGKILL);
  }
  void end(int signal) {
    kill(process_, signal);
    waitpid(process_, nullptr, 0);
    process_ = 0;
  }
  pid_t process() const { return process_; }

 private:
  pid_t process_ = 0;
};

class TwoWindows : public ::testing::Test {
 protected:
  void start(const char* layout) {
    ASSERT_TRUE(server_.running()) << "Xvfb cannot be started: it is one of the packages of tools/setup";
    display_ = XOpenDisplay(nullptr);
    running_ = std::make_unique<Running>(std::vector<std::string>{
        "wispen", "run", "--root", folder_ / "root", "--layout", layout, "--device", "phone-small"});
    ASSERT_GT(running_->process(), 0);
    until([this] { return window_named("Wispen") != 0 && window_named("Home Screen") != 0; });
    root_ = std::make_unique<DeviceRoot>(*DeviceRoot::open(folder_ / "root"));
  }
  void TearDown() override {
    running_.reset();
    if (display_ != nullptr) XCloseDisplay(display_);
  }

  template <class Condition>
  static void until(Condition condition) {
    bool held = condition();
    const auto end = std::chrono::steady_clock::now() + 30s;
    while (!held && std::chrono::steady_clock::now() < end) {
      usleep(5000);
      held = condition();
    }
    EXPECT_TRUE(held);
  }

  /// 0 while it is not shown.
  ::Window window_named(const std::string& wanted) const {
    ::Window root = 0, parent = 0, found = 0;
    ::Window* children = nullptr;
    unsigned count = 0;
    XQueryTree(display_, DefaultRootWindow(display_), &root, &parent, &children, &count);
    for (unsigned i = 0; i < count; ++i) {
      XTextProperty name{};
      XWindowAttributes attributes{};
      if (XGetWMName(display_, children[i], &name) != 0 && name.value != nullptr &&
          wanted == reinterpret_cast<const char*>(name.value) &&
          XGetWindowAttributes(display_, children[i], &attributes) != 0 &&
          attributes.map_state == IsViewable) {
        found = children[i];
      }
      if (name.value != nullptr) XFree(name.value);
    }
    if (children != nullptr) XFree(children);
    return found;
  }
  struct Frame {
    int x, y, width, height;
  };
  Frame frame_of(::Window window) const {
    XWindowAttributes attributes{};
    XGetWindowAttributes(display_, window, &attributes);
    return {attributes.x, attributes.y, attributes.width, attributes.height};
  }
  void click(int x, int y) const {
    XTestFakeMotionEvent(display_, -1, x, y, 0);
    XTestFakeButtonEvent(display_, 1, True, 0);
    XTestFakeButtonEvent(display_, 1, False, 0);
    XSync(display_, False);
  }
  /// In the middle of the page's bar, where "Respring" is, for as long as it takes the button to slide there.
  void click_respring_until(const std::function<bool()>& happened) const {
    const Frame frame = frame_of(window_named("Wispen"));
    constexpr int kToolbar = 30;
    const double scale = frame.width / 375.0;
    const int x = frame.x + frame.width / 2;
    const int y = frame.y + kToolbar + static_cast<int>((20 + 22) * scale);
    auto next = std::chrono::steady_clock::now();
    until([&] {
      if (happened()) return true;
      if (std::chrono::steady_clock::now() >= next) {
        click(x, y);
        next = std::chrono::steady_clock::now() + 2s;
      }
      return false;
    });
  }
  pid_t process(const char* name) const {
    const auto records = read_process_records(*root_, name);
    return records.empty() ? 0 : records.front().process;
  }

  const TemporaryFolder folder_;
  XServer server_;
  Display* display_ = nullptr;
  std::unique_ptr<Running> running_;
  std::unique_ptr<DeviceRoot> root_;
};

/// Windows go while their names are asked for.
int pass_over(Display*, XErrorEvent*) { return 0; }

TEST_F(TwoWindows, StandBesideEachOtherAndRespringRestartsWhatARootlessRootRestarts) {
  XSetErrorHandler(pass_over);
  start("rootless");
  const Frame pages = frame_of(window_named("Wispen"));
  const Frame home = frame_of(window_named("Home Screen"));
  EXPECT_LE(pages.x + pages.width, home.x);
  const pid_t old_home = process("SpringBoard");
  const pid_t old_below = process("backboardd");
  ASSERT_GT(old_home, 0);
  ASSERT_GT(old_below, 0);
  click_respring_until([&] { return process("backboardd") != old_below && process("backboardd") != 0; });
  until([&] { return process("SpringBoard") != 0 && process("SpringBoard") != old_home; });
  // The old window went with its process, so what is there is the new one's.
  until([&] { return look_up_process(old_home) == std::nullopt && window_named("Home Screen") != 0; });
  EXPECT_NE(window_named("Wispen"), 0U);
}

TEST_F(TwoWindows, RespringRestartsTheHomeScreenAloneOnARootfulRoot) {
  XSetErrorHandler(pass_over);
  start("rootful");
  const pid_t old_home = process("SpringBoard");
  const pid_t old_below = process("backboardd");
  ASSERT_GT(old_home, 0);
  click_respring_until([&] { return process("SpringBoard") != old_home && process("SpringBoard") != 0; });
  until([&] { return look_up_process(old_home) == std::nullopt && window_named("Home Screen") != 0; });
  EXPECT_EQ(process("backboardd"), old_below);
}

TEST_F(TwoWindows, ShowAChangeAtOnce) {
  XSetErrorHandler(pass_over);
  start("rootless");
  // Below the icon of the notification there is nothing but its ground.
  const auto ground = [this] {
    const ::Window home = window_named("Home Screen");
    const double scale = frame_of(home).width / 375.0;
    XImage* const image = XGetImage(display_, home, static_cast<int>(35 * scale),
                                    30 + static_cast<int>(104 * scale), 1, 1, AllPlanes, ZPixmap);
    if (image == nullptr) return 0UL;
    const unsigned long value = XGetPixel(image, 0, 0) & 0xFFFFFFU;
    XDestroyImage(image);
    return value;
  };
  const auto is_green = [&] {
    const unsigned long now = ground();
    return ((now >> 8U) & 0xFFU) > ((now >> 16U) & 0xFFU) + 40;
  };
  until(is_green);
  const Running writing({"wispen", "defaults", "write", "enabled", "no", "--root", folder_ / "root"});
  until([&] { return ground() > 0xE00000U; });  // the system's own, which is nearly white
}

TEST_F(TwoWindows, BothGoWhenTheProgramIsKilled) {
  XSetErrorHandler(pass_over);
  start("rootful");
  const pid_t home = process("SpringBoard");
  ASSERT_GT(home, 0);
  running_->end(SIGKILL);
  until([this] { return window_named("Home Screen") == 0 && window_named("Wispen") == 0; });
}

}  // namespace
}  // namespace wispen::testing
