// host/foundation/device_paths.cpp: which paths are the phone's.

#include "host/foundation/device_paths.hpp"

#include "host/core/current_root.hpp"

namespace wispen {

std::string host_path(const std::string& path) {
  for (const char* const folder :
       {"/var/mobile/", "/var/jb/", "/private/var/", "/Library/", "/Applications/"}) {
    if (!path.starts_with(folder)) continue;
    const auto root = current_root();
    if (!root || path.starts_with(root->path() + "/")) return path;
    const auto resolved = root->resolve(path);
    return resolved ? *resolved : path;
  }
  return path;
}

}  // namespace wispen
