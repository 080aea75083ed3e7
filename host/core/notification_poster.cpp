// host/core/notification_poster.cpp: telling other processes that something happened, by name.

#include "host/core/notification_poster.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

#include "host/core/current_root.hpp"
#include "host/core/notification_name.hpp"
#include "host/core/root_path.hpp"

namespace wispen {
namespace {

constexpr off_t kPage = 4096;
constexpr off_t kBlock = 512;  // of st_blocks, whatever the file system's own

}  // namespace

Result<NotificationPoster::File*> NotificationPoster::file_of(std::string_view name) {
  File* oldest = &files_[0];
  for (File& file : files_) {
    if (file.fd && file.name == name) return &file;
    if (file.used < oldest->used) oldest = &file;
  }
  const std::string path = folder_ + "/" + notification_file_name(name);
  // Another kind of file under this name, say a FIFO, must not make a post wait.
  UniqueFd fd(open_without_links(path.c_str(),
                                 O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666));
  struct stat status {};
  if (!fd || fstat(fd.get(), &status) != 0) {
    return Error{"cannot post in '" + folder_ + "': " + std::strerror(errno)};
  }
  if (!S_ISREG(status.st_mode)) {
    return Error{"cannot post in '" + folder_ + "': the name's place is taken by something else"};
  }
  *oldest = File{std::string(name), std::move(fd)};
  return oldest;
}

Result<void> NotificationPoster::post(std::string_view name) {
  const std::lock_guard lock(mutex_);
  for (int attempt = 0; attempt < 2; ++attempt) {
    auto found = file_of(name);
    if (!found) return found.error();
    File& file = **found;
    file.used = ++uses_;
    while (write(file.fd.get(), "!", 1) != 1) {
      if (errno != EINTR) return Error{"cannot post in '" + folder_ + "': " + std::strerror(errno)};
    }

    // Only now, so that the listeners are on their way: was that still the file that they look at?
    struct stat status {};
    if (fstat(file.fd.get(), &status) == 0 && status.st_nlink > 0) {
      if (file.can_punch && status.st_blocks * kBlock >= kMaxStored) {
        // A file system that cannot do this keeps the bytes; the count is right all the same.
        file.can_punch = fallocate(file.fd.get(), FALLOC_FL_PUNCH_HOLE | FALLOC_FL_KEEP_SIZE, 0,
                                   status.st_size / kPage * kPage) == 0;
      }
      return {};
    }
    file.fd.reset();
  }
  return Error{"cannot post in '" + folder_ + "': the name's file goes away again and again"};
}

Result<void> post_notification(std::string_view name) {
  static std::mutex mutex;
  static std::shared_ptr<NotificationPoster> poster;
  const auto root = current_root();
  if (!root) return Error{"cannot post: there is no device root"};
  std::shared_ptr<NotificationPoster> current;
  {
    const std::lock_guard lock(mutex);
    const std::string folder = root->notifications_folder();
    if (!poster || poster->folder() != folder) poster = std::make_shared<NotificationPoster>(folder);
    current = poster;
  }
  return current->post(name);
}

}  // namespace wispen
