// wispen/package/installer.hpp: packages in device roots, through the real dpkg and the root's own database.
#pragma once

#include <string>

#include "host/core/device_root.hpp"
#include "host/core/result.hpp"

namespace wispen::package {

/// Installs the package file into the root, or upgrades (or downgrades) what is there. Nothing is touched,
/// and an error says why, where the package is not clean (check_tree), is of another layout, or would take
/// the place of a file that no package brought. The machine's own package database is never opened.
Result<void> install(const DeviceRoot& root, const std::string& file);

/// The same where nothing, or an older version, is installed; otherwise nothing happens. Whether it was done.
Result<bool> install_when_newer(const DeviceRoot& root, const std::string& file);

/// Removes what the installed package brought. Files of others stay, also in its folders.
Result<void> remove(const DeviceRoot& root);

/// The installed version; "" where the package is not installed.
Result<std::string> installed_version(const DeviceRoot& root);

/// The package of the layout with the desktop's code in that folder.
Result<std::string> desktop_package(const std::string& folder, Layout layout);

}  // namespace wispen::package
