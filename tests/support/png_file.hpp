// tests/support/png_file.hpp: PNG files of any make, sound or broken on purpose, put together chunk by chunk.
#pragma once

#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace wispen::testing {

/// Says the bytes of a file. Whatever is changed before is in the file as it stands, sums included.
struct PngFile {
  std::uint32_t width = 1;
  std::uint32_t height = 1;
  std::string kind = std::string("\x08\x02\0\0\0", 5);  ///< depth, kind, packing, filters, order
  std::string before;                                   ///< whole chunks ahead of the pixels
  std::string after;                                    ///< and behind them
  std::vector<std::string> packed;                      ///< the pixels, one string a chunk

  static std::string chunk(std::string_view type, std::string_view data) {
    const std::string summed = std::string(type) + std::string(data);
    return number(data.size()) + summed + number(::crc32(0, bytes(summed), static_cast<uInt>(summed.size())));
  }

  static std::string deflate(std::string_view data, int level = 6) {
    uLongf size = ::compressBound(data.size());
    std::string packed(size, '\0');
    if (::compress2(reinterpret_cast<Bytef*>(packed.data()), &size, bytes(data), data.size(), level) !=
        Z_OK) {
      std::abort();
    }
    packed.resize(size);
    return packed;
  }

  std::string str() const {
    std::string file("\x89PNG\r\n\x1A\n", 8);
    file += chunk("IHDR", number(width) + number(height) + kind) + before;
    for (const std::string& part : packed) file += chunk("IDAT", part);
    return file + after + chunk("IEND", "");
  }

 private:
  static const Bytef* bytes(std::string_view text) { return reinterpret_cast<const Bytef*>(text.data()); }
  static std::string number(std::uint64_t value) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) text += static_cast<char>(value >> shift & 0xFF);
    return text;
  }
};

/// The rows of plain pixels (`bytes_per_pixel` each), filtered as `filter_of` says for each row, ready to be
/// packed. Follows the format's own words, byte by byte.
inline std::string filtered_rows(std::string_view pixels, std::size_t width, std::size_t bytes_per_pixel,
                                 const std::function<int(std::size_t row)>& filter_of) {
  const std::size_t length = width * bytes_per_pixel;
  std::string rows;
  for (std::size_t y = 0; (y + 1) * length <= pixels.size(); ++y) {
    const auto at = [&](std::ptrdiff_t x, std::ptrdiff_t row) -> int {
      if (x < 0 || row < 0) return 0;
      return static_cast<std::uint8_t>(
          pixels[static_cast<std::size_t>(row) * length + static_cast<std::size_t>(x)]);
    };
    const int filter = filter_of(y);
    rows += static_cast<char>(filter);
    for (std::size_t i = 0; i < length; ++i) {
      const auto x = static_cast<std::ptrdiff_t>(i);
      const auto row = static_cast<std::ptrdiff_t>(y);
      const int a = at(x - static_cast<std::ptrdiff_t>(bytes_per_pixel), row);
      const int b = at(x, row - 1);
      const int c = at(x - static_cast<std::ptrdiff_t>(bytes_per_pixel), row - 1);
      const int p = a + b - c;
      const int pa = std::abs(p - a);
      const int pb = std::abs(p - b);
      const int pc = std::abs(p - c);
      const int nearest = pa <= pb && pa <= pc ? a : (pb <= pc ? b : c);
      const int predicted[] = {0, a, b, (a + b) / 2, nearest};
      rows += static_cast<char>(at(x, row) - predicted[std::clamp(filter, 0, 4)]);
    }
  }
  return rows;
}

}  // namespace wispen::testing
