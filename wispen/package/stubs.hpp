// wispen/package/stubs.hpp: the phone's libraries as far as the bundle may use them: what the linker's stubs
// say.
#pragma once

#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace wispen::package {

struct TextFile {
  std::string_view name;
  std::string_view text;
};

/// The stubs that the bundle is linked with, as they stand in the sources.
std::span<const TextFile> stub_files();

struct Stub {
  std::string library;            // the path that an image loads it by
  std::set<std::string> symbols;  // for every processor
};

/// Reads what the stubs need of their format: the install name and the lists of symbols.
std::vector<Stub> parse_stubs(std::span<const TextFile> files);

}  // namespace wispen::package
