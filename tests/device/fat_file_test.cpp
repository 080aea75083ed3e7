// tests/device/fat_file_test.cpp: slices joined to one file.

#include "device/slices/fat_file.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include "tests/device/image_patches.hpp"
#include "tests/support/temporary_folder.hpp"
#include "wispen/macho/image.hpp"

namespace wispen::testing {
namespace {

using ::testing::HasSubstr;

std::string seed(const std::string& name) { return contents_of(std::string(WISPEN_TEST_SEEDS) + "/" + name); }

TEST(FatFile, HoldsEachSliceUnchangedOnAPageOfItsOwn) {
  const std::array images{seed("macho/arm64-fixup_chains"), seed("macho/arm64e")};
  const auto file = slices::join(images);
  ASSERT_TRUE(file.ok()) << file.error().message;
  // The header, as published: big-endian numbers.
  const auto big = [&](std::size_t at) { return __builtin_bswap32(get<std::uint32_t>(*file, at)); };
  EXPECT_EQ(big(0), 0xCAFEBABE);
  EXPECT_EQ(big(4), 2U);
  EXPECT_EQ(big(8), 0x0100000CU);
  EXPECT_EQ(big(12), 0U);
  EXPECT_EQ(big(16), 0x4000U);
  EXPECT_EQ(big(20), images[0].size());
  EXPECT_EQ(big(24), 14U);
  EXPECT_EQ(big(28), 0x0100000CU);
  EXPECT_EQ(big(32), 0x80000002U);
  EXPECT_EQ(big(36) % 0x4000, 0U);

  const auto read = macho::slices_of(*file);
  ASSERT_TRUE(read.ok()) << read.error().message;
  ASSERT_EQ(read->size(), 2U);
  std::size_t end = 48;
  for (std::size_t i = 0; i < 2; ++i) {
    const macho::Slice& slice = (*read)[i];
    EXPECT_EQ(slice.bytes, images[i]);
    EXPECT_EQ(slice.cpu, macho::parse_image(slice.bytes)->cpu);
    EXPECT_EQ(slice.subtype, macho::parse_image(slice.bytes)->subtype);
    EXPECT_EQ(file->substr(end, slice.offset - end).find_first_not_of('\0'), std::string::npos)
        << "what lies between them is zero";
    end = slice.offset + slice.bytes.size();
  }
  EXPECT_EQ(end, file->size());
}

TEST(FatFile, TakesOneSliceForEachProcessorAndImagesOnly) {
  const std::string image = seed("macho/arm64e");
  EXPECT_THAT(slices::join(std::array{image, image}).error().message, HasSubstr("the same processor"));
  EXPECT_THAT(slices::join(std::array{image, std::string("text")}).error().message,
              HasSubstr("no 64-bit Mach-O"));
}

}  // namespace
}  // namespace wispen::testing
