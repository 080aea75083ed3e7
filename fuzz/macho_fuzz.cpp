// fuzz/macho_fuzz.cpp: any bytes as a Mach-O file: taken apart, fixups read, signature checked.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "device/macho/fixups.hpp"
#include "device/macho/image.hpp"
#include "device/macho/signature.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace wispen::macho;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const auto slices = slices_of(bytes);
  if (!slices) return 0;
  for (const std::string_view slice : *slices) {
    const auto image = parse_image(slice);
    if (!image) continue;
    if (image->memory_size() > Image::kMostMemory) std::abort();
    if (const auto fixups = read_fixups(*image)) {
      for (const Fixup& fixup : fixups->fixups) {
        const Segment* const segment = image->segment_at(fixup.address, 8);
        if (segment == nullptr || !segment->writable()) std::abort();
      }
    }
    if (const auto signature = check_signature(*image); signature && signature->pages > size) std::abort();
  }
  return 0;
}
