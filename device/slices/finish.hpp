// device/slices/finish.hpp: makes a bundle of arm64e code, which the linker wrote as an arm64 one, an arm64e
// bundle.
//
// The linker knows one kind of arm64 image. Of all that it writes only four things differ for arm64e, and
// each has the size that it has there: the header's subtype, the form of the chains, the chained words, the
// hashes of the pages.
#pragma once

#include <string>
#include <string_view>

#include "host/core/result.hpp"

namespace wispen::slices {

struct Finished {
  std::string bytes;
  std::size_t fixups = 0;
  std::size_t signed_words = 0;
};

/// Rewrites a linked bundle; the same bytes give the same bytes. What it does not know it refuses: another
/// type or processor, a bundle that is finished already, fixups by opcodes or in another form, a damaged
/// signature. So it does with code that would fail under live keys (macho::check_signed_code).
Result<Finished> finish(std::string_view linked);

/// Computes the hashes of the image's pages anew; everything else of its signature stays.
Result<void> sign_anew(std::string& image);

}  // namespace wispen::slices
