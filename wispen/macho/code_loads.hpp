// wispen/macho/code_loads.hpp: which words of an image its own arm64 code loads, as far as the instructions
// say it.
#pragma once

#include <cstdint>
#include <vector>

#include "wispen/macho/image.hpp"

namespace wispen::macho {

struct CodeLoad {
  std::uint64_t instruction = 0;  // its address
  std::uint64_t target = 0;       // where it loads from
  std::uint64_t size = 0;         // how many bytes
};

/// Loads of 64-bit words, single and in pairs, from addresses that `adrp`, `adr` and `add` made, or relative
/// to the instruction, in every section of instructions.
std::vector<CodeLoad> code_loads(const Image& image);

}  // namespace wispen::macho
