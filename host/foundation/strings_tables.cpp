// host/foundation/strings_tables.cpp: the strings tables of a bundle, read when asked for.

#include "host/foundation/strings_tables.hpp"

#include <sys/stat.h>

#include "host/foundation/plist/document.hpp"
#include "host/foundation/problems.hpp"

namespace wispen {

std::optional<StringsTables::Answer> StringsTables::look_up(const std::string& file, const std::string& key) {
  struct stat status;
  if (::stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
    tables_.erase(file);
    return std::nullopt;
  }
  const Stamp stamp{status.st_ino, status.st_size, status.st_mtim.tv_sec * 1'000'000'000LL + status.st_mtim.tv_nsec};
  Table& table = tables_[file];
  if (table.stamp != stamp) table = read(file, stamp);
  const auto found = table.entries.find(key);
  return Answer{found != table.entries.end() ? &found->second : nullptr};
}

StringsTables::Table StringsTables::read(const std::string& file, const Stamp& stamp) {
  Table table{stamp, {}};
  const auto document = plist::Document::read(file);
  if (!document) {
    report_problem(file + ": " + document.error().message);
    return table;
  }
  for (const plist::Entry entry : document->root().entries()) {
    table.entries[entry.key.string()] = entry.value.string();
  }
  return table;
}

}  // namespace wispen
