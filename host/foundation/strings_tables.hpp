// host/foundation/strings_tables.hpp: the strings tables of a bundle, read when asked for.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <unordered_map>

namespace wispen {

/// Tables by file. A table is read at its first use and again whenever its file has changed, so that a
/// saved translation shows at once. Where a file is broken, what could be read of it is used, and a problem
/// says which line is wrong.
class StringsTables {
 public:
  struct Answer {
    /// Nothing where the table lacks the key. Valid until the next look-up.
    const std::string* text;
  };

  /// Nothing where there is no such file.
  std::optional<Answer> look_up(const std::string& file, const std::string& key);

 private:
  /// What tells one state of a file from another.
  struct Stamp {
    unsigned long long inode = 0;
    long long size = -1;
    long long modified_ns = 0;
    bool operator==(const Stamp&) const = default;
  };
  struct Table {
    Stamp stamp;
    std::unordered_map<std::string, std::string> entries;
  };

  static Table read(const std::string& file, const Stamp& stamp);

  std::map<std::string, Table> tables_;
};

}  // namespace wispen
