// fuzz/dominant_colour_fuzz.cpp: image files from anywhere, through the whole road to their colours.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

#include "colour/pixel_groups.hpp"
#include "host/graphics/image_header.hpp"
#include "host/wispen_host.h"
#include "platform/UIKit.hpp"

namespace {

void start_host() {
  std::string folder = (std::filesystem::temp_directory_path() / "wispen-fuzz-XXXXXX").string();
  if (::mkdtemp(folder.data()) == nullptr) std::abort();
  wispen_host_options options{};
  options.size = sizeof options;
  options.root = folder.c_str();
  if (wispen_host_start(&options) != 1 || wispen_host_load_bundle(WISPEN_FUZZ_BUNDLE) == nullptr) {
    std::fprintf(stderr, "%s\n", wispen_host_last_error());
    std::abort();
  }
  std::error_code ignored;
  std::filesystem::remove_all(folder, ignored);
}

void check(const UIColor& color) {
  CGFloat values[4] = {-1, -1, -1, -1};
  if (!color.getRed(&values[0], &values[1], &values[2], &values[3]) || values[3] != 1) std::abort();
  for (const CGFloat value : values) {
    if (!(value >= 0 && value <= 1)) std::abort();
  }
}

/// The same bytes as bare pixels: every kernel must find the same groups.
void check_kernels(const std::uint8_t* data, std::size_t size) {
  using wispen::colour::grouping_kernels;
  const std::size_t count = std::min<std::size_t>(size / 4, 2000);
  for (const int threshold : {27, 50}) {
    const auto plain = grouping_kernels().front().group(data, count, threshold);
    for (const auto& kernel : grouping_kernels()) {
      if (kernel.group(data, count, threshold) != plain) std::abort();
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool started = (start_host(), true);
  if (!started) return 0;
  check_kernels(data, size);

  // Sizes that are allowed but slow would only make the fuzzer wait.
  constexpr std::int64_t kQuickPixels = 1 << 18;
  const auto header = wispen::graphics::read_image_header({reinterpret_cast<const char*>(data), size});
  if (!header || (header->height > 0 && header->width > kQuickPixels / header->height)) return 0;
  const objc::AutoreleasePool pool;
  const UIImage image = UIImage::imageWithData(NSData::dataWithBytes(data, size));
  if (image) {
    check(objc::send<"wispDominantColor", UIColor>(image));
    try {
      check(objc::send<"wispSecondDominantColor", UIColor>(image));
    } catch (...) {  // an image without an opaque pixel raises, by contract
    }
  }
  while (wispen_host_next_problem() != nullptr) {
  }
  return 0;
}
