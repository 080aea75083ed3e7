// tests/device/loader/phone_symbols.hpp: the phone's libraries, as far as a desktop process can stand in for
// them.
#pragma once

#include <string_view>

#include "wispen/macho/fixups.hpp"

namespace wispen::loader {

/// The address of a phone's symbol: one of our own stand-ins, what the host gives to the bundle's C calls, or
/// what this process has under the same name. Null where there is none. The Objective-C runtime, Foundation
/// and the host must be loaded.
void* phone_symbol(const macho::Import& import, std::string_view library);

}  // namespace wispen::loader
