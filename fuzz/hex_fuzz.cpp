// fuzz/hex_fuzz.cpp: any text as a colour, and back.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "colour/hex_text.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace wispen::colour;
  std::u16string units(size / 2, u'\0');
  for (std::size_t i = 0; i < units.size(); ++i) {
    units[i] = static_cast<char16_t>(data[2 * i] | data[2 * i + 1] << 8);
  }
  // The bytes as text too: most of what is interesting is ASCII.
  for (const std::u16string& text : {units, std::u16string(data, data + size)}) {
    const Components components = components_from_hex(text);
    for (const double value : {components.red, components.green, components.blue}) {
      if (!(value >= 0 && value <= 1)) std::abort();
    }
    const std::string written = hex_from_components(components);
    if (written.size() != 7) std::abort();
    Components again = components_from_hex(std::u16string(written.begin(), written.end()));
    again.alpha = components.alpha;
    if (components.alpha == components.alpha && again != components) std::abort();
  }
  return 0;
}
