// host/core/notification_listener.hpp: hearing what other processes post.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/core/clock.hpp"
#include "host/core/result.hpp"
#include "host/core/unique_fd.hpp"

namespace wispen {

/// One name that was posted since it was last reported.
struct Notice {
  std::string name;
  std::uint64_t posts = 0;  ///< at least 1

  bool operator==(const Notice&) const = default;
};

/// Hears posts made in one folder after it was opened. Posts of a name may coalesce, so that a slow
/// listener costs nobody memory; the last one is always reported. For one thread at a time.
class NotificationListener {
 public:
  /// For the given names, or without any for all. Fails where the kernel has no more watches to give, or
  /// the folder is not there.
  static Result<NotificationListener> open(const std::string& folder,
                                           const std::vector<std::string>& names = {});

  /// Becomes readable when there may be something to read.
  int fd() const { return events_.get(); }

  /// What was posted since the last call, in the order in which it was noticed; nothing, at once, when
  /// there is nothing. A spurious empty answer is possible.
  std::vector<Notice> read();

  /// Waits for the first notices, at most `timeout` of real time (for ever without one).
  std::vector<Notice> wait(std::optional<Nanoseconds> timeout = std::nullopt);

 private:
  /// What a file looked like when it was last reported.
  struct Seen {
    std::int64_t size = 0;
    std::int64_t changed = 0;  // modification time, in ns
  };

  NotificationListener(std::string folder, UniqueFd events, UniqueFd directory)
      : folder_(std::move(folder)), events_(std::move(events)), directory_(std::move(directory)) {}

  std::optional<Seen> look(const char* file) const;
  void note(const std::string& file, bool events_lost, std::vector<Notice>& notices);
  void rescan(std::vector<Notice>* notices);

  std::string folder_;
  UniqueFd events_;
  UniqueFd directory_;
  std::unordered_map<std::string, std::string> wanted_;  // file name to name; empty for all
  std::unordered_map<std::string, Seen> seen_;
};

}  // namespace wispen
