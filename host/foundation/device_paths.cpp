// host/foundation/device_paths.cpp: where the paths lead that the bundle hands to the platform.

#include "host/foundation/device_paths.hpp"

#include <fcntl.h>

#include <mutex>
#include <set>
#include <shared_mutex>
#include <string_view>

#include "host/core/current_root.hpp"

namespace wispen {

namespace {

struct ReadableFolders {
  std::shared_mutex mutex;
  std::set<std::string, std::less<>> folders;
};

ReadableFolders& readable() {
  static auto* const instance = new ReadableFolders();
  return *instance;
}

bool is_readable(std::string_view path) {
  if (path.find("/../") != std::string_view::npos || path.ends_with("/..")) return false;
  ReadableFolders& known = readable();
  const std::shared_lock lock(known.mutex);
  if (known.folders.contains(path)) return true;
  for (std::size_t slash = path.rfind('/'); slash != std::string_view::npos && slash > 0;
       slash = path.rfind('/', slash - 1)) {
    if (known.folders.contains(path.substr(0, slash))) return true;
  }
  return false;
}

bool is_below(const DeviceRoot& root, std::string_view path) {
  return path.starts_with(root.path()) &&
         (path.size() == root.path().size() || path[root.path().size()] == '/');
}

int open_on_device(int folder, const char* path, int flags, mode_t mode) {
  const files::SystemCalls& real = files::SystemCalls::real();
  // Below a folder that is open already there is one name, and its caller says what a link there means.
  if (folder != AT_FDCWD) return real.openat(folder, path, flags, mode);
  const auto root = current_root();
  if (!root) return real.openat(folder, path, flags, mode);
  const bool reads = (flags & (O_ACCMODE | O_CREAT | O_DIRECTORY)) == O_RDONLY;
  if (reads && !is_below(*root, path) && is_readable(path)) return real.openat(folder, path, flags, mode);
  return root->open_file(path, flags, mode);
}

}  // namespace

std::string host_path(const std::string& path) {
  const auto root = current_root();
  if (!root || (!is_below(*root, path) && is_readable(path))) return path;
  return root->resolve_or_nowhere(path);
}

std::string host_path_for_writing(const std::string& path) {
  const auto root = current_root();
  return root ? root->resolve_or_nowhere(path) : path;
}

void add_readable_folder(const std::string& folder) {
  ReadableFolders& known = readable();
  const std::unique_lock lock(known.mutex);
  known.folders.insert(folder);
}

const files::SystemCalls& device_calls() {
  static const files::SystemCalls calls = [] {
    files::SystemCalls all = files::SystemCalls::real();
    all.openat = open_on_device;
    return all;
  }();
  return calls;
}

}  // namespace wispen
