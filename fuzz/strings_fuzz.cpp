// fuzz/strings_fuzz.cpp: any bytes as a strings table.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "host/plist/utf.hpp"
#include "host/strings/table.hpp"

namespace {

void require(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "broken promise: %s\n", what);
  std::abort();
}

std::string quoted(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') result.push_back('\\');
    result.push_back(c);
  }
  return result + "\"";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using wispen::strings::Table;
  const Table table = Table::parse({reinterpret_cast<const char*>(data), size}, "fuzz");
  if (table.error()) require(table.error()->message.starts_with("fuzz: "), "an error names the file");
  std::string text;
  for (const auto& [key, value] : table.entries()) {
    require(wispen::plist::is_utf8(key) && wispen::plist::is_utf8(value), "texts are UTF-8");
    require(table.find(key) != nullptr && *table.find(key) == value, "an entry is found");
    text += quoted(key) + " = " + quoted(value) + ";\n";
  }
  require(table.complete().ok() == !table.error(), "a table with an error is not complete");
  const Table again = Table::parse(text, "again");
  require(!again.error() && again.entries() == table.entries(),
          "what was read reads the same when written out");
  return 0;
}
