// host/foundation/strings_tables.cpp: the strings tables of a bundle, read when asked for.

#include "host/foundation/strings_tables.hpp"

#include <sys/stat.h>

#include "host/foundation/device_paths.hpp"
#include "host/foundation/problems.hpp"
#include "host/strings/table.hpp"

namespace wispen {

std::optional<StringsTables::Answer> StringsTables::look_up(const std::string& file, const std::string& key) {
  struct stat status;
  if (::stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
    tables_.erase(file);
    return std::nullopt;
  }
  const Stamp stamp{status.st_ino, status.st_size,
                    status.st_mtim.tv_sec * 1'000'000'000LL + status.st_mtim.tv_nsec};
  Table& table = tables_[file];
  if (table.stamp != stamp) table = read(file, stamp);
  const auto found = table.entries.find(key);
  return Answer{found != table.entries.end() ? &found->second : nullptr};
}

StringsTables::Table StringsTables::read(const std::string& file, const Stamp& stamp) {
  const auto read = strings::Table::read(file, device_calls());
  if (read.error()) report_problem(read.error()->message);
  return {stamp, {read.entries().begin(), read.entries().end()}};
}

}  // namespace wispen
