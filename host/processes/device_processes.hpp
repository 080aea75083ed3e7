// host/processes/device_processes.hpp: the phone's own processes that a host plays.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/core/device_root.hpp"
#include "host/core/process_table.hpp"
#include "host/core/result.hpp"

namespace wispen {

inline constexpr char kSpringBoard[] = "SpringBoard";
inline constexpr char kBackboardd[] = "backboardd";

/// Where the layout keeps the command that restarts them, on the phone.
std::string killall_path(Layout layout);

/// Copies the stand-ins from `programs` (a folder with SpringBoard, backboardd and killall) to their places
/// on the phone. What is there already, and was not put there by a host, stays, and is an error.
Result<void> install_device_programs(const DeviceRoot& root, const std::string& programs);

/// The home screen and what it depends on: installed, started, watched, and started again when they end. When
/// backboardd ends, SpringBoard is ended too, as on the phone. All of them end with the object, and with this
/// process however it ends. For the thread of the loop, which outlives the object, on the current root.
class DeviceProcesses {
 public:
  struct Options {
    std::string programs;
    std::vector<std::string> home_screen_arguments = {};
    /// Told, on the loop, when one has ended for good: one sentence.
    std::function<void(const std::string& why)> lost = {};
  };
  static Result<std::unique_ptr<DeviceProcesses>> start(MainLoop& loop, const DeviceRoot& root,
                                                        Options options);

  /// Those of that name that live.
  std::vector<pid_t> processes(const std::string& name) const { return table_.processes(name); }

 private:
  DeviceProcesses(MainLoop& loop, std::function<void(const std::string&)> lost);
  void ended(const ProcessEnd& end);

  std::function<void(const std::string&)> lost_;
  ProcessTable table_;
};

}  // namespace wispen
