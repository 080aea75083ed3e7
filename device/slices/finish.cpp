// device/slices/finish.cpp

#include "device/slices/finish.hpp"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "device/slices/chain_word.hpp"
#include "wispen/macho/bytes.hpp"
#include "wispen/macho/fixups.hpp"
#include "wispen/macho/format.hpp"
#include "wispen/macho/image.hpp"
#include "wispen/macho/signature.hpp"
#include "wispen/macho/signed_code.hpp"
#include "wispen/macho/unwind_table.hpp"

namespace wispen::slices {

namespace {

using macho::Image;

template <class T>
void put(std::string& bytes, std::uint64_t at, T value) {
  std::memcpy(bytes.data() + at, &value, sizeof value);
}

Result<void> check_linked(const Image& image) {
  if (image.cpu != macho::kCpuArm64) return Error{"the image is not for arm64 processors"};
  if (image.subtype == macho::kSubtypeArm64eAbi0) return Error{"the image is finished already"};
  if (image.subtype != 0) return Error{"the image is not of the subtype that the linker writes"};
  if (image.file_type != macho::kFileBundle) return Error{"the image is no bundle"};
  if (image.dyld_info) return Error{"the image has fixups by opcodes"};
  if (!image.chained_fixups) return Error{"the image has no chained fixups"};
  if (!image.signature || image.signature->offset + image.signature->size != image.bytes.size())
    return Error{"the image does not end with its signature"};
  const auto signature = macho::check_signature(image);
  if (!signature) return signature.error();
  if (!signature->ad_hoc()) return Error{"the signature is not an ad hoc one"};
  return {};
}

Result<void> check_chains(const Image& image, const macho::Fixups& fixups) {
  for (const macho::ChainedSegment& segment : fixups.chained) {
    if (segment.form != macho::kChainedPointer64 && segment.form != macho::kChainedPointer64Offset)
      return Error{"the image has a chain of the form " + std::to_string(segment.form)};
    const auto most = macho::read_at<std::uint32_t>(
        image.bytes, segment.starts + offsetof(macho::ChainedStartsInSegment, most_valid_pointer));
    if (most != 0U) return Error{"the image has pointers that may be numbers"};
  }
  return {};
}

Result<void> rewrite_chains(const Image& image, macho::Fixups& fixups, std::string& bytes) {
  const auto table = macho::read_unwind_table(image);
  if (!table) return table.error();
  const auto words = macho::personality_words(image, *table);
  if (!words) return words.error();
  for (macho::Fixup& fixup : fixups.fixups) {
    if (std::ranges::binary_search(*words, fixup.address)) fixup.signing = macho::kPersonalitySigning;
    const std::string_view old_word = image.bytes_at(fixup.address, 8);
    const std::uint64_t next = (*macho::read_at<std::uint64_t>(old_word, 0) >> 51 & 0xFFF) * 4;
    const auto word = chain_word(fixup, image.base(), next);
    if (!word) return word.error();
    put(bytes, static_cast<std::uint64_t>(old_word.data() - image.bytes.data()), *word);
  }
  for (const macho::ChainedSegment& segment : fixups.chained) {
    put(bytes, segment.starts + offsetof(macho::ChainedStartsInSegment, pointer_format),
        macho::kChainedPointerArm64e);
  }
  return {};
}

/// Reads the result from the start, as everybody else will.
Result<Finished> checked(std::string bytes, std::size_t fixups_before) {
  const auto image = macho::parse_image(bytes);
  if (!image) return image.error();
  const auto fixups = macho::read_fixups(*image);
  if (!fixups) return fixups.error();
  const auto table = macho::read_unwind_table(*image);
  if (!table) return table.error();
  if (auto done = macho::check_signed_code(*image, *fixups, *table); !done) return done.error();
  if (const auto signature = macho::check_signature(*image); !signature) return signature.error();
  if (fixups->fixups.size() != fixups_before) return Error{"a fixup was lost"};
  const auto is_signed = [](const macho::Fixup& fixup) { return fixup.signing.has_value(); };
  const auto count = static_cast<std::size_t>(std::ranges::count_if(fixups->fixups, is_signed));
  return Finished{std::move(bytes), fixups_before, count};
}

}  // namespace

Result<void> sign_anew(std::string& bytes) {
  const auto image = macho::parse_image(bytes);
  if (!image) return image.error();
  const auto directory = macho::read_code_directory(*image);
  if (!directory) return directory.error();
  for (std::uint64_t page = 0; page < directory->page_count; ++page)
    put(bytes, directory->hashes + page * sizeof(macho::Sha256), directory->hash_of(bytes, page));
  return {};
}

Result<Finished> finish(std::string_view linked) {
  const auto image = macho::parse_image(linked);
  if (!image) return image.error();
  if (auto done = check_linked(*image); !done) return done.error();
  auto fixups = macho::read_fixups(*image);
  if (!fixups) return fixups.error();
  if (auto done = check_chains(*image, *fixups); !done) return done.error();

  std::string bytes(linked);
  if (auto done = rewrite_chains(*image, *fixups, bytes); !done) return done.error();
  put(bytes, offsetof(macho::Header64, subtype), macho::kSubtypeArm64eAbi0);
  if (auto done = sign_anew(bytes); !done) return done.error();
  return checked(std::move(bytes), fixups->fixups.size());
}

}  // namespace wispen::slices
