// home_screen/processes/end_named.hpp: ending the processes of a device root by their name.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/core/device_root.hpp"

namespace wispen {

struct KillallRequest {
  int signal = 0;  ///< as kill(2): 0 only asks
  std::vector<std::string> names;
};

/// From the words of a command line without the program's own: names, and before them a signal such as -KILL,
/// -SIGKILL, -9 or -s KILL. Fails with a sentence for everything else.
Result<KillallRequest> killall_request(const std::vector<std::string>& words);

/// Signals every process that a running host of this user started in the root under that name, and gives how
/// many there were. A stranger is never signalled, whatever the records in the root say.
std::size_t signal_named(const DeviceRoot& root, const std::string& name, int signal);

}  // namespace wispen
