// wispen/macho/signed_code.hpp: what must hold in an arm64e image besides what holds in every image. A
// processor with live keys would end the program where one of these does not.
#pragma once

#include "host/core/result.hpp"
#include "wispen/macho/fixups.hpp"
#include "wispen/macho/image.hpp"
#include "wispen/macho/unwind_table.hpp"

namespace wispen::macho {

/// How the words are signed from which the phone's unwinder takes personality functions.
inline constexpr Signing kPersonalitySigning{Key::IA, true, 0};

/// The header says arm64e of the ABI's version 0.
Result<void> check_subtype(const Image& image);
/// Fixups are chains, all of the form that can sign; a loader takes opcodes here for something older.
Result<void> check_form(const Image& image, const Fixups& fixups);
/// Every personality word is signed as the unwinder authenticates it, and no other word is signed at all.
Result<void> check_signed_words(const Image& image, const Fixups& fixups, const UnwindTable& table);
/// No instruction loads a signed word: code takes what it finds in the table of imports for plain. Follows
/// addresses through registers in the order of the code, not through jumps.
Result<void> check_loads(const Image& image, const Fixups& fixups);
/// Every code is for a function with a frame or without one. The unwinder takes each frame's return address
/// for signed, whatever DWARF would say.
Result<void> check_unwinding(const UnwindTable& table);
/// Every function with a frame signs its return address (pacibsp).
Result<void> check_return_addresses(const Image& image, const UnwindTable& table);
/// Initialisers are offsets, which the loader signs itself, where nobody can write.
Result<void> check_initialiser_offsets(const Image& image);

/// All of them, in this order.
Result<void> check_signed_code(const Image& image, const Fixups& fixups, const UnwindTable& table);

}  // namespace wispen::macho
