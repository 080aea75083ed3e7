// device/slices/chain_word.hpp: a pointer's word in a chain of the form that can sign.
#pragma once

#include <cstdint>

#include "host/core/result.hpp"
#include "wispen/macho/fixups.hpp"

namespace wispen::slices {

/// The word of a fixup in an image whose lowest address is `base`; the chain's next one lies `next` bytes on,
/// 0 is its end. An error for what the form cannot say.
Result<std::uint64_t> chain_word(const macho::Fixup& fixup, std::uint64_t base, std::uint64_t next);

}  // namespace wispen::slices
