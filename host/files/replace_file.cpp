#include "host/files/replace_file.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <new>
#include <optional>
#include <utility>

#include "host/files/temporary_files.hpp"

namespace wispen::files {

namespace {

constexpr int kLinksFollowed = 40;  // as many as the kernel follows in one path
constexpr mode_t kPermissions = 07777;

/// Where the new file goes: an open folder, the name in it, and what has the name now.
struct Target {
  Descriptor folder;
  bool folder_can_sync = true;
  std::string folder_path;
  std::string name;
  std::optional<struct stat> old;
};

Result<Target> open_folder(const std::string& path, const std::string& original, const SystemCalls& calls) {
  const std::size_t slash = path.rfind('/');
  std::string folder_path = slash == std::string::npos ? "." : path.substr(0, slash + 1);
  Target target{Descriptor(-1, calls), true, {}, path.substr(slash == std::string::npos ? 0 : slash + 1), {}};
  if (target.name.empty() || target.name == "." || target.name == "..") {
    return Error{failure("write", original, EISDIR)};
  }
  int folder = open_retrying(calls, AT_FDCWD, folder_path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0 && errno == EACCES) {
    // A folder may let files be made in it and yet not be listed; then it cannot be synced either.
    target.folder_can_sync = false;
    folder = open_retrying(calls, AT_FDCWD, folder_path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
  }
  if (folder < 0) return Error{failure("write", original, errno)};
  target.folder = Descriptor(folder, calls);
  target.folder_path = std::move(folder_path);
  return target;
}

Result<Target> resolve(const std::string& path, const SystemCalls& calls) {
  std::string current = path;
  for (int links = 0; links <= kLinksFollowed; ++links) {
    Result<Target> target = open_folder(current, path, calls);
    if (!target) return target;
    struct stat status = {};
    if (calls.fstatat(target->folder.number(), target->name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
      if (errno != ENOENT) return Error{failure("write", path, errno)};
      return target;
    }
    if (!S_ISLNK(status.st_mode)) {
      if (S_ISDIR(status.st_mode)) return Error{failure("write", path, EISDIR)};
      if (!S_ISREG(status.st_mode)) return Error{"cannot write " + path + ": it is not a regular file"};
      target->old = status;
      return target;
    }
    char link[PATH_MAX];
    const ssize_t length = calls.readlinkat(target->folder.number(), target->name.c_str(), link, sizeof link);
    if (length < 0) return Error{failure("write", path, errno)};
    const std::string_view destination(link, static_cast<std::size_t>(length));
    if (!destination.starts_with('/')) {
      current.resize(current.size() - target->name.size());
    } else {
      current.clear();
    }
    current += destination;
  }
  return Error{failure("write", path, ELOOP)};
}

bool write_all(int file, std::string_view bytes, const SystemCalls& calls) {
  while (!bytes.empty()) {
    const ssize_t count = calls.write(file, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    if (count == 0) {
      errno = EIO;  // nothing written and no reason given: never loop on it
      return false;
    }
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

bool sync(int file, const SystemCalls& calls) {
  int result = -1;
  do {
    result = calls.fsync(file);
  } while (result != 0 && errno == EINTR);
  return result == 0;
}

/// The mode that the temporary file is made with. Only where it will not change hands may others have a look
/// at it before it is complete.
mode_t first_mode(const std::optional<struct stat>& old) {
  if (!old) return 0644;
  const bool own = old->st_uid == ::geteuid() && old->st_gid == ::getegid();
  return own ? old->st_mode & 0777 : 0600;
}

bool keep_owner_and_mode(int file, const struct stat& old, const SystemCalls& calls) {
  struct stat fresh = {};
  if (calls.fstat(file, &fresh) != 0) return false;
  mode_t mode = old.st_mode & kPermissions;
  // The owner goes first: changing it clears the set-user and set-group bits.
  if ((fresh.st_uid != old.st_uid || fresh.st_gid != old.st_gid) &&
      calls.fchown(file, old.st_uid, old.st_gid) != 0) {
    if (errno != EPERM) return false;
    mode &= ~static_cast<mode_t>(S_ISUID | S_ISGID);
  }
  return (fresh.st_mode & kPermissions) == mode || calls.fchmod(file, mode) == 0;
}

/// Fills the temporary file up to the point where it only lacks its name.
bool fill(Descriptor& file, std::string_view bytes, const std::optional<struct stat>& old,
          const SystemCalls& calls) {
  return write_all(file.number(), bytes, calls) &&
         (!old || keep_owner_and_mode(file.number(), *old, calls)) && sync(file.number(), calls) &&
         file.close();
}

Result<void> replace_resolved(const std::string& path, const Target& target, std::string_view bytes,
                              const SystemCalls& calls) {
  const int folder = target.folder.number();
  sweep_stale_temporaries(folder, target.folder_path, calls);

  std::string temporary;
  Descriptor file = create_temporary(folder, first_mode(target.old), temporary, calls);
  if (!file.valid()) return Error{failure("write", path, errno)};
  if (!fill(file, bytes, target.old, calls) ||
      calls.renameat(folder, temporary.c_str(), folder, target.name.c_str()) != 0) {
    const int error_number = errno;
    calls.unlinkat(folder, temporary.c_str(), 0);
    return Error{failure("write", path, error_number)};
  }
  // Some file systems cannot sync a folder and say so with EINVAL; there is nothing more to ask of them.
  if (target.folder_can_sync && !sync(folder, calls) && errno != EINVAL) {
    return Error{failure("sync the folder of", path, errno)};
  }
  return {};
}

}  // namespace

Result<void> replace(const std::string& path, std::string_view bytes, const SystemCalls& calls) {
  try {
    Result<Target> target = resolve(path, calls);
    if (!target) return target.error();
    return replace_resolved(path, *target, bytes, calls);
  } catch (const std::bad_alloc&) {
    return Error{"out of memory"};
  }
}

}  // namespace wispen::files
