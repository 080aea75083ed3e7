// tests/device/loader/compact_unwind.hpp: how exceptions get through an image's functions.
//
// Mach-O says it in a table of 32-bit codes (mach-o/compact_unwind_encoding.h); the machine's own unwinder
// reads DWARF frames. So the table is written anew as such frames.
#pragma once

#include <cstdint>
#include <string>

#include "host/core/result.hpp"
#include "wispen/macho/image.hpp"

namespace wispen::loader {

/// The frames of every function whose code is one of the plain forms, as an .eh_frame section with absolute
/// addresses for an image that was moved to `base` (where its lowest address is now), with the closing zero.
/// Functions of other forms get none. Empty where the image has no table. The frames of an arm64e image have
/// signed return addresses, and the given function for a personality: the image's own is signed.
Result<std::string> dwarf_frames(const macho::Image& image, std::uintptr_t base,
                                 std::uintptr_t authenticating_personality = 0);

}  // namespace wispen::loader
