// host/processes/end_with_host.hpp: a process of a device ends when its host does.
#pragma once

namespace wispen {

/// The variable that tells a process of the device which process its host is.
inline constexpr char kHostProcessVariable[] = "WISPEN_HOST_PROCESS";

/// From now on this process ends with the host that the variable names, however that one ends; at once where
/// it has ended already. Without the variable nothing happens: a person started the program.
void end_with_host();

}  // namespace wispen
