// fuzz/loader_fuzz.cpp: any bytes as an image that is mapped, fixed up and given frames; nothing of it is
// run.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "tests/device/loader/compact_unwind.hpp"
#include "tests/device/loader/image_loader.hpp"
#include "wispen/macho/exports.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace wispen;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const auto slice = loader::slice_for_this_machine(bytes);
  if (!slice) return 0;
  const auto image = macho::parse_image(*slice);
  if (!image) return 0;
  static int target = 0;
  const auto resolve = [](const macho::Import& import, std::string_view) -> void* {
    return import.name.size() % 8 == 7 ? nullptr : &target;
  };
  const auto mapping = loader::map_image(*image, resolve);
  if (!mapping) return 0;
  for (const macho::Segment& segment : image->segments) {
    if ((segment.protection & 1) == 0) return 0;  // the frames are written from readable memory
  }
  if (const auto frames = loader::dwarf_frames(*image, mapping->base()); frames && frames->size() % 4 != 0)
    __builtin_trap();
  if (const auto exports = macho::read_exports(*image)) {
    for (const macho::Export& symbol : *exports) {
      if (!mapping->holds(reinterpret_cast<const void*>(mapping->base() + symbol.offset))) __builtin_trap();
    }
  }
  return 0;
}
