// host/foundation/device_paths.hpp: where the paths lead that the bundle hands to the platform.
#pragma once

#include <string>

#include "host/files/system_calls.hpp"

namespace wispen {

/// The host's path of a path that the bundle hands to the platform: every path is the phone's and is looked
/// up below the device root, links and all; a relative one starts at the root. One that lies in a bundle's
/// folder (readable_folder) stays as it is. Without a root nothing is looked up.
std::string host_path(const std::string& path);

/// The same for a path that is written to: no folder is excepted.
std::string host_path_for_writing(const std::string& path);

/// A folder of the machine's that is open to the bundle for reading: its own, wherever it was loaded from.
void add_readable_folder(const std::string& folder);

/// The kernel's calls for such paths: what is opened is found as host_path has it for reading, and below the
/// root for everything else, and no link leads it out while it is being opened.
const files::SystemCalls& device_calls();

}  // namespace wispen
