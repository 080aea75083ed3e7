// host/core/notification_listener.hpp: hearing what other processes post.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
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
  /// A name's file as it was when it was last reported.
  struct Entry {
    std::string name;
    ino_t inode = 0;
    std::int64_t size = 0;
    UniqueFd fd = {};

    void forget_file() { *this = Entry{std::move(name)}; }
  };
  /// Lets the map be asked with what the kernel's buffer holds, without making a string of it.
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
  };

  NotificationListener(UniqueFd events, UniqueFd directory)
      : events_(std::move(events)), directory_(std::move(directory)) {}

  bool look(const char* file, Entry& now) const;
  void note(const char* file, Entry& entry, std::vector<Notice>& notices) const;
  void note_events(const char* buffer, std::size_t length, std::vector<Notice>& notices);
  void rescan(std::vector<Notice>& notices);
  void set_blocking(bool blocking);
  Entry* entry_of(std::string_view file);

  UniqueFd events_;
  UniqueFd directory_;
  bool selective_ = false;
  bool blocking_ = false;
  std::unordered_map<std::string, Entry, Hash, std::equal_to<>> entries_;  // by file name
};

}  // namespace wispen
