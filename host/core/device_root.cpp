// host/core/device_root.cpp

#include "host/core/device_root.hpp"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <vector>

namespace wispen {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kMarker = ".wispen-root";
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

Result<void> make_empty_file(const std::string& path) {
  const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
  if (fd < 0) return cannot("make the file", path, reason());
  close(fd);
  return {};
}

/// The layout that the marker remembers; nothing where there is no marker.
Result<std::optional<Layout>> remembered_layout(const std::string& root) {
  std::ifstream marker(root + "/" + std::string(kMarker));
  if (!marker) return std::optional<Layout>();
  std::string word;
  marker >> word;
  const auto layout = layout_from_name(word);
  if (!layout) return Error{"'" + root + "' is a device root of a layout that is not known: '" + word + "'"};
  return layout;
}

Result<void> remember_layout(const std::string& root, Layout layout) {
  const std::string path = root + "/" + std::string(kMarker);
  std::ofstream marker(path, std::ios::trunc);
  marker << layout_name(layout) << '\n';
  marker.close();
  if (!marker) return cannot("write", path, reason());
  return {};
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

/// A bound as the kernel's own, so that a loop of links is an error and not a hang.
constexpr int kMaxLinks = 40;

/// Splits a path and pushes its components in reverse, so that the next one is at the back.
void push_components(std::vector<std::string>& pending, std::string_view path) {
  std::vector<std::string> parts;
  while (!path.empty()) {
    const std::size_t slash = path.find('/');
    const std::string_view part = path.substr(0, slash);
    if (!part.empty() && part != ".") parts.emplace_back(part);
    path.remove_prefix(slash == std::string_view::npos ? path.size() : slash + 1);
  }
  pending.insert(pending.end(), parts.rbegin(), parts.rend());
}

}  // namespace

std::string_view layout_name(Layout layout) { return layout == Layout::Rootless ? "rootless" : "rootful"; }

std::optional<Layout> layout_from_name(std::string_view name) {
  if (name == "rootless") return Layout::Rootless;
  if (name == "rootful") return Layout::Rootful;
  return std::nullopt;
}

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
  if (*remembered && layout && **remembered != *layout) {
    return Error{"'" + *path + "' is a device root of the " + std::string(layout_name(**remembered)) +
                 " layout and cannot be used as a " + std::string(layout_name(*layout)) + " one"};
  }
  const Layout chosen = layout.value_or(remembered->value_or(Layout::Rootless));
  if (!*remembered) {
    std::error_code error;
    if (!fs::is_empty(*path, error) || error) {
      return Error{"'" + *path + "' is no device root and is not empty; choose a new or an empty folder"};
    }
    // The marker comes first: a root that was being made when the machine went down is finished next time.
    if (auto done = remember_layout(*path, chosen); !done) return done.error();
  }

  DeviceRoot root(*std::move(path), chosen);
  for (const char* below : kSystemFolders) {
    if (auto made = make_folders(root.path_ + below); !made) return made.error();
  }
  // Some give the phone's /var by the place that it is a link to.
  if (auto made = make_link(root.path_ + "/private/var", "../var"); !made) return made.error();
  const std::string jailbreak = root.jbroot_prefix();
  for (const char* below : kJailbreakFolders) {
    if (auto made = make_folders(jailbreak + below); !made) return made.error();
  }
  for (const char* file : {"/var/lib/dpkg/status", "/var/lib/dpkg/available"}) {
    if (auto made = make_empty_file(jailbreak + file); !made) return made.error();
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

std::string DeviceRoot::notifications_folder() const { return path_ + std::string(kNotifications); }

Result<std::string> DeviceRoot::resolve(std::string_view device_path) const {
  if (device_path.find('\0') != std::string_view::npos) {
    return Error{"a path with a NUL byte in it names nothing"};
  }
  const auto below = [this](std::string_view path) {
    const bool inside = path.starts_with(path_) && (path.size() == path_.size() || path[path_.size()] == '/');
    return inside ? path.substr(path_.size()) : path;
  };

  std::vector<std::string> pending;
  push_components(pending, below(device_path));
  std::string resolved = path_;
  int links = 0;
  while (!pending.empty()) {
    const std::string part = std::move(pending.back());
    pending.pop_back();
    if (part == "..") {
      if (resolved.size() > path_.size()) resolved.erase(resolved.rfind('/'));
      continue;
    }
    const std::size_t parent = resolved.size();
    resolved += '/';
    resolved += part;
    if (resolved.size() >= PATH_MAX) return Error{"the path '" + std::string(device_path) + "' is too long"};

    std::array<char, PATH_MAX> target;
    const ssize_t length = readlink(resolved.c_str(), target.data(), target.size());
    if (length < 0) continue;  // no link, or nothing there yet
    if (++links > kMaxLinks) return Error{"the path '" + std::string(device_path) + "' is a loop of links"};
    const std::string_view link(target.data(), static_cast<std::size_t>(length));
    resolved.resize(link.starts_with('/') ? path_.size() : parent);
    push_components(pending, below(link));
  }
  return resolved;
}

}  // namespace wispen
