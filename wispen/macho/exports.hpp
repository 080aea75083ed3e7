// wispen/macho/exports.hpp: the symbols that an image offers.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/core/result.hpp"
#include "wispen/macho/image.hpp"

namespace wispen::macho {

struct Export {
  std::string name;          // with the leading underscore of C names
  std::uint64_t offset = 0;  // from the image's base
};

/// Every symbol of the image's trie, in the trie's order. Re-exports and resolvers, which nothing here makes,
/// are errors, as is a trie that leads back to itself or out of its bytes.
Result<std::vector<Export>> read_exports(const Image& image);

}  // namespace wispen::macho
