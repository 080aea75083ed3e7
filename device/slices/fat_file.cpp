// device/slices/fat_file.cpp

#include "device/slices/fat_file.hpp"

#include <limits>
#include <vector>

#include "wispen/macho/bytes.hpp"
#include "wispen/macho/format.hpp"

namespace wispen::slices {

namespace {

constexpr std::uint32_t kAlignmentLog2 = 14;
constexpr std::uint64_t kAlignment = std::uint64_t{1} << kAlignmentLog2;

void append_big(std::string& bytes, std::uint32_t number) {
  for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(number >> shift & 0xFF);
}

std::uint64_t rounded_up(std::uint64_t size) { return (size + kAlignment - 1) / kAlignment * kAlignment; }

}  // namespace

Result<std::string> join(std::span<const std::string> images) {
  std::string file;
  append_big(file, macho::kFatMagic);
  append_big(file, static_cast<std::uint32_t>(images.size()));
  std::uint64_t offset = rounded_up(file.size() + images.size() * sizeof(macho::FatEntry));
  std::vector<macho::Header64> headers;
  for (const std::string& image : images) {
    const auto header = macho::read_at<macho::Header64>(image, 0);
    if (!header || header->magic != macho::kMagic64) return Error{"a slice is no 64-bit Mach-O file"};
    for (const macho::Header64& other : headers) {
      if (other.cpu == header->cpu && other.subtype == header->subtype)
        return Error{"two slices are for the same processor"};
    }
    headers.push_back(*header);
    if (offset + image.size() > std::numeric_limits<std::uint32_t>::max())
      return Error{"the slices are too big"};
    append_big(file, header->cpu);
    append_big(file, header->subtype);
    append_big(file, static_cast<std::uint32_t>(offset));
    append_big(file, static_cast<std::uint32_t>(image.size()));
    append_big(file, kAlignmentLog2);
    offset = rounded_up(offset + image.size());
  }
  for (const std::string& image : images) {
    file.resize(rounded_up(file.size()), '\0');
    file += image;
  }
  return file;
}

}  // namespace wispen::slices
