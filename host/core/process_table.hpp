// host/core/process_table.hpp: the named processes that a device would have, e.g. its home screen.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/core/main_loop.hpp"
#include "host/core/process_record.hpp"
#include "host/core/result.hpp"
#include "host/core/unique_fd.hpp"

namespace wispen {

enum class WhenItEnds {
  Forget,
  /// As the phone's system does with its own processes: it is started again, unless it has just been
  /// started `kMaxQuickRestarts` times in a row without living for `kQuick`. One that was asked to end, by
  /// SIGTERM, is started again however short it lived.
  StartAgain,
};

/// The end of a process that was not asked of the table by stop().
struct ProcessEnd {
  std::string name;
  std::optional<pid_t> again;  ///< the process that took its place
  std::string why_not;         ///< one sentence, where one was to take its place and none did
};

/// Processes started from the device root by name. Only these are ever signalled, each through a handle of
/// its own, so that a recycled process id can never hit a stranger. Each has a record in the device root
/// (process_record.hpp), by which a `killall` of the root finds it. Ends are noticed on the main loop, which
/// must outlive the table; all functions are for the loop's thread.
class ProcessTable {
 public:
  static constexpr int kMaxQuickRestarts = 5;
  static constexpr std::chrono::milliseconds kQuick{1000};

  explicit ProcessTable(MainLoop& loop) : loop_(loop) {}
  ProcessTable(const ProcessTable&) = delete;
  ProcessTable& operator=(const ProcessTable&) = delete;
  /// As stop() with the default bound.
  ~ProcessTable();

  /// Starts the program at `path` on the phone under `name`. Several may share a name. `arguments` does not
  /// hold the name of the program, which is `name`; `environment` holds "KEY=value" words and is all there
  /// is.
  Result<pid_t> start(const std::string& name, const std::string& path,
                      std::vector<std::string> arguments = {}, std::vector<std::string> environment = {},
                      WhenItEnds when_it_ends = WhenItEnds::Forget);

  /// Sends `signal` to every process of that name and gives how many there were.
  std::size_t end_by_name(const std::string& name, int signal);

  /// The processes of that name that live, in the order in which they were started.
  std::vector<pid_t> processes(const std::string& name) const;
  std::size_t size() const { return entries_.size(); }

  /// Called on the loop after each end.
  void set_observer(std::function<void(const ProcessEnd&)> observer) { observer_ = std::move(observer); }

  /// Ends all: politely, and after `bound` of real time for good. None is started again, none is left.
  void stop(std::chrono::milliseconds bound = std::chrono::seconds(2));

 private:
  struct Entry {
    std::string name;
    std::string path;
    std::vector<std::string> arguments;
    std::vector<std::string> environment;
    WhenItEnds when_it_ends = WhenItEnds::Forget;
    pid_t process = 0;
    UniqueFd handle;
    ProcessRecordFile record;
    WatchId watch = 0;
    Nanoseconds started{};
    int quick_restarts = 0;
  };

  Result<void> launch(std::size_t number, Entry& entry);
  void ended(std::size_t number);

  MainLoop& loop_;
  std::map<std::size_t, Entry> entries_;  // by number of start
  std::size_t next_ = 1;
  std::function<void(const ProcessEnd&)> observer_;
};

}  // namespace wispen
