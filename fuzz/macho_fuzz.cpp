// fuzz/macho_fuzz.cpp: any bytes as a Mach-O file: taken apart, fixups and unwinding codes read, instructions
// followed, signature checked.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "wispen/macho/fixups.hpp"
#include "wispen/macho/image.hpp"
#include "wispen/macho/signature.hpp"
#include "wispen/macho/signed_code.hpp"
#include "wispen/macho/unwind_table.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace wispen::macho;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const auto slices = slices_of(bytes);
  if (!slices) return 0;
  for (const Slice& slice : *slices) {
    const auto image = parse_image(slice.bytes);
    if (!image) continue;
    if (image->memory_size() > Image::kMostMemory) std::abort();
    if (const auto fixups = read_fixups(*image)) {
      for (const Fixup& fixup : fixups->fixups) {
        const Segment* const segment = image->segment_at(fixup.address, 8);
        if (segment == nullptr || !segment->writable()) std::abort();
      }
      if (const auto table = read_unwind_table(*image)) {
        const bool checked = check_signed_code(*image, *fixups, *table).ok();
        if (checked && image->architecture() != "arm64e") std::abort();
        if (!checked) static_cast<void>(check_signed_words(*image, *fixups, *table));
        if (!checked) static_cast<void>(check_loads(*image, *fixups));
      }
    }
    if (const auto signature = check_signature(*image); signature && signature->pages > size) std::abort();
  }
  return 0;
}
