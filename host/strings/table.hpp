// host/strings/table.hpp: the strings of one language, read from a .strings file.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "host/core/result.hpp"
#include "host/files/system_calls.hpp"

namespace wispen::strings {

/// Keys and their texts, both UTF-8.
using Entries = std::map<std::string, std::string, std::less<>>;

/// A strings table in any form that the platform reads: a list of `"key" = "text";` in UTF-8 (with or
/// without a byte order mark) or UTF-16 (with one), or a property list, XML or binary, whose root is a
/// dictionary of strings.
///
/// A mistake does not cost the whole table: what stands before it stays usable, beside an error that names
/// the file, the line and what was expected there.
class Table {
 public:
  /// `name` stands for the file in the error.
  static Table parse(std::string_view bytes, std::string_view name);
  /// An error, and no entries, when the file cannot be read at all.
  static Table read(const std::string& path, const files::SystemCalls& calls = files::SystemCalls::real());

  const Entries& entries() const { return entries_; }
  const std::optional<Error>& error() const { return error_; }
  /// The text for a key, or null. Of entries with the same key the last counts.
  const std::string* find(std::string_view key) const;
  /// The entries, or the error where there is one: for those who want all or nothing.
  Result<Entries> complete() const;

 private:
  Entries entries_;
  std::optional<Error> error_;
};

}  // namespace wispen::strings
