// tests/device/loader/signed_blocks.hpp: blocks of signed code, in a process whose own are plain.
#pragma once

namespace wispen::loader {

/// The phone's _Block_copy for signed code. A literal's fields are authenticated, and the heap block's
/// function is signed for its new address; a heap block of the process gets its function signed where it
/// lies.
void* copy_signed_block(const void* block);

}  // namespace wispen::loader
