// wispen/macho/sha256.hpp: SHA-256, as code signatures use it (FIPS 180-4).
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace wispen::macho {

using Sha256 = std::array<std::uint8_t, 32>;

Sha256 sha256(std::string_view bytes);

}  // namespace wispen::macho
