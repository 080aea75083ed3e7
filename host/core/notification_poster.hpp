// host/core/notification_poster.hpp: telling other processes that something happened, by name.
#pragma once

#include <sys/types.h>

#include <array>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>

#include "host/core/result.hpp"
#include "host/core/unique_fd.hpp"

namespace wispen {

/// Posts named notifications without a payload, as files of one folder: a post appends one byte, so that
/// a file's size counts the posts, and the kernel tells whoever watches the folder. A post never waits
/// for a listener. From any thread.
class NotificationPoster {
 public:
  /// The file of a name holds at most about this much of the disk: what was counted long ago is punched
  /// out of it, and its size goes on growing. (A size that only grows can never be mistaken for an
  /// earlier one, as it could if the file were cut back.)
  static constexpr std::int64_t kMaxStored = 1 << 20;

  /// In a folder that exists, as DeviceRoot::notifications_folder() does.
  explicit NotificationPoster(std::string folder) : folder_(std::move(folder)) {}

  const std::string& folder() const { return folder_; }

  /// Fails where the folder cannot be written or the disk is full.
  Result<void> post(std::string_view name);

 private:
  struct File {
    std::string name;
    UniqueFd fd;
    std::uint64_t used = 0;
    bool can_punch = true;
  };

  Result<File*> file_of(std::string_view name);

  const std::string folder_;
  std::mutex mutex_;
  std::array<File, 16> files_;
  std::uint64_t uses_ = 0;
};

/// Posts in the current device root; fails when there is none.
Result<void> post_notification(std::string_view name);

}  // namespace wispen
