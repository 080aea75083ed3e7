// fuzz/loader_fuzz.cpp: any bytes as an image that is mapped, fixed up and given frames; nothing of it is
// run.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "tests/device/loader/compact_unwind.hpp"
#include "tests/device/loader/image_loader.hpp"
#include "wispen/macho/exports.hpp"

namespace {

using namespace wispen;

void load(const macho::Image& image) {
  // Never mapped where the processor signs no pointers; its frames are written from the file alone.
  if (image.architecture() == "arm64e") {
    if (const auto frames = loader::dwarf_frames(image, 0, 1); frames && frames->size() % 4 != 0)
      __builtin_trap();
  }
  static int target = 0;
  const auto resolve = [](const macho::Import& import, std::string_view) -> void* {
    return import.name.size() % 8 == 7 ? nullptr : &target;
  };
  const auto mapping = loader::map_image(image, resolve);
  if (!mapping) return;
  for (const macho::Segment& segment : image.segments) {
    if ((segment.protection & 1) == 0) return;  // the frames are written from readable memory
  }
  if (const auto frames = loader::dwarf_frames(image, mapping->base()); frames && frames->size() % 4 != 0)
    __builtin_trap();
  if (const auto exports = macho::read_exports(image)) {
    for (const macho::Export& symbol : *exports) {
      if (!mapping->holds(reinterpret_cast<const void*>(mapping->base() + symbol.offset))) __builtin_trap();
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  static_cast<void>(loader::slice_for_this_machine(bytes));
  // Those of other machines too: nothing of them is run.
  const auto slices = macho::slices_of(bytes);
  if (!slices) return 0;
  for (const macho::Slice& slice : *slices) {
    if (const auto image = macho::parse_image(slice.bytes)) load(*image);
  }
  return 0;
}
