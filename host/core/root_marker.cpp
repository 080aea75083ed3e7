// host/core/root_marker.cpp: the file by which a device root is known as one, and its layout.

#include "host/core/root_marker.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "host/core/unique_fd.hpp"

namespace wispen {
namespace {

namespace fs = std::filesystem;

constexpr const char* kMarker = ".wispen-root";
constexpr const char* kDraft = ".wispen-root.new";
constexpr std::size_t kMaxMarker = 64;

Error cannot(const char* what, const std::string& folder, int number) {
  return Error{"cannot " + std::string(what) + " '" + folder + "/" + kMarker +
               "': " + std::generic_category().message(number)};
}

/// One process at a time decides what a new root is. Where the file system has no locks there is none.
UniqueFd locked(const std::string& folder) {
  UniqueFd fd(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  // A process that was stopped while it held the lock must not hold up everybody else for ever.
  constexpr int kAttempts = 500;
  constexpr useconds_t kPause = 10'000;
  for (int i = 0; fd && i < kAttempts && ::flock(fd.get(), LOCK_EX | LOCK_NB) != 0; ++i) {
    if (errno != EWOULDBLOCK && errno != EINTR) break;
    ::usleep(kPause);
  }
  return fd;
}

bool holds_nothing_else(const std::string& folder) {
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folder, error)) {
    const std::string name = entry.path().filename();
    if (name != kMarker && name != kDraft) return false;
  }
  return !error;
}

Result<void> write_marker(const std::string& folder, int directory, Layout layout) {
  ::unlinkat(directory, kDraft, 0);  // of a process that was ended here
  UniqueFd draft(::openat(directory, kDraft, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0644));
  const std::string text = std::string(layout_name(layout)) + "\n";
  bool written = static_cast<bool>(draft);
  if (written) {
    errno = EIO;  // for a write that is cut short without a reason
    written = ::write(draft.get(), text.data(), text.size()) == static_cast<ssize_t>(text.size()) &&
              ::fsync(draft.get()) == 0;
  }
  if (!written || ::renameat(directory, kDraft, directory, kMarker) != 0) {
    const int number = errno;
    ::unlinkat(directory, kDraft, 0);
    return cannot("write", folder, number);
  }
  ::fsync(directory);  // not every file system can, and the marker is there in any case
  return {};
}

}  // namespace

std::string_view layout_name(Layout layout) { return layout == Layout::Rootless ? "rootless" : "rootful"; }

std::optional<Layout> layout_from_name(std::string_view name) {
  if (name == "rootless") return Layout::Rootless;
  if (name == "rootful") return Layout::Rootful;
  return std::nullopt;
}

Result<std::optional<Layout>> remembered_layout(const std::string& folder) {
  const std::string path = folder + "/" + kMarker;
  // Not blocking, for a FIFO would wait here for its writer.
  const UniqueFd marker(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (!marker && errno == ENOENT) return std::optional<Layout>();
  if (!marker && errno != ELOOP) return cannot("read", folder, errno);
  struct stat status {};
  if (!marker || ::fstat(marker.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return Error{"'" + path + "' is not a regular file"};
  }
  std::array<char, kMaxMarker> bytes{};
  const ssize_t count = ::read(marker.get(), bytes.data(), bytes.size());
  if (count < 0) return cannot("read", folder, errno);
  if (count == 0) return std::optional<Layout>();
  std::string_view word(bytes.data(), static_cast<std::size_t>(count));
  word = word.substr(0, word.find_first_of(std::string_view(" \t\r\n\0", 5)));
  const auto layout = layout_from_name(word);
  if (!layout) {
    return Error{"'" + folder + "' is a device root of a layout that is not known: '" + std::string(word) +
                 "'"};
  }
  return layout;
}

Result<Layout> remember_layout(const std::string& folder, std::optional<Layout> wanted) {
  const UniqueFd lock = locked(folder);
  if (!lock) return cannot("write", folder, errno);
  const auto remembered = remembered_layout(folder);
  if (!remembered) return remembered.error();
  if (*remembered) return **remembered;
  // An empty marker says that the rest is a root's too.
  const bool begun = ::faccessat(lock.get(), kMarker, F_OK, AT_SYMLINK_NOFOLLOW) == 0;
  if (!begun && !holds_nothing_else(folder)) {
    return Error{"'" + folder + "' is not a device root and is not empty; choose a new or an empty folder"};
  }
  const Layout layout = wanted.value_or(Layout::Rootless);
  if (auto written = write_marker(folder, lock.get(), layout); !written) return written.error();
  return layout;
}

}  // namespace wispen
