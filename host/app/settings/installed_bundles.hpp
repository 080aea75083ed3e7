// host/app/settings/installed_bundles.hpp: the bundles that a device root has installed.
#pragma once

#include <vector>

#include "host/app/settings/front_page.hpp"
#include "host/core/device_root.hpp"

namespace wispen {

/// The entries below Library/PreferenceLoader/Preferences of the root's jailbreak, by label. An entry names
/// its bundle in Library/PreferenceBundles; one that cannot be read, or whose bundle is missing, is reported
/// as a problem and left out.
std::vector<BundleEntry> installed_bundles(const DeviceRoot& root);

}  // namespace wispen
