// tests/device/loader/loaded_bundles.cpp

#include "tests/device/loader/loaded_bundles.hpp"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>
#include <vector>

#include "tests/device/loader/compact_unwind.hpp"
#include "tests/device/loader/image_loader.hpp"
#include "tests/device/loader/phone_symbols.hpp"
#include "tests/device/loader/signed_personality.hpp"
#include "tests/device/loader/signed_symbols.hpp"
#include "wispen/macho/bytes.hpp"
#include "wispen/macho/exports.hpp"
#include "wispen/macho/format.hpp"
#include "wispen/macho/unwind_table.hpp"

extern "C" void __register_frame(void* frames);

namespace wispen::loader {

namespace {

struct Bundle {
  std::string path;
  std::string file;
  Mapping mapping;
  std::vector<macho::Export> exports;
  std::string frames;  // the unwinder reads them whenever an exception passes
  const std::uint64_t* personality_word = nullptr;
};

/// Never destroyed: code of the bundles may run until the very end.
std::deque<Bundle>& bundles() {
  static auto* const all = new std::deque<Bundle>();
  return *all;
}

std::string canonical(const std::string& path) {
  std::error_code error;
  const auto found = std::filesystem::canonical(path, error);
  return error ? path : found.string();
}

}  // namespace

bool is_macho_file(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::uint32_t magic = 0;
  file.read(reinterpret_cast<char*>(&magic), sizeof magic);
  return file && (magic == macho::kMagic64 || __builtin_bswap32(magic) == macho::kFatMagic);
}

Result<void*> load_bundle(const std::string& path) {
  if (void* const known = loaded_bundle(path)) return known;
  const std::string place = canonical(path);

  Bundle bundle;
  bundle.path = place;
  std::ifstream file(place, std::ios::binary);
  bundle.file.assign(std::istreambuf_iterator<char>(file), {});
  const auto slice = slice_for_this_machine(bundle.file);
  if (!slice) return slice.error();
  const auto image = macho::parse_image(*slice);
  if (!image) return image.error();
  if (image->file_type != macho::kFileBundle) return Error{"the file is no loadable bundle"};
  const bool arm64e = image->architecture() == "arm64e";
  auto mapping = map_image(*image, arm64e ? phone_symbol_for_signed_code : phone_symbol);
  if (!mapping) return mapping.error();
  bundle.mapping = *std::move(mapping);
  if (arm64e) {
    const auto table = macho::read_unwind_table(*image);
    if (!table) return table.error();
    if (!table->personalities.empty())
      bundle.personality_word =
          reinterpret_cast<const std::uint64_t*>(bundle.mapping.base() + table->personalities.front());
  }
  auto frames = dwarf_frames(*image, bundle.mapping.base(),
                             reinterpret_cast<std::uintptr_t>(&authenticating_personality));
  if (!frames) return frames.error();

  auto exports = macho::read_exports(*image);
  if (!exports) return exports.error();
  bundle.exports = *std::move(exports);

  Bundle& kept = bundles().emplace_back(std::move(bundle));
  kept.frames = *std::move(frames);
  if (!kept.frames.empty()) __register_frame(kept.frames.data());
  if (auto done = run_initialisers(*image, kept.mapping); !done) return done.error();
  return static_cast<void*>(&kept);
}

std::optional<Place> bundle_around(const void* address) {
  for (const Bundle& bundle : bundles()) {
    if (bundle.mapping.holds(address))
      return Place{bundle.path, reinterpret_cast<void*>(bundle.mapping.base()), bundle.personality_word};
  }
  return std::nullopt;
}

void* loaded_bundle(const std::string& path) {
  const auto found = std::ranges::find(bundles(), canonical(path), &Bundle::path);
  return found != bundles().end() ? &*found : nullptr;
}

void* symbol_of(const void* handle, const std::string& name) {
  for (const Bundle& bundle : bundles()) {
    if (&bundle != handle) continue;
    const auto found = std::ranges::find(bundle.exports, "_" + name, &macho::Export::name);
    if (found != bundle.exports.end()) return reinterpret_cast<void*>(bundle.mapping.base() + found->offset);
  }
  return nullptr;
}

bool is_bundle_handle(const void* handle) {
  return std::ranges::any_of(bundles(), [&](const Bundle& bundle) { return &bundle == handle; });
}

}  // namespace wispen::loader
