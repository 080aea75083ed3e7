// tests/host/app/window/x_server.hpp: a display of the test's own, and a hand on its mouse and keyboard.
#pragma once

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace wispen::testing {

/// Runs while the object lives. DISPLAY names it, and no other display is known meanwhile.
class XServer {
 public:
  XServer() {
    std::array<int, 2> channel{};
    if (pipe(channel.data()) != 0) return;
    const std::string number = std::to_string(channel[1]);
    const std::array<const char*, 9> words{"Xvfb",         "-displayfd", number.c_str(), "-screen", "0",
                                           "1100x1000x24", "-nolisten",  "tcp",          nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclose(&actions, channel[0]);
    const bool spawned =
        posix_spawnp(&process_, words[0], &actions, nullptr, const_cast<char**>(words.data()), environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    close(channel[1]);
    if (!spawned) process_ = 0;
    std::string number_text;
    char digit = 0;
    while (spawned && read(channel[0], &digit, 1) == 1 && digit != '\n') number_text += digit;
    close(channel[0]);
    if (number_text.empty()) return;
    name_ = ":" + number_text;
    setenv("DISPLAY", name_.c_str(), 1);
    unsetenv("WAYLAND_DISPLAY");
  }
  XServer(const XServer&) = delete;
  XServer& operator=(const XServer&) = delete;
  ~XServer() {
    unsetenv("DISPLAY");
    if (process_ == 0) return;
    kill(process_, SIGTERM);
    waitpid(process_, nullptr, 0);
  }
  bool running() const { return !name_.empty(); }

 private:
  pid_t process_ = 0;
  std::string name_;
};

/// Sends real events to the one window of the display.
class XHand {
 public:
  XHand() : display_(XOpenDisplay(nullptr)) {
    ::Window root = 0, parent = 0;
    ::Window* children = nullptr;
    unsigned count = 0;
    XQueryTree(display_.get(), DefaultRootWindow(display_.get()), &root, &parent, &children, &count);
    for (unsigned i = 0; i < count; ++i) {
      XWindowAttributes attributes;
      XGetWindowAttributes(display_.get(), children[i], &attributes);
      if (attributes.map_state == IsViewable && attributes.width > 100) window_ = children[i];
    }
    if (children != nullptr) XFree(children);
    // Without a window manager nobody else gives it the keyboard.
    XSetInputFocus(display_.get(), window_, RevertToParent, CurrentTime);
    XSync(display_.get(), False);
  }

  /// Places are pixels of the window.
  void move(double x, double y) const {
    int left = 0, top = 0;
    ::Window child = 0;
    XTranslateCoordinates(display_.get(), window_, DefaultRootWindow(display_.get()), 0, 0, &left, &top,
                          &child);
    XTestFakeMotionEvent(display_.get(), -1, left + static_cast<int>(x), top + static_cast<int>(y), 0);
    XSync(display_.get(), False);
  }
  void button(unsigned number, bool down) const {
    XTestFakeButtonEvent(display_.get(), number, down ? True : False, 0);
    XSync(display_.get(), False);
  }
  void click(double x, double y, unsigned number = 1) const {
    move(x, y);
    button(number, true);
    button(number, false);
  }
  /// A key, while another is held down if one is named.
  void press(KeySym key, KeySym held = NoSymbol) const {
    const KeyCode code = XKeysymToKeycode(display_.get(), key);
    const KeyCode holding = held != NoSymbol ? XKeysymToKeycode(display_.get(), held) : KeyCode{0};
    if (holding != 0) XTestFakeKeyEvent(display_.get(), holding, True, 0);
    XTestFakeKeyEvent(display_.get(), code, True, 0);
    XTestFakeKeyEvent(display_.get(), code, False, 0);
    if (holding != 0) XTestFakeKeyEvent(display_.get(), holding, False, 0);
    XSync(display_.get(), False);
  }
  void type(const std::string& letters) const {
    for (const char letter : letters) press(static_cast<KeySym>(letter));
  }
  void resize(unsigned width, unsigned height) const {
    XResizeWindow(display_.get(), window_, width, height);
    XSync(display_.get(), False);
  }
  std::array<int, 2> size() const {
    XWindowAttributes attributes;
    XGetWindowAttributes(display_.get(), window_, &attributes);
    return {attributes.width, attributes.height};
  }
  /// 0xRRGGBB of what the display shows there.
  std::uint32_t pixel(double x, double y) const {
    XImage* const image = XGetImage(display_.get(), window_, static_cast<int>(x), static_cast<int>(y), 1, 1,
                                    AllPlanes, ZPixmap);
    if (image == nullptr) return 0xDEAD0000;
    const auto value = static_cast<std::uint32_t>(XGetPixel(image, 0, 0) & 0xFFFFFF);
    XDestroyImage(image);
    return value;
  }

 private:
  struct Close {
    void operator()(Display* display) const { XCloseDisplay(display); }
  };
  std::unique_ptr<Display, Close> display_;
  ::Window window_ = 0;
};

}  // namespace wispen::testing
