// host/core/notification_listener.cpp

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

std::int64_t nanoseconds(const timespec& time) { return time.tv_sec * 1'000'000'000 + time.tv_nsec; }

}  // namespace

Result<NotificationListener> NotificationListener::open(const std::string& folder,
                                                        const std::vector<std::string>& names) {
  UniqueFd events(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
  if (!events || inotify_add_watch(events.get(), folder.c_str(), kEvents) < 0) {
    return Error{"cannot listen in '" + folder + "': " + std::strerror(errno)};
  }
  UniqueFd directory(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!directory) return Error{"cannot listen in '" + folder + "': " + std::strerror(errno)};

  NotificationListener listener(folder, std::move(events), std::move(directory));
  for (const std::string& name : names) listener.wanted_.emplace(notification_file_name(name), name);
  // After the watch is set: what is posted from here on changes a size and makes an event.
  listener.rescan(nullptr);
  return listener;
}

std::optional<NotificationListener::Seen> NotificationListener::look(const char* file) const {
  struct stat status {};
  if (fstatat(directory_.get(), file, &status, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISREG(status.st_mode)) {
    return std::nullopt;
  }
  return Seen{status.st_size, nanoseconds(status.st_mtim)};
}

void NotificationListener::note(const std::string& file, bool events_lost, std::vector<Notice>& notices) {
  const auto now = look(file.c_str());
  Seen& seen = seen_[file];
  if (!now) {
    seen = Seen{};
    return;
  }
  // A size that did not grow by itself is news only where the events were lost: otherwise it belongs to a
  // post that an earlier event already reported.
  const bool smaller = now->size < seen.size;
  const bool changed = now->size != seen.size || (events_lost && now->changed != seen.changed);
  const std::int64_t posts = now->size > seen.size ? now->size - seen.size : now->size;
  seen = *now;
  if (!changed || (now->size == 0 && !smaller)) return;

  const auto wanted = wanted_.find(file);
  std::string name = wanted != wanted_.end() ? wanted->second : notification_name_of_file(file);
  notices.push_back({std::move(name), static_cast<std::uint64_t>(std::max<std::int64_t>(posts, 1))});
}

void NotificationListener::rescan(std::vector<Notice>* notices) {
  std::vector<Notice> ignored;
  std::vector<Notice>& found = notices ? *notices : ignored;
  if (!wanted_.empty()) {
    for (const auto& [file, name] : wanted_) note(file, true, found);
    return;
  }
  const int copy = openat(directory_.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (copy < 0) return;
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(fdopendir(copy), closedir);
  while (const dirent* entry = entries ? readdir(entries.get()) : nullptr) {
    if (entry->d_name[0] != '.') note(entry->d_name, true, found);
  }
}

std::vector<Notice> NotificationListener::read() {
  std::vector<Notice> notices;
  alignas(inotify_event) std::array<char, 16384> buffer;
  // Bounded, so that a storm of posts cannot keep the caller here; what is left makes the descriptor
  // readable.
  for (int round = 0; round < 64; ++round) {
    const ssize_t length = ::read(events_.get(), buffer.data(), buffer.size());
    if (length < 0 && errno == EINTR) continue;
    if (length <= 0) break;
    for (ssize_t offset = 0; offset < length;) {
      inotify_event event{};
      std::memcpy(&event, buffer.data() + offset, sizeof event);
      const char* file = buffer.data() + offset + sizeof event;
      offset += static_cast<ssize_t>(sizeof event + event.len);
      if (event.mask & IN_Q_OVERFLOW) {
        rescan(&notices);
      } else if (event.len > 0 && file[0] != '.' && (wanted_.empty() || wanted_.contains(file))) {
        // A file that was deleted counts from nothing again.
        if (event.mask & (IN_DELETE | IN_MOVED_FROM)) {
          seen_.erase(file);
        } else {
          note(file, false, notices);
        }
      }
    }
    // A short read emptied the queue: one call less on the way of every notice.
    if (static_cast<std::size_t>(length) < buffer.size() / 2) break;
  }
  return merged(std::move(notices));
}

std::vector<Notice> NotificationListener::wait(std::optional<Nanoseconds> timeout) {
  const Nanoseconds end = timeout ? Clock::steady_now() + *timeout : Nanoseconds::max();
  while (true) {
    if (auto notices = read(); !notices.empty()) return notices;
    timespec left{};
    if (timeout) {
      const Nanoseconds remaining = end - Clock::steady_now();
      if (remaining <= Nanoseconds::zero()) return {};
      const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(remaining);
      left = {seconds.count(), (remaining - seconds).count()};
    }
    pollfd polled{events_.get(), POLLIN, 0};
    if (ppoll(&polled, 1, timeout ? &left : nullptr, nullptr) < 0 && errno != EINTR) return {};
  }
}

}  // namespace wispen
