#include "host/foundation/files/temporary_files.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string_view>

namespace wispen::files {

namespace {

constexpr std::string_view kPrefix = ".wispen-";
constexpr std::string_view kSuffix = ".tmp";

/// The process that a temporary file's name holds; nothing for any other name.
std::optional<pid_t> processOf(std::string_view name) {
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
    const std::optional<pid_t> process = processOf(entry->d_name);
    if (process && !lives(*process)) calls.unlinkat(folder, entry->d_name, 0);
  }
  ::closedir(entries);
}

struct KnownFolder {
  dev_t device = 0;
  ino_t inode = 0;
  timespec changed = {};
  time_t swept_at = -1;
};

// Listing a folder of hundreds of files would cost more than writing one. A change time has the grain of a
// timer tick, so another process's change within the same tick looks like ours: hence also the second.
std::mutex known_folders_mutex;
std::array<KnownFolder, 8> known_folders;
std::size_t next_slot = 0;

time_t secondsNow() {
  timespec now = {};
  ::clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
  return now.tv_sec;
}

KnownFolder* find(const struct stat& status) {
  for (KnownFolder& known : known_folders) {
    if (known.device == status.st_dev && known.inode == status.st_ino) return &known;
  }
  return nullptr;
}

bool isUnchanged(const struct stat& status) {
  // Never waits: in a process forked while another thread held the lock it stays held, and sweeping once too
  // often does no harm.
  const std::unique_lock lock(known_folders_mutex, std::try_to_lock);
  if (!lock) return false;
  KnownFolder* known = find(status);
  if (known == nullptr) {
    known = &known_folders[next_slot++ % known_folders.size()];
    *known = {status.st_dev, status.st_ino, {}, -1};
  }
  const time_t now = secondsNow();
  const bool unchanged = known->changed.tv_sec == status.st_mtim.tv_sec &&
                         known->changed.tv_nsec == status.st_mtim.tv_nsec && known->swept_at == now;
  known->swept_at = now;
  return unchanged;
}

}  // namespace

Descriptor createTemporary(int folder, mode_t mode, std::string& name, const SystemCalls& calls) {
  static std::atomic<std::uint64_t> count = 0;
  constexpr int kAttempts = 16;  // a dead process with our number may have left some of our names behind
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    name = std::string(kPrefix) + std::to_string(::getpid()) + "-" + std::to_string(count++) +
           std::string(kSuffix);
    const int file =
        openRetrying(calls, folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
    if (file >= 0 || errno != EEXIST) return Descriptor(file, calls);
  }
  return Descriptor(-1, calls);
}

void sweepStaleTemporaries(int folder, const struct stat& status, const SystemCalls& calls) {
  if (!isUnchanged(status)) sweep(folder, calls);
}

void rememberFolder(int folder, const SystemCalls& calls) {
  struct stat status = {};
  if (calls.fstat(folder, &status) != 0) return;
  const std::unique_lock lock(known_folders_mutex, std::try_to_lock);
  if (!lock) return;
  if (KnownFolder* known = find(status)) known->changed = status.st_mtim;
}

}  // namespace wispen::files
