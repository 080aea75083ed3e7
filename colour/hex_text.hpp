// colour/hex_text.hpp: colours as hexadecimal text, and how dark they are. Plain arithmetic, no objects.
#pragma once

#include <string>
#include <string_view>

namespace wispen::colour {

/// Red, green, blue and alpha; 0 to 1 where nobody asked for more.
struct Components {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 1;
  friend bool operator==(const Components&, const Components&) = default;
};

/// "#RRGGBB" or "RRGGBB", each with an optional ":" and decimal alpha. Never fails: what cannot be read is 0,
/// digits run on as the platform's scanner runs (white space, "0x", 32 bits that saturate), and the number's
/// low 24 bits count.
Components components_from_hex(std::u16string_view text);

/// "#RRGGBB". Components are multiplied by 255 and truncated; they are neither rounded nor clamped, so that
/// one above 1 gives more digits and one below 0 the eight of its two's complement.
std::string hex_from_components(const Components& components);

/// Whether the luminance, (299 r + 587 g + 114 b) / 1000, is below one half.
bool is_dark(const Components& components);

}  // namespace wispen::colour
