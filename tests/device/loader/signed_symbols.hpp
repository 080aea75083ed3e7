// tests/device/loader/signed_symbols.hpp: the border between a phone's signed code and this process, which
// signs nothing.
//
// Every function that arm64e code hands over is authenticated before it gets to the process, as the phone's
// libraries would; every one that it is given is signed as theirs are. What does not authenticate ends the
// process with a sentence.
//
// Blocks belong to both sides: a heap block's function stays signed for its address, and the host
// authenticates it when it calls (platform/objc/block_layout.hpp). Code that is not ours, Foundation's,
// cannot call such a block.
#pragma once

#include <string_view>

#include "wispen/macho/fixups.hpp"

namespace wispen::loader {

/// As phone_symbol, for an image of signed code.
void* phone_symbol_for_signed_code(const macho::Import& import, std::string_view library);

}  // namespace wispen::loader
