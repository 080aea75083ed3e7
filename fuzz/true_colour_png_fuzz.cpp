// fuzz/true_colour_png_fuzz.cpp: packed pixels from anywhere, in a PNG file whose sums are right (a wrong one
// would end every run at the first chunk); what is read must be what the drawing library reads.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "host/graphics/image_header.hpp"
#include "host/graphics/pixbuf_decoder.hpp"
#include "host/graphics/true_colour_png.hpp"
#include "tests/support/png_file.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace wispen::graphics;
  using wispen::testing::PngFile;
  constexpr std::size_t kAhead = 4;
  if (size < kAhead) return 0;
  const bool alpha = (data[0] & 1) != 0;
  const bool rows = (data[0] & 2) != 0;  // the bytes are rows, to be packed here
  std::string body(reinterpret_cast<const char*>(data) + kAhead, size - kAhead);

  PngFile file;
  file.kind[1] = alpha ? 6 : 2;
  file.width = 1 + data[1] % 64;
  file.height = 1 + data[2] % 64;
  bool sound = false;
  if (rows) {
    const std::size_t row = 1 + std::size_t{file.width} * (alpha ? 4 : 3);
    body.resize(row * file.height);
    sound = true;
    for (std::size_t y = 0; y < file.height; ++y)
      sound = sound && static_cast<std::uint8_t>(body[y * row]) <= 4;
    body = PngFile::deflate(body, data[0] % 10);
  }
  const std::size_t first = std::min<std::size_t>(data[3], body.size());
  file.packed = {body.substr(0, first), body.substr(first)};
  const std::string bytes = file.str();

  const auto pixels = decode_true_colour_png(bytes);
  const bool taken = pixels && *pixels;
  if (sound && !taken) std::abort();
  if (!taken) return 0;
  const auto header = read_image_header(bytes);
  if (!header) std::abort();
  const auto expected = decode_with_pixbuf(bytes, *header);
  // The library also keeps to the distance that a stream's first byte promises, which nothing depends on.
  if (expected ? !(expected->pixels == **pixels) : sound) std::abort();
  return 0;
}
