// host/foundation/device_paths.hpp: which paths are the phone's.
#pragma once

#include <string>

namespace wispen {

/// The host's path of a path that the bundle hands to the platform: one that begins like the phone's own
/// folders (/var/mobile, /var/jb, /private/var, /Library, /Applications) is looked up below the device root;
/// any other, and one that lies below the root already, stays as it is.
std::string host_path(const std::string& path);

}  // namespace wispen
