// wispen/package/deb_file.hpp: a Debian package file, read whole: https://manpages.debian.org/deb(5)
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "host/core/result.hpp"

namespace wispen::package {

enum class EntryType { File, Folder, Link, HardLink, Other };

/// One name of the package's tree, as its archive says; nothing of it has been judged yet.
struct Entry {
  std::string path;  // as written: "./var/jb/..."
  EntryType type = EntryType::Other;
  unsigned mode = 0;  // permission bits
  std::int64_t uid = 0;
  std::int64_t gid = 0;
  std::string target;  // of a link
  std::string bytes;   // of a file
};

struct DebFile {
  /// Bounds of what is unpacked, so that a small file cannot fill the memory.
  static constexpr std::size_t kMostBytes = std::size_t{64} << 20;
  static constexpr std::size_t kMostEntries = 10000;
  static constexpr std::size_t kLongestField = std::size_t{64} << 10;
  /// Of one name between slashes, as every file system has it.
  static constexpr std::size_t kLongestName = 255;

  std::vector<std::string> members;            // names in the outer archive, in order
  std::map<std::string, std::string> control;  // the control file's fields
  std::vector<Entry> control_files;            // control, md5sums, and scripts, where there are any
  std::vector<Entry> entries;                  // the tree, in order

  /// The field's value; "" where it is missing.
  std::string field(const std::string& name) const;
};

/// Reads a package from its bytes. Fails for everything that is not a well-formed package: archives that end
/// early, members that are missing, twice there or out of order, a control file that is none, too much of
/// anything.
Result<DebFile> read_deb(std::string_view bytes);

/// The whole file, up to DebFile::kMostBytes.
Result<std::string> read_package_file(const std::string& path);

/// The path without "./" or a trailing slash, as seen from the device's root ("/var/jb/..."); "" for one that
/// could lead elsewhere: with "..", an empty component or a byte below the space.
std::string device_path(std::string_view written);

}  // namespace wispen::package
