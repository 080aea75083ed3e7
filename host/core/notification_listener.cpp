// host/core/notification_listener.cpp: hearing what other processes post.

#include "host/core/notification_listener.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <memory>

#include "host/core/notification_name.hpp"

namespace wispen {
namespace {

constexpr std::uint32_t kEvents =
    IN_MODIFY | IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ONLYDIR | IN_EXCL_UNLINK;

/// One notice a name: a name may have been posted again between two looks.
std::vector<Notice> merged(std::vector<Notice> notices) {
  if (notices.size() < 2) return notices;
  std::vector<Notice> result;
  std::unordered_map<std::string, std::size_t> places;
  for (Notice& notice : notices) {
    const auto [place, first] = places.try_emplace(notice.name, result.size());
    if (first) {
      result.push_back(std::move(notice));
    } else {
      result[place->second].posts += notice.posts;
    }
  }
  return result;
}

constexpr std::size_t kBufferSize = 16384;

/// A descriptor for each file makes a look cheaper, but many names must not eat the process's limit.
constexpr std::size_t kMaxHeldFiles = 16;

}  // namespace

Result<NotificationListener> NotificationListener::open(const std::string& folder,
                                                        const std::vector<std::string>& names) {
  UniqueFd events(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
  if (!events || inotify_add_watch(events.get(), folder.c_str(), kEvents) < 0) {
    return Error{"cannot listen in '" + folder + "': " + std::strerror(errno)};
  }
  UniqueFd directory(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!directory) return Error{"cannot listen in '" + folder + "': " + std::strerror(errno)};

  NotificationListener listener(std::move(events), std::move(directory));
  listener.selective_ = !names.empty();
  for (const std::string& name : names) {
    listener.entries_.try_emplace(notification_file_name(name), Entry{name});
  }
  // After the watch is set: what is posted from here on changes a size and makes an event.
  std::vector<Notice> from_before;
  listener.rescan(from_before);
  return listener;
}

NotificationListener::Entry* NotificationListener::entry_of(std::string_view file) {
  if (file.starts_with('.')) return nullptr;
  const auto found = entries_.find(file);
  if (found != entries_.end()) return &found->second;
  if (selective_) return nullptr;
  return &entries_.try_emplace(std::string(file), Entry{notification_name_of_file(file)}).first->second;
}

bool NotificationListener::look(const char* file, Entry& now) const {
  struct stat status {};
  if (selective_ && entries_.size() <= kMaxHeldFiles) {
    // The file of a post that was made before a deletion can still be counted through its descriptor.
    if (now.fd) {
      now.size = lseek(now.fd.get(), 0, SEEK_END);
      return now.size >= 0;
    }
    now.fd.reset(openat(directory_.get(), file, O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
    if (!now.fd || fstat(now.fd.get(), &status) != 0) return false;
  } else if (fstatat(directory_.get(), file, &status, AT_SYMLINK_NOFOLLOW) != 0) {
    return false;
  }
  now.inode = status.st_ino;
  now.size = status.st_size;
  return S_ISREG(status.st_mode);
}

void NotificationListener::note(const char* file, Entry& entry, std::vector<Notice>& notices) const {
  const ino_t inode = entry.inode;
  const std::int64_t size = entry.size;
  if (!look(file, entry)) return entry.forget_file();
  const bool grown = entry.inode == inode && entry.size >= size;
  const std::int64_t posts = grown ? entry.size - size : entry.size;
  // Without a difference the event belongs to a post that an earlier one already reported.
  if (posts > 0) notices.push_back({entry.name, static_cast<std::uint64_t>(posts)});
}

void NotificationListener::rescan(std::vector<Notice>& notices) {
  // Deletions may be among what was missed, so no descriptor is trusted.
  for (auto& [file, entry] : entries_) entry.fd.reset();
  if (selective_) {
    for (auto& [file, entry] : entries_) note(file.c_str(), entry, notices);
    return;
  }
  const int copy = openat(directory_.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (copy < 0) return;
  const std::unique_ptr<DIR, int (*)(DIR*)> files(fdopendir(copy), closedir);
  while (const dirent* file = files ? readdir(files.get()) : nullptr) {
    if (Entry* entry = entry_of(file->d_name)) note(file->d_name, *entry, notices);
  }
}

void NotificationListener::note_events(const char* buffer, std::size_t length, std::vector<Notice>& notices) {
  for (std::size_t offset = 0; offset < length;) {
    inotify_event event{};
    std::memcpy(&event, buffer + offset, sizeof event);
    const char* file = buffer + offset + sizeof event;
    offset += sizeof event + event.len;
    if (event.mask & IN_Q_OVERFLOW) {
      rescan(notices);
    } else if (Entry* entry = event.len > 0 ? entry_of(file) : nullptr) {
      // A file that was deleted counts from nothing again.
      if (event.mask & (IN_DELETE | IN_MOVED_FROM)) {
        entry->forget_file();
      } else {
        note(file, *entry, notices);
      }
    }
  }
}

void NotificationListener::set_blocking(bool blocking) {
  if (blocking == blocking_) return;
  fcntl(events_.get(), F_SETFL, blocking ? 0 : O_NONBLOCK);
  blocking_ = blocking;
}

std::vector<Notice> NotificationListener::read() {
  set_blocking(false);
  std::vector<Notice> notices;
  alignas(inotify_event) std::array<char, kBufferSize> buffer;
  // Bounded, so that a storm of posts cannot keep the caller here; what is left makes the descriptor
  // readable.
  for (int round = 0; round < 64; ++round) {
    const ssize_t length = ::read(events_.get(), buffer.data(), buffer.size());
    if (length < 0 && errno == EINTR) continue;
    if (length <= 0) break;
    note_events(buffer.data(), static_cast<std::size_t>(length), notices);
    // A short read emptied the queue: one call less on the way of every notice.
    if (static_cast<std::size_t>(length) < buffer.size() / 2) break;
  }
  return merged(std::move(notices));
}

std::vector<Notice> NotificationListener::wait(std::optional<Nanoseconds> timeout) {
  if (timeout) {
    const Nanoseconds end = Clock::steady_now() + *timeout;
    while (true) {
      if (auto notices = read(); !notices.empty()) return notices;
      const Nanoseconds remaining = end - Clock::steady_now();
      if (remaining <= Nanoseconds::zero()) return {};
      const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(remaining);
      const timespec left{seconds.count(), (remaining - seconds).count()};
      pollfd polled{events_.get(), POLLIN, 0};
      if (ppoll(&polled, 1, &left, nullptr) < 0 && errno != EINTR) return {};
    }
  }
  // Waiting in the read itself is the shortest way from a post to its listener.
  set_blocking(true);
  std::vector<Notice> notices;
  alignas(inotify_event) std::array<char, kBufferSize> buffer;
  while (notices.empty()) {
    const ssize_t length = ::read(events_.get(), buffer.data(), buffer.size());
    if (length < 0 && errno != EINTR) return {};
    if (length > 0) note_events(buffer.data(), static_cast<std::size_t>(length), notices);
  }
  return merged(std::move(notices));
}

}  // namespace wispen
