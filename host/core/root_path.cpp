// host/core/root_path.cpp: paths that stay below a folder, whatever links lie there.

#include "host/core/root_path.hpp"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <vector>

namespace wispen {
namespace {

/// A bound as the kernel's own, so that a loop of links is an error and not a hang.
constexpr int kMaxLinks = 40;

/// The part of a path below the root, for one that lies there already.
std::string_view part_below(const std::string& root, std::string_view path) {
  const bool inside = path.starts_with(root) && (path.size() == root.size() || path[root.size()] == '/');
  return inside ? path.substr(root.size()) : path;
}

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

bool has_parent_reference(std::string_view path) {
  for (std::size_t at = path.find(".."); at != std::string_view::npos; at = path.find("..", at + 1)) {
    const bool starts = at == 0 || path[at - 1] == '/';
    const bool ends = at + 2 == path.size() || path[at + 2] == '/';
    if (starts && ends) return true;
  }
  return false;
}

}  // namespace

Result<std::string> resolve_below(const std::string& root, std::string_view path) {
  if (path.find('\0') != std::string_view::npos) return Error{"a path with a NUL byte in it names nothing"};
  std::vector<std::string> pending;
  push_components(pending, part_below(root, path));
  std::string resolved = root;
  int links = 0;
  while (!pending.empty()) {
    const std::string part = std::move(pending.back());
    pending.pop_back();
    if (part == "..") {
      if (resolved.size() > root.size()) resolved.erase(resolved.rfind('/'));
      continue;
    }
    const std::size_t parent = resolved.size();
    resolved += '/';
    resolved += part;
    if (resolved.size() >= PATH_MAX) return Error{"the path '" + std::string(path) + "' is too long"};

    std::array<char, PATH_MAX> target;
    const ssize_t length = readlink(resolved.c_str(), target.data(), target.size());
    if (length < 0) continue;  // no link, or nothing there yet
    if (++links > kMaxLinks) return Error{"the path '" + std::string(path) + "' is a loop of links"};
    const std::string_view link(target.data(), static_cast<std::size_t>(length));
    resolved.resize(link.starts_with('/') ? root.size() : parent);
    push_components(pending, part_below(root, link));
  }
  return resolved;
}

int open_without_links(const char* path, int flags, mode_t mode) {
  static std::atomic<bool> missing = false;
  if (!missing.load(std::memory_order_relaxed)) {
    open_how how{};
    how.flags = static_cast<std::uint64_t>(flags);
    how.mode = (flags & O_CREAT) != 0 ? mode : 0;
    how.resolve = RESOLVE_NO_SYMLINKS;
    const long file = ::syscall(SYS_openat2, AT_FDCWD, path, &how, sizeof how);
    // A sandbox may not know the call either, and says EPERM for what it does not know.
    if (file >= 0 || (errno != ENOSYS && errno != EPERM)) return static_cast<int>(file);
    if (errno == ENOSYS) missing.store(true, std::memory_order_relaxed);
  }
  return ::open(path, flags | O_NOFOLLOW, mode);
}

int open_below(const std::string& root, std::string_view path, int flags, mode_t mode) {
  if (path.find('\0') != std::string_view::npos) {
    errno = ENOENT;
    return -1;
  }
  const std::string_view below = part_below(root, path);
  if (!has_parent_reference(below)) {
    std::string direct = root;
    if (!below.starts_with('/')) direct += '/';
    direct += below;
    const int file = open_without_links(direct.c_str(), flags, mode);
    if (file >= 0 || errno != ELOOP) return file;
  }
  const auto resolved = resolve_below(root, path);
  if (!resolved) {
    errno = ELOOP;
    return -1;
  }
  return open_without_links(resolved->c_str(), flags, mode);
}

}  // namespace wispen
