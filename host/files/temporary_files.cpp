#include "host/files/temporary_files.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <functional>
#include <mutex>
#include <optional>
#include <string_view>
#include <utility>

namespace wispen::files {

namespace {

constexpr std::string_view kPrefix = ".wispen-";
constexpr std::string_view kSuffix = ".tmp";

/// The process that a temporary file's name holds; nothing for any other name.
std::optional<pid_t> process_of(std::string_view name) {
  if (!name.starts_with(kPrefix) || !name.ends_with(kSuffix)) return std::nullopt;
  const std::string_view middle =
      name.substr(kPrefix.size(), name.size() - std::min(name.size(), kPrefix.size() + kSuffix.size()));
  pid_t process = 0;
  const auto [end, error] = std::from_chars(middle.data(), middle.data() + middle.size(), process);
  if (error != std::errc() || end == middle.data() + middle.size() || *end != '-' || process <= 0) {
    return std::nullopt;
  }
  return process;
}

bool lives(pid_t process) { return ::kill(process, 0) == 0 || errno != ESRCH; }

void sweep(int folder, const SystemCalls& calls) {
  // Sweeping may fail without harm, so that the listing needs no table that can make it fail.
  const int listing = ::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (listing < 0) return;
  DIR* entries = ::fdopendir(listing);
  if (entries == nullptr) {
    ::close(listing);
    return;
  }
  while (const dirent* entry = ::readdir(entries)) {
    const std::optional<pid_t> process = process_of(entry->d_name);
    if (process && !lives(*process)) calls.unlinkat(folder, entry->d_name, 0);
  }
  ::closedir(entries);
}

/// When a folder, known by the hash of its path, was last looked through.
struct Sweep {
  std::size_t folder = 0;
  time_t at = -1;
};

// Listing a folder of hundreds of files costs more than writing one, and orphans are rare.
std::mutex sweeps_mutex;
std::array<Sweep, 8> sweeps;
std::size_t next_slot = 0;
pid_t sweeps_owner = 0;

bool is_due(std::string_view path) {
  // Never waits: in a process forked while another thread held the lock it stays held, and sweeping once too
  // often does no harm.
  const std::unique_lock lock(sweeps_mutex, std::try_to_lock);
  if (!lock) return true;
  if (sweeps_owner != ::getpid()) {
    // A forked child starts afresh: its parent's orphans may be what it is to clear away.
    sweeps = {};
    sweeps_owner = ::getpid();
  }
  timespec now = {};
  ::clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
  const std::size_t folder = std::hash<std::string_view>()(path);
  for (Sweep& known : sweeps) {
    if (known.folder == folder && known.at >= 0) return std::exchange(known.at, now.tv_sec) != now.tv_sec;
  }
  sweeps[next_slot++ % sweeps.size()] = {folder, now.tv_sec};
  return true;
}

}  // namespace

Descriptor create_temporary(int folder, mode_t mode, std::string& name, const SystemCalls& calls) {
  static std::atomic<std::uint64_t> count = 0;
  constexpr int kAttempts = 16;  // a dead process with our number may have left some of our names behind
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    name = std::string(kPrefix) + std::to_string(::getpid()) + "-" + std::to_string(count++) +
           std::string(kSuffix);
    const int file = open_retrying(calls, folder, name.c_str(),
                                   O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
    if (file >= 0 || errno != EEXIST) return {file, calls};
  }
  return {-1, calls};
}

void sweep_stale_temporaries(int folder, std::string_view path, const SystemCalls& calls) {
  if (is_due(path)) sweep(folder, calls);
}

}  // namespace wispen::files
