// host/app/window/window.hpp: the host's screen in a window of the desktop.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/app/host.hpp"
#include "host/core/result.hpp"

namespace wispen {

enum class WindowPlace {
  Centre,
  LeftHalf,
  /// Beside another window, to which it leaves the keyboard.
  RightHalf,
};

struct WindowOptions {
  std::string title = "Wispen";
  /// Those that the toolbar offers; the host's own are the first.
  std::vector<std::string> languages = {};
  WindowPlace place = WindowPlace::Centre;
};

/// Shows what the host's windows show, and brings mouse and keyboard to them. The screen is as large as the
/// window lets it be. A strip above it, and the function keys F2 to F7 (with shift backwards), switch
/// appearance, language, direction, text size, device and orientation in place. Control and Q closes.
///
/// One at a time, on the thread of the host's loop; the host must have a wall clock and outlive it.
class Window {
 public:
  /// Fails, with one sentence, without a display or without the library for windows.
  static Result<std::unique_ptr<Window>> open(Host& host, const WindowOptions& options = {});
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  ~Window();

  /// Runs the host's loop until the window is closed. Fails when the screen cannot be painted.
  Result<void> run();
  /// Ends run().
  void close();

 private:
  struct State;
  explicit Window(std::unique_ptr<State> state);
  std::unique_ptr<State> state_;
};

}  // namespace wispen
