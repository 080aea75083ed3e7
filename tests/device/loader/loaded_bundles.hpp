// tests/device/loader/loaded_bundles.hpp: Mach-O bundles in this process, each loaded once and for good.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "host/core/result.hpp"

namespace wispen::loader {

/// Whether the file's first bytes are a Mach-O file's. False for what cannot be read.
bool is_macho_file(const std::string& path);

/// Maps the bundle, binds it to this process and runs its initialisers; a second time, gives the same handle.
/// The code stays for the life of the process, since classes cannot be taken back. For one thread at a time.
Result<void*> load_bundle(const std::string& path);

struct Place {
  std::string path;
  void* base = nullptr;
  const std::uint64_t* personality_word = nullptr;  // of signed code, through which exceptions pass
};
/// The bundle whose memory holds the address.
std::optional<Place> bundle_around(const void* address);
/// The bundle that was loaded from there, also when the file is gone by now; else null.
void* loaded_bundle(const std::string& path);
bool is_bundle_handle(const void* handle);
/// The address of a symbol that the bundle exports, by its C name; null where it has none.
void* symbol_of(const void* handle, const std::string& name);

}  // namespace wispen::loader
