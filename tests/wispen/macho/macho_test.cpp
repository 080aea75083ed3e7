// tests/wispen/macho/macho_test.cpp: reading Mach-O files, good and hostile.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <string>

#include "tests/support/temporary_folder.hpp"
#include "wispen/macho/bytes.hpp"
#include "wispen/macho/exports.hpp"
#include "wispen/macho/fixups.hpp"
#include "wispen/macho/format.hpp"
#include "wispen/macho/image.hpp"
#include "wispen/macho/sha256.hpp"
#include "wispen/macho/signature.hpp"

namespace wispen::testing {
namespace {

using ::testing::HasSubstr;

std::string seed(const std::string& name) { return contents_of(std::string(WISPEN_TEST_SEEDS) + "/" + name); }

template <class T>
void put(std::string& bytes, std::size_t at, T value) {
  std::memcpy(bytes.data() + at, &value, sizeof value);
}

std::string why_no_image(const std::string& bytes) {
  const auto image = macho::parse_image(bytes);
  return image ? "" : image.error().message;
}

constexpr std::size_t kFirstSegment = sizeof(macho::Header64);

TEST(Sha256, GivesThePublishedDigests) {
  const auto hex = [](const macho::Sha256& digest) {
    std::string text;
    char byte[3];
    for (const std::uint8_t value : digest) {
      std::snprintf(byte, sizeof byte, "%02x", value);
      text += byte;
    }
    return text;
  };
  EXPECT_EQ(hex(macho::sha256("")), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(hex(macho::sha256("abc")), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(hex(macho::sha256(std::string(1000000, 'a'))),
            "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(MachO, BothFormsOfFixupsSayTheSame) {
  for (const std::string machine : {"arm64", "x86_64"}) {
    // By import: how often, and what moves.
    const auto summary = [](const std::string& bytes) {
      const auto image = macho::parse_image(bytes);
      EXPECT_TRUE(image.ok());
      const auto fixups = macho::read_fixups(*image);
      EXPECT_TRUE(fixups.ok()) << fixups.error().message;
      std::set<std::string> names;
      for (const macho::Fixup& fixup : fixups->fixups) {
        if (fixup.import != macho::Fixup::kRebase) names.insert(fixups->imports[fixup.import].name);
      }
      names.erase("dyld_stub_binder");  // lazy binding is a matter of the older form only
      return names;
    };
    const auto chains = summary(seed("macho/" + machine + "-fixup_chains"));
    EXPECT_THAT(chains, ::testing::IsSupersetOf({"_malloc", "_free", "_strcmp"}));
    EXPECT_EQ(chains, summary(seed("macho/" + machine + "-no_fixup_chains")));
  }
}

TEST(MachO, AFatFileGivesItsSlices) {
  const std::string fat = seed("macho/fat");
  const auto slices = macho::slices_of(fat);
  ASSERT_TRUE(slices.ok());
  ASSERT_EQ(slices->size(), 2U);
  std::set<std::string> machines;
  for (const macho::Slice& slice : *slices) {
    const auto image = macho::parse_image(slice.bytes);
    machines.insert(image->architecture());
    EXPECT_EQ(slice.cpu, image->cpu);
    EXPECT_EQ(slice.subtype, image->subtype);
    EXPECT_EQ(slice.bytes.data(), fat.data() + slice.offset);
  }
  EXPECT_EQ(machines, (std::set<std::string>{"arm64", "x86_64"}));
  EXPECT_FALSE(macho::slices_of(fat.substr(0, fat.size() / 2)).ok());
  std::string overlapping = fat;
  put(overlapping, 8 + 20 + 8, *macho::read_at<std::uint32_t>(fat, 8 + 8));
  EXPECT_THAT(macho::slices_of(overlapping).error().message, HasSubstr("over each other"));
}

TEST(MachO, CutAnywhereIsAnErrorOrAShorterLinkEdit) {
  const std::string whole = seed("macho/x86_64-fixup_chains");
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const std::string cut = whole.substr(0, size);
    EXPECT_NE(why_no_image(cut), "") << size;
  }
}

TEST(MachO, EveryFlippedBitIsReadOrRefusedButNeverACrash) {
  const std::string whole = seed("macho/x86_64-no_fixup_chains");
  std::size_t refused = 0;
  const std::size_t looked_at = 4096;  // the header, the commands and the first code
  for (std::size_t bit = 0; bit < looked_at * 8; ++bit) {
    std::string bytes = whole;
    bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << (bit % 8)));
    const auto image = macho::parse_image(bytes);
    if (image && macho::read_fixups(*image) && macho::check_signature(*image)) continue;
    ++refused;
  }
  EXPECT_EQ(refused, looked_at * 8) << "the signature covers every one of these bits";
}

TEST(MachO, HugeAndOverlappingSegmentsAreRefused) {
  const std::string whole = seed("macho/x86_64-fixup_chains");
  ASSERT_EQ(why_no_image(whole), "");
  std::string huge = whole;
  put(huge, kFirstSegment + 32, std::uint64_t{1} << 60);  // its size in memory
  EXPECT_THAT(why_no_image(huge), HasSubstr("impossible size"));
  std::string over = whole;
  put(over, kFirstSegment + *macho::read_at<std::uint32_t>(whole, kFirstSegment + 4) + 24, std::uint64_t{0});
  EXPECT_NE(why_no_image(over), "");
  std::string many = whole;
  put(many, 16, std::uint32_t{0xFFFFFFFF});
  EXPECT_THAT(why_no_image(many), HasSubstr("too many load commands"));
  std::string endless = whole;
  put(endless, kFirstSegment + 4, std::uint32_t{0});
  EXPECT_THAT(why_no_image(endless), HasSubstr("wrong size"));
}

TEST(MachO, AnExportTrieThatLeadsBackToItselfIsRefused) {
  // One node without a value; its only child, by the letter "a", is itself.
  std::string bytes = seed("macho/x86_64-fixup_chains");
  auto image = macho::parse_image(bytes);
  ASSERT_TRUE(image.ok());
  const std::string loop("\0\1a\0\0", 5);
  std::memcpy(bytes.data() + 0x800, loop.data(), loop.size());
  image->exports_trie = macho::Range{0x800, loop.size()};
  const auto exports = macho::read_exports(*image);
  EXPECT_FALSE(exports.ok());
}

TEST(MachO, ExportsAreFoundByName) {
  const std::string bytes = seed("loader/x86_64-exceptions-fixup_chains");
  const auto exports = macho::read_exports(*macho::parse_image(bytes));
  ASSERT_TRUE(exports.ok()) << exports.error().message;
  std::set<std::string> names;
  for (const auto& symbol : *exports) names.insert(symbol.name);
  EXPECT_THAT(names, ::testing::IsSupersetOf({"_shown", "_other_shown"}));
}

TEST(Cursor, ReadsTheNumbersOfTheFormat) {
  EXPECT_EQ(macho::Cursor("\xE5\x8E\x26").uleb(), 624485U);
  EXPECT_EQ(macho::Cursor("\xC0\xBB\x78").sleb(), -123456);
  macho::Cursor endless(std::string_view("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 11));
  endless.uleb();
  EXPECT_FALSE(endless.ok());
  macho::Cursor cut(std::string_view("\x80", 1));
  EXPECT_EQ(cut.uleb(), 0U);
  EXPECT_FALSE(cut.ok());
}

}  // namespace
}  // namespace wispen::testing
