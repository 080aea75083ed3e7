// host/graphics/file_state.hpp: by what a file is known to be as it was read.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <string>

namespace wispen::graphics {

/// An editor that saves may write into the file or put another in its place.
struct FileState {
  std::int64_t seconds = 0;
  std::int64_t nanoseconds = 0;
  std::int64_t bytes = 0;
  std::uint64_t number = 0;
  friend bool operator==(const FileState&, const FileState&) = default;

  /// All zero for a file that is not there.
  static FileState of(const std::string& path) {
    struct stat found {};
    if (::stat(path.c_str(), &found) != 0) return {};
    return {found.st_mtim.tv_sec, found.st_mtim.tv_nsec, found.st_size, found.st_ino};
  }
};

}  // namespace wispen::graphics
