// host/core/spawn.cpp: starting programs of the device root, and reaping them one by one.

#include "host/core/spawn.hpp"

#include <spawn.h>
#include <sys/wait.h>

#include <cerrno>
#include <csignal>
#include <map>
#include <mutex>
#include <optional>

#include "host/core/current_root.hpp"

namespace wispen {
namespace {

constexpr int kPhoneNoHang = 1;
constexpr int kPhoneUntraced = 2;
constexpr int kPhoneExited = 4;

/// Ended children whose status nobody asked for yet are remembered up to this many.
constexpr std::size_t kMaxRemembered = 256;

/// The children started through the platform's door. Those that ended are collected when the next one starts,
/// and their statuses kept: children that are never waited for do not pile up, and can still be waited for
/// later. Those that ended since the last start stay zombies until then.
class Children {
 public:
  void add(pid_t process) {
    const std::lock_guard lock(mutex_);
    collect();
    statuses_[process].reset();
  }

  bool knows(pid_t process) {
    const std::lock_guard lock(mutex_);
    return statuses_.contains(process);
  }

  /// The status of a child that was collected; it is forgotten with this answer.
  std::optional<int> take(pid_t process) {
    const std::lock_guard lock(mutex_);
    const auto found = statuses_.find(process);
    if (found == statuses_.end() || !found->second) return std::nullopt;
    const int status = *found->second;
    statuses_.erase(found);
    return status;
  }

  void forget(pid_t process) {
    const std::lock_guard lock(mutex_);
    statuses_.erase(process);
  }

 private:
  void collect() {
    std::size_t ended = 0;
    for (auto child = statuses_.begin(); child != statuses_.end();) {
      int status = 0;
      if (!child->second && reap(child->first, &status, WNOHANG) == child->first) child->second = status;
      const bool drop = child->second && ++ended > kMaxRemembered;
      child = drop ? statuses_.erase(child) : std::next(child);
    }
  }

  std::mutex mutex_;
  std::map<pid_t, std::optional<int>> statuses_;
};

Children& children() {
  static Children instance;
  return instance;
}

}  // namespace

pid_t reap(pid_t process, int* status, int options) {
  pid_t result = 0;
  do {
    result = waitpid(process, status, options);
  } while (result < 0 && errno == EINTR);
  return result;
}

int spawn_below_root(pid_t* process, const char* path, char* const argv[], char* const environment[]) {
  const auto root = current_root();
  if (!root || !path || !*path) return ENOENT;
  const auto file = root->resolve(path);
  if (!file) return ENOENT;

  posix_spawnattr_t attributes;
  posix_spawn_file_actions_t actions;
  if (int error = posix_spawnattr_init(&attributes)) return error;
  if (int error = posix_spawn_file_actions_init(&actions)) {
    posix_spawnattr_destroy(&attributes);
    return error;
  }
  // Libraries of the window or of the object layer open descriptors without the close-on-exec flag, and
  // threads of theirs block signals; a program of the phone must see neither.
  sigset_t none;
  sigset_t all;
  sigemptyset(&none);
  sigfillset(&all);
  posix_spawn_file_actions_addclosefrom_np(&actions, 3);
  posix_spawnattr_setsigmask(&attributes, &none);
  posix_spawnattr_setsigdefault(&attributes, &all);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);

  char* const nothing[] = {nullptr};
  pid_t started = 0;
  const int error =
      posix_spawn(&started, file->c_str(), &actions, &attributes, argv, environment ? environment : nothing);
  posix_spawn_file_actions_destroy(&actions);
  posix_spawnattr_destroy(&attributes);
  if (error == 0 && process) *process = started;
  return error;
}

}  // namespace wispen

int wispen_platform_posix_spawn(pid_t* process, const char* path, const void* file_actions,
                                const void* attributes, char* const argv[], char* const environment[]) {
  if (file_actions || attributes) return EINVAL;
  pid_t started = 0;
  const int error = wispen::spawn_below_root(&started, path, argv, environment);
  if (error != 0) return error;
  wispen::children().add(started);
  if (process) *process = started;
  return 0;
}

pid_t wispen_platform_waitpid(pid_t process, int* status, int options) {
  using namespace wispen;
  if (options & ~(kPhoneNoHang | kPhoneUntraced | kPhoneExited)) {
    errno = EINVAL;
    return -1;
  }
  if (process <= 0 || !children().knows(process)) {
    errno = ECHILD;
    return -1;
  }
  if (const auto collected = children().take(process)) {
    if (status) *status = *collected;
    return process;
  }
  const int host_options =
      (options & kPhoneNoHang ? WNOHANG : 0) | (options & kPhoneUntraced ? WUNTRACED : 0);
  int raw = 0;
  const pid_t result = waitpid(process, &raw, host_options);
  if (result == process && !WIFSTOPPED(raw)) children().forget(process);
  if (result < 0 && errno == ECHILD) {
    // Another thread's spawn collected it between the two looks, or Foundation did.
    const auto collected = children().take(process);
    if (!collected) {
      children().forget(process);
      errno = ECHILD;
      return -1;
    }
    raw = *collected;
    if (status) *status = raw;
    return process;
  }
  if (result == process && status) *status = raw;
  return result;
}
