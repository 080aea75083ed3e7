// wispen/macho/signature.cpp

#include "wispen/macho/signature.hpp"

#include <algorithm>

#include "wispen/macho/bytes.hpp"
#include "wispen/macho/sha256.hpp"

namespace wispen::macho {

namespace {

// All numbers of a signature are big-endian.
constexpr std::uint32_t kSuperBlob = 0xFADE0CC0;
constexpr std::uint32_t kCodeDirectory = 0xFADE0C02;
constexpr std::uint32_t kSlotCodeDirectory = 0;
constexpr std::uint32_t kOldestVersion = 0x20001;
constexpr std::uint8_t kHashSha256 = 2;
constexpr std::uint32_t kAdHoc = 0x2;

std::optional<std::uint32_t> big(std::string_view bytes, std::uint64_t offset) {
  const auto raw = read_at<std::uint32_t>(bytes, offset);
  return raw ? std::optional(__builtin_bswap32(*raw)) : std::nullopt;
}

Error broken(const std::string& what) { return Error{"the code signature " + what}; }

/// The bytes of the blob in that slot.
Result<std::string_view> blob_in(std::string_view super, std::uint32_t slot) {
  if (big(super, 0) != kSuperBlob) return broken("does not begin as one");
  const auto length = big(super, 4);
  const auto count = big(super, 8);
  if (!length || !count || *length > super.size() || *count > 64) return broken("is cut off");
  for (std::uint64_t i = 0; i < *count; ++i) {
    const auto kind = big(super, 12 + 8 * i);
    const auto offset = big(super, 16 + 8 * i);
    if (!kind || !offset) return broken("is cut off");
    if (*kind != slot) continue;
    const auto size = big(super, *offset + 4ULL);
    if (!size || !fits(*offset, *size, *length)) return broken("is cut off");
    return super.substr(*offset, *size);
  }
  return broken("has no directory of pages");
}

}  // namespace

bool Signature::ad_hoc() const { return (flags & kAdHoc) != 0; }

Sha256 CodeDirectory::hash_of(std::string_view bytes, std::uint64_t page) const {
  const std::uint64_t begin = page * page_size;
  return sha256(bytes.substr(begin, std::min(page_size, limit - begin)));
}

Result<CodeDirectory> read_code_directory(const Image& image) {
  if (!image.signature) return Error{"the image is not signed"};
  const auto found =
      blob_in(part(image.bytes, image.signature->offset, image.signature->size), kSlotCodeDirectory);
  if (!found) return found.error();
  const std::string_view bytes = *found;
  constexpr std::size_t kShortest = 44;
  if (big(bytes, 0) != kCodeDirectory || bytes.size() < kShortest)
    return broken("has a directory that is none");
  const std::uint32_t version = *big(bytes, 8);
  const std::uint32_t hashes = *big(bytes, 16);
  const std::uint32_t page_count = *big(bytes, 28);
  const std::uint32_t limit = *big(bytes, 32);
  const auto hash_size = static_cast<std::uint8_t>(bytes[36]);
  const auto hash_type = static_cast<std::uint8_t>(bytes[37]);
  const auto page_shift = static_cast<std::uint8_t>(bytes[39]);
  if (version < kOldestVersion) return broken("is of a version that is too old");
  if (hash_type != kHashSha256 || hash_size != Sha256().size()) return broken("does not use SHA-256");
  if (page_shift < 12 || page_shift > 14) return broken("has pages of an odd size");
  if (limit != image.signature->offset) return broken("does not cover the image up to itself");
  const std::uint64_t page_size = std::uint64_t{1} << page_shift;
  if (page_count != (limit + page_size - 1) / page_size) return broken("has not one hash a page");
  if (!fits(hashes, std::uint64_t{page_count} * hash_size, bytes.size()))
    return broken("ends within its hashes");
  const auto identifier = text_at(bytes, *big(bytes, 20));
  if (!identifier) return broken("has no identifier");
  const auto place = static_cast<std::uint64_t>(bytes.data() - image.bytes.data());
  return CodeDirectory{
      std::string(*identifier), *big(bytes, 12), limit, page_size, page_count, place + hashes};
}

Result<Signature> check_signature(const Image& image) {
  const auto directory = read_code_directory(image);
  if (!directory) return directory.error();
  for (std::uint64_t page = 0; page < directory->page_count; ++page) {
    const Sha256 found = directory->hash_of(image.bytes, page);
    const std::string_view told = image.bytes.substr(directory->hashes + page * found.size(), found.size());
    const bool equal =
        std::ranges::equal(told, found, {}, [](char byte) { return static_cast<std::uint8_t>(byte); });
    if (!equal) return broken("does not fit page " + std::to_string(page) + " of the image");
  }
  return Signature{directory->identifier, directory->flags, directory->page_count};
}

}  // namespace wispen::macho
