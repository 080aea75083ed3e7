// host/core/device_root.hpp: a folder that plays the phone's file system.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>

#include "host/core/result.hpp"
#include "host/core/root_marker.hpp"

namespace wispen {

/// A folder that plays the phone's file system for one layout. Immutable; copies name the same folder.
class DeviceRoot {
 public:
  /// The platform's path buffers hold 1024 bytes with the terminator, and too long a path is cut
  /// without a word. So a root's own path leaves this much room for the longest path below it.
  static constexpr std::size_t kPathBufferSize = 1024;
  static constexpr std::size_t kReservedForPaths = 128;

  /// Opens `folder`, making it and the phone's folders in it on first use. Without a layout the root
  /// keeps the one it was made with; a new one becomes rootless. Fails, with a sentence for a person,
  /// for a folder of another layout, a non-empty folder that is not a device root, one that cannot be
  /// written, and a path that leaves too little room in the platform's buffers.
  static Result<DeviceRoot> open(const std::string& folder, std::optional<Layout> layout = std::nullopt);

  /// The device root that a file lies in, for the programs that run in one: the nearest folder above it that
  /// was opened as one before. Nothing is made.
  static Result<DeviceRoot> around(const std::string& file);

  /// $XDG_DATA_HOME/wispen/root, else ~/.local/share/wispen/root. Only computed, nothing is made.
  static Result<std::string> default_folder();

  /// The folder's absolute path without links or a trailing slash.
  const std::string& path() const { return path_; }
  Layout layout() const { return layout_; }

  /// The host path of the jailbreak's tree: path() + "/var/jb", or path() itself.
  std::string jbroot_prefix() const;
  /// The same as the phone sees it: "/var/jb", or "".
  std::string_view device_jbroot() const { return layout_ == Layout::Rootless ? "/var/jb" : ""; }
  /// The folder that holds the named notifications.
  std::string notifications_folder() const;

  /// The host path of a path on the phone. Links are followed as the phone would follow them: ".." and
  /// absolute links stay below the root. What does not exist yet is appended as written. A path that
  /// lies below path() already, as the root-path conversion makes them, keeps its place; a relative
  /// one starts at the root. Fails for an embedded NUL, a loop of links and a path over 4095 bytes.
  Result<std::string> resolve(std::string_view device_path) const;
  /// The same for who cannot pass an error on: where it fails, a place where nothing can be made.
  std::string resolve_or_nowhere(std::string_view device_path) const;
  /// open(2) of such a path: the descriptor, or -1 and errno. No link leads it out of the root.
  int open_file(std::string_view device_path, int flags, mode_t mode = 0) const;

  /// The kernel refuses every new name here, to every user.
  static constexpr const char* kNowhere = "/proc/no-device-root";

 private:
  DeviceRoot(std::string path, Layout layout) : path_(std::move(path)), layout_(layout) {}

  std::string path_;
  Layout layout_;
};

}  // namespace wispen
