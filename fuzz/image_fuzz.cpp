// fuzz/image_fuzz.cpp: image files from anywhere, decoded, turned, scaled and written again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "host/graphics/bitmap_context.hpp"
#include "host/graphics/image_file.hpp"
#include "host/graphics/image_header.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace wispen;
  using namespace wispen::graphics;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const auto header = read_image_header(bytes);
  // Sizes that are allowed but slow would only make the fuzzer wait; what is larger is refused at once.
  constexpr std::int64_t kQuickPixels = 1 << 20;
  if (header && header->height > 0 && header->width > kQuickPixels / header->height &&
      header->width <= kMaximumPixels / header->height) {
    return 0;
  }
  const auto image = decode_image(bytes, 2);
  if (!image) return 0;
  if (!header || image->pixels()->width() != header->width || image->pixels()->height() != header->height) {
    std::abort();
  }
  const PixelView pixels = image->pixels()->view();
  for (int y = 0; y < pixels.height; ++y) {
    for (int x = 0; x < pixels.width; ++x) {
      const std::uint32_t argb = pixels.at(x, y);
      const std::uint32_t alpha = argb >> 24;
      if (((argb >> 16) & 0xFF) > alpha || ((argb >> 8) & 0xFF) > alpha || (argb & 0xFF) > alpha)
        std::abort();
    }
  }
  auto context = BitmapContext::create(44, 44);
  if (!context) std::abort();
  context->draw(*image, Rect::make(0, 0, 44, 44));
  if (!encode_png(*context->make_image())) std::abort();
  return 0;
}
