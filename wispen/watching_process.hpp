// wispen/watching_process.hpp: another process that listens.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace wispen::program {

/// This program again, as `wispen notify watch`, in a process of its own.
class WatchingProcess {
 public:
  /// Starts it on a device root and returns when it is listening; nothing where it cannot be started. An
  /// empty name is every name.
  static std::optional<WatchingProcess> start(const std::string& root, const std::string& name,
                                              unsigned long long posts, double timeout);
  WatchingProcess(WatchingProcess&& other) noexcept;
  WatchingProcess& operator=(WatchingProcess&&) = delete;
  /// Ends the process if it has not ended.
  ~WatchingProcess();

  pid_t pid() const { return pid_; }
  /// The lines that it printed, when it has ended by itself.
  std::vector<std::string> finish();

 private:
  WatchingProcess(pid_t pid, int output) : pid_(pid), output_(output) {}

  pid_t pid_;
  int output_;
};

}  // namespace wispen::program
