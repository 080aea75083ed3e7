// host/core/device_root.cpp: a folder that plays the phone's file system.

#include "host/core/device_root.hpp"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "host/core/root_path.hpp"
#include "host/core/unique_fd.hpp"

namespace wispen {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kNotifications = "/var/run/notifications";

// What the phone itself brings, whatever the jailbreak's layout.
constexpr std::array kSystemFolders = {"/var/mobile/Library/Preferences", "/usr/bin", "/tmp",
                                       "/var/run/notifications", "/private"};
// What a jailbreak brings, below its own prefix.
constexpr std::array kJailbreakFolders = {"/var/mobile/Library/Preferences",
                                          "/Library/PreferenceBundles",
                                          "/Library/PreferenceLoader/Preferences",
                                          "/usr/bin",
                                          "/var/lib/dpkg/info",
                                          "/var/lib/dpkg/updates",
                                          "/var/lib/dpkg/triggers"};

std::string reason() { return std::strerror(errno); }

Error cannot(std::string_view what, const std::string& path, const std::string& why) {
  return Error{"cannot " + std::string(what) + " '" + path + "': " + why};
}

Result<void> make_folders(const std::string& path) {
  std::error_code error;
  fs::create_directories(path, error);
  if (error) return cannot("make the folder", path, error.message());
  return {};
}

Result<void> make_link(const std::string& path, const char* target) {
  if (symlink(target, path.c_str()) != 0 && errno != EEXIST) return cannot("make the link", path, reason());
  return {};
}

/// The same below a root, where links of the phone's stay: a rootless jailbreak's own folder may be one.
Result<void> make_folders(const DeviceRoot& root, const std::string& device_path) {
  const auto path = root.resolve(device_path);
  return path ? make_folders(*path) : path.error();
}

Result<void> make_empty_file(const DeviceRoot& root, const std::string& device_path) {
  const UniqueFd file(root.open_file(device_path, O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
  if (!file) return cannot("make the file", root.path() + device_path, reason());
  return {};
}

Error other_layout(const std::string& path, Layout has, Layout wanted) {
  return Error{"'" + path + "' is a device root of the " + std::string(layout_name(has)) +
               " layout and cannot be used as a " + std::string(layout_name(wanted)) + " one"};
}

Result<std::string> made_and_canonical(const std::string& folder) {
  if (folder.empty()) return Error{"the device root has an empty path"};
  struct stat status {};
  if (stat(folder.c_str(), &status) != 0) {
    if (auto made = make_folders(folder); !made) return made.error();
  } else if (!S_ISDIR(status.st_mode)) {
    return Error{"'" + folder + "' cannot be a device root: it is not a folder"};
  }
  std::error_code error;
  std::string path = fs::canonical(folder, error).string();
  if (error) return cannot("open", folder, error.message());
  if (path == "/") return Error{"the machine's own root folder cannot be a device root"};
  return path;
}

}  // namespace

Result<DeviceRoot> DeviceRoot::open(const std::string& folder, std::optional<Layout> layout) {
  auto path = made_and_canonical(folder);
  if (!path) return path.error();
  if (path->size() + kReservedForPaths >= kPathBufferSize) {
    return Error{"the device root's path is too long: " + std::to_string(path->size()) + " bytes, at most " +
                 std::to_string(kPathBufferSize - kReservedForPaths - 1) +
                 " leave room for the paths below it"};
  }
  if (faccessat(AT_FDCWD, path->c_str(), R_OK | W_OK | X_OK, AT_EACCESS) != 0) {
    return Error{"'" + *path + "' cannot be a device root: it cannot be written (" + reason() + ")"};
  }

  const auto remembered = remembered_layout(*path);
  if (!remembered) return remembered.error();
  if (*remembered && layout && **remembered != *layout) return other_layout(*path, **remembered, *layout);
  Layout chosen = remembered->value_or(Layout::Rootless);
  if (!*remembered) {
    // The marker comes first: a root that was being made when the machine went down is finished next time.
    const auto decided = remember_layout(*path, layout);
    if (!decided) return decided.error();
    chosen = *decided;
    if (layout && chosen != *layout) return other_layout(*path, chosen, *layout);
  }

  DeviceRoot root(*std::move(path), chosen);
  for (const char* below : kSystemFolders) {
    if (auto made = make_folders(root, below); !made) return made.error();
  }
  // Some give the phone's /var by the place that it is a link to.
  if (auto made = make_link(root.resolve_or_nowhere("/private") + "/var", "../var"); !made) {
    return made.error();
  }
  const std::string jailbreak(root.device_jbroot());
  for (const char* below : kJailbreakFolders) {
    if (auto made = make_folders(root, jailbreak + below); !made) return made.error();
  }
  for (const char* file : {"/var/lib/dpkg/status", "/var/lib/dpkg/available"}) {
    if (auto made = make_empty_file(root, jailbreak + file); !made) return made.error();
  }
  return root;
}

Result<DeviceRoot> DeviceRoot::around(const std::string& file) {
  std::error_code error;
  fs::path folder = fs::canonical(file, error);
  while (!error && folder.has_relative_path()) {
    folder = folder.parent_path();
    const auto layout = remembered_layout(folder.string());
    if (!layout) return layout.error();
    if (*layout) return DeviceRoot(folder.string(), **layout);
  }
  return Error{"'" + file + "' lies in no device root"};
}

Result<std::string> DeviceRoot::default_folder() {
  // A relative XDG_DATA_HOME counts as unset, as XDG has it.
  if (const char* data = std::getenv("XDG_DATA_HOME"); data && data[0] == '/') {
    return std::string(data) + "/wispen/root";
  }
  const char* home = std::getenv("HOME");
  if (!home || home[0] != '/') {
    const passwd* account = getpwuid(geteuid());
    home = account ? account->pw_dir : nullptr;
  }
  if (!home || home[0] != '/') return Error{"there is no home folder to keep a device root in; name one"};
  return std::string(home) + "/.local/share/wispen/root";
}

std::string DeviceRoot::jbroot_prefix() const { return path_ + std::string(device_jbroot()); }

std::string DeviceRoot::notifications_folder() const { return resolve_or_nowhere(kNotifications); }

Result<std::string> DeviceRoot::resolve(std::string_view device_path) const {
  return resolve_below(path_, device_path);
}

std::string DeviceRoot::resolve_or_nowhere(std::string_view device_path) const {
  auto path = resolve(device_path);
  return path ? *std::move(path) : std::string(kNowhere);
}

int DeviceRoot::open_file(std::string_view device_path, int flags, mode_t mode) const {
  return open_below(path_, device_path, flags, mode);
}

}  // namespace wispen
