// tests/device/loader/pointer_signing.hpp: signed pointers, as processors from A12 on make them; other arm64
// machines and emulators with pointer authentication do so too.
#pragma once

#include <cstdint>

#include "wispen/macho/fixups.hpp"

namespace wispen::loader {

/// How C passes functions on arm64e.
inline constexpr macho::Signing kFunctionSigning{macho::Key::IA, false, 0};

/// Whether this processor signs pointers, and this process has keys.
bool keys_are_live();

/// The pointer, signed as it is when it lies at the address; null stays null. Only where keys are live.
std::uint64_t signed_pointer(std::uint64_t plain, const macho::Signing& signing, const void* address);
/// The address in a pointer, signed or not.
std::uint64_t plain_pointer(std::uint64_t pointer);
/// Whether the pointer is null or was signed like this.
bool authenticates(std::uint64_t pointer, const macho::Signing& signing, const void* address);

/// Ends the process with a sentence that says what does not authenticate.
[[noreturn]] void refuse(const char* what);
/// The plain pointer; refused where it does not authenticate.
std::uint64_t authenticated(std::uint64_t pointer, const macho::Signing& signing, const void* address,
                            const char* what);

}  // namespace wispen::loader
