// host/graphics/image_header.cpp: the kind and size of a picture, read from the first bytes of its file.

#include "host/graphics/image_header.hpp"

namespace wispen::graphics {

namespace {

std::uint32_t byte_at(std::string_view bytes, std::size_t offset) {
  return static_cast<std::uint8_t>(bytes[offset]);
}

std::uint32_t big_endian_16(std::string_view bytes, std::size_t offset) {
  return byte_at(bytes, offset) << 8 | byte_at(bytes, offset + 1);
}

std::uint32_t big_endian_32(std::string_view bytes, std::size_t offset) {
  return big_endian_16(bytes, offset) << 16 | big_endian_16(bytes, offset + 2);
}

std::uint32_t little_endian_16(std::string_view bytes, std::size_t offset) {
  return byte_at(bytes, offset) | byte_at(bytes, offset + 1) << 8;
}

std::uint32_t little_endian_24(std::string_view bytes, std::size_t offset) {
  return little_endian_16(bytes, offset) | byte_at(bytes, offset + 2) << 16;
}

std::optional<ImageHeader> png_header(std::string_view bytes) {
  constexpr std::string_view kSignature("\x89PNG\r\n\x1A\n", 8);
  if (bytes.size() < 24 || !bytes.starts_with(kSignature) || bytes.substr(12, 4) != "IHDR") {
    return std::nullopt;
  }
  return ImageHeader{"png", big_endian_32(bytes, 16), big_endian_32(bytes, 20)};
}

bool is_start_of_frame(std::uint32_t marker) {
  return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

std::optional<ImageHeader> jpeg_header(std::string_view bytes) {
  if (!bytes.starts_with("\xFF\xD8\xFF")) return std::nullopt;
  std::size_t offset = 2;
  while (offset + 9 < bytes.size() && byte_at(bytes, offset) == 0xFF) {
    const std::uint32_t marker = byte_at(bytes, offset + 1);
    if (marker == 0xFF) {  // markers may be preceded by any number of these
      ++offset;
      continue;
    }
    if (is_start_of_frame(marker)) {
      return ImageHeader{"jpeg", big_endian_16(bytes, offset + 7), big_endian_16(bytes, offset + 5)};
    }
    offset += 2 + big_endian_16(bytes, offset + 2);
  }
  return std::nullopt;
}

std::optional<ImageHeader> webp_header(std::string_view bytes) {
  if (bytes.size() < 30 || !bytes.starts_with("RIFF") || bytes.substr(8, 4) != "WEBP") return std::nullopt;
  const std::string_view chunk = bytes.substr(12, 4);
  if (chunk == "VP8X") {
    constexpr std::uint32_t kAnimationFlag = 2;
    return ImageHeader{"webp", std::int64_t{little_endian_24(bytes, 24)} + 1,
                       std::int64_t{little_endian_24(bytes, 27)} + 1,
                       (byte_at(bytes, 20) & kAnimationFlag) != 0};
  }
  if (chunk == "VP8L" && byte_at(bytes, 20) == 0x2F) {
    const std::uint32_t bits = little_endian_24(bytes, 21) | byte_at(bytes, 24) << 24;
    return ImageHeader{"webp", std::int64_t{bits & 0x3FFF} + 1, std::int64_t{(bits >> 14) & 0x3FFF} + 1};
  }
  if (chunk == "VP8 ") {
    return ImageHeader{"webp", little_endian_16(bytes, 26) & 0x3FFF, little_endian_16(bytes, 28) & 0x3FFF};
  }
  return std::nullopt;
}

bool png_is_complete(std::string_view bytes) {
  std::size_t offset = 8;
  while (offset + 12 <= bytes.size()) {
    const std::size_t length = big_endian_32(bytes, offset);
    if (length > bytes.size() - offset - 12) return false;
    if (bytes.substr(offset + 4, 4) == "IEND") return true;
    offset += length + 12;
  }
  return false;
}

bool webp_is_complete(std::string_view bytes) {
  const std::size_t length = little_endian_16(bytes, 4) | std::size_t{little_endian_16(bytes, 6)} << 16;
  return length <= bytes.size() - 8;
}

}  // namespace

std::optional<ImageHeader> read_image_header(std::string_view bytes) {
  if (auto header = png_header(bytes)) return header;
  if (auto header = jpeg_header(bytes)) return header;
  return webp_header(bytes);
}

bool image_is_complete(std::string_view bytes) {
  if (png_header(bytes)) return png_is_complete(bytes);
  if (jpeg_header(bytes)) return bytes.rfind("\xFF\xD9") != std::string_view::npos;
  return webp_header(bytes) && webp_is_complete(bytes);
}

}  // namespace wispen::graphics
