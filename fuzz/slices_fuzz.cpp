// fuzz/slices_fuzz.cpp: any bytes as a linked bundle to be finished, or as an object to be looked at. What is
// finished must be good in the eyes of every reader, and have nothing left to finish.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "device/slices/finish.hpp"
#include "device/slices/objects.hpp"
#include "wispen/macho/fixups.hpp"
#include "wispen/macho/signature.hpp"
#include "wispen/macho/signed_code.hpp"

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace wispen;
  std::string bytes(reinterpret_cast<const char*>(data), size);
  static_cast<void>(slices::check_object(bytes));
  // Most changes break a hash; with new ones they get to what is behind.
  static_cast<void>(slices::sign_anew(bytes));
  const auto finished = slices::finish(bytes);
  if (!finished) return 0;
  require(finished->bytes.size() == bytes.size());
  const auto image = macho::parse_image(finished->bytes);
  require(image.ok());
  const auto fixups = macho::read_fixups(*image);
  require(fixups.ok() && fixups->fixups.size() == finished->fixups);
  const auto table = macho::read_unwind_table(*image);
  require(table.ok() && macho::check_signed_code(*image, *fixups, *table).ok());
  require(macho::check_signature(*image).ok());
  require(!slices::finish(finished->bytes).ok());
  return 0;
}
