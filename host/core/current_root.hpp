// host/core/current_root.hpp: the device root that this process stands on.
#pragma once

#include <memory>

#include "host/core/device_root.hpp"

namespace wispen {

/// The root set last, or null before the first start and after a stop. From any thread.
std::shared_ptr<const DeviceRoot> current_root();

/// Makes `root` the process's root; null for none. From any thread.
void set_current_root(std::shared_ptr<const DeviceRoot> root);

}  // namespace wispen

extern "C" {

/// The host path that stands for the phone's "/". Stays readable for the life of the process, also
/// after another root was set. While no root is set it is a place where nothing can exist or be
/// made, so that no path ever falls through to the machine's own folders.
[[gnu::visibility("default")]] const char* wispen_host_root_prefix();

/// The same for the jailbreak's tree.
[[gnu::visibility("default")]] const char* wispen_host_jbroot_prefix();
}
