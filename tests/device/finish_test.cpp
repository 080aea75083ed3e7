// tests/device/finish_test.cpp: linked bundles made arm64e ones, and every kind that is refused.

#include "device/slices/finish.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "tests/device/image_patches.hpp"
#include "tests/support/temporary_folder.hpp"
#include "wispen/macho/signature.hpp"
#include "wispen/macho/signed_code.hpp"

namespace wispen::testing {
namespace {

using ::testing::HasSubstr;

std::string seed(const std::string& name) { return contents_of(std::string(WISPEN_TEST_SEEDS) + "/" + name); }

std::string linked() { return seed("slices/linked"); }

TEST(Finish, GivesTheBytesOnRecord) {
  const auto finished = slices::finish(linked());
  ASSERT_TRUE(finished.ok()) << finished.error().message;
  EXPECT_EQ(finished->bytes, seed("macho/arm64e")) << "the same input gives the same bytes";
  EXPECT_EQ(finished->signed_words, 1U);
  EXPECT_GT(finished->fixups, 30U);
}

TEST(Finish, ChangesFourThingsOnly) {
  const std::string before = linked();
  const std::string after = slices::finish(before)->bytes;
  ASSERT_EQ(after.size(), before.size());
  const auto image = macho::parse_image(before);
  const auto fixups = macho::read_fixups(*image);
  const auto directory = macho::read_code_directory(*image);
  std::string expected = after;
  const auto take_back = [&](std::size_t at, std::size_t size) {
    expected.replace(at, size, before, at, size);
  };
  take_back(offsetof(macho::Header64, subtype), 4);
  for (const auto& segment : fixups->chained) take_back(segment.starts + 6, 2);
  for (const auto& fixup : fixups->fixups) take_back(place_of(before, fixup.address), 8);
  take_back(directory->hashes, directory->page_count * sizeof(macho::Sha256));
  EXPECT_EQ(expected, before);
}

TEST(Finish, KeepsEveryFixupAndSignsThePersonalityWord) {
  const std::string before = linked();
  const std::string after = slices::finish(before)->bytes;
  const auto old_image = macho::parse_image(before);
  const auto new_image = macho::parse_image(after);
  const auto old_fixups = macho::read_fixups(*old_image);
  const auto new_fixups = macho::read_fixups(*new_image);
  ASSERT_TRUE(new_fixups.ok()) << new_fixups.error().message;
  ASSERT_EQ(new_fixups->fixups.size(), old_fixups->fixups.size());
  EXPECT_EQ(new_image->architecture(), "arm64e");
  std::size_t moved = 0;
  for (std::size_t i = 0; i < new_fixups->fixups.size(); ++i) {
    const macho::Fixup& was = old_fixups->fixups[i];
    const macho::Fixup& is = new_fixups->fixups[i];
    EXPECT_EQ(is.address, was.address);
    EXPECT_EQ(is.import, was.import);
    EXPECT_EQ(is.target, was.target);
    EXPECT_EQ(is.addend, was.addend);
    moved += is.import == macho::Fixup::kRebase;
    if (is.address == personality_address(after)) {
      EXPECT_EQ(is.signing, macho::kPersonalitySigning);
      EXPECT_EQ(new_fixups->imports[is.import].name, "___gxx_personality_v0");
    } else {
      EXPECT_FALSE(is.signing.has_value()) << is.address;
    }
  }
  EXPECT_GT(moved, 0U) << "a pointer that moves with the image should be among them";
}

struct Damage {
  const char* what;
  const char* why;  // a part of the error
  std::function<void(std::string&)> damage;
  bool sign = true;  // anew, so that nothing but the damage is wrong
};

std::vector<Damage> damages() {
  return {
      {"AnotherProcessor", "not for arm64 processors",
       [](std::string& image) { put(image, 4, macho::kCpuX86_64); }},
      {"ALibrary", "not a bundle", [](std::string& image) { put(image, 12, std::uint32_t{6}); }},
      {"OneThatIsFinished", "finished already", [](std::string& image) { image = seed("macho/arm64e"); }},
      {"AnOlderSubtype", "not of the subtype",
       [](std::string& image) { put(image, 8, macho::kSubtypeArm64e); }},
      {"Opcodes", "fixups by opcodes", [](std::string& image) { pretend_opcodes(image); }},
      {"NoFixups", "no chained fixups",
       [](std::string& image) {
         put(image, command_at(image, macho::kCommandChainedFixups), macho::kCommandDataInCode);
       }},
      {"SomethingBehindTheSignature", "end with its signature", [](std::string& image) { image += "more"; }},
      {"AFlippedBit", "does not fit page", [](std::string& image) { image[0x4100] ^= 1; }, false},
      {"AnUnknownForm", "of the form 3",
       [](std::string& image) { put(image, starts_at(image) + 6, std::uint16_t{3}); }},
      {"AFormThatSigns", "of the form 12",
       [](std::string& image) { put(image, starts_at(image) + 6, macho::kChainedPointerArm64e); }},
      {"PointersThatMayBeNumbers", "may be numbers",
       [](std::string& image) { put(image, starts_at(image) + 16, std::uint32_t{0x1000}); }},
      {"AChainThatLeavesItsPage", "a chain that leaves",
       [](std::string& image) {
         const std::size_t at = first_word_at(image);
         put(image, at, get<std::uint64_t>(image, at) | std::uint64_t{0xFFF} << 51);
       }},
      {"AFixupThatLiesAskew", "eight bytes",
       [](std::string& image) {
         const std::size_t at = first_word_at(image);
         put(image, at,
             (get<std::uint64_t>(image, at) & ~(std::uint64_t{0xFFF} << 51)) | std::uint64_t{3} << 51);
         put(image, at + 12, std::uint64_t{1} << 63);
       }},
      {"APersonalityWordThatNothingWrites", "no fixup writes",
       [](std::string& image) {
         const std::size_t table = section_at(image, "__unwind_info");
         const std::size_t place = table + get<std::uint32_t>(image, table + 12);
         put(image, place, get<std::uint32_t>(image, place) + 4);
       }},
      {"AnUnwindingTableOfAnotherVersion", "unknown version",
       [](std::string& image) { put(image, section_at(image, "__unwind_info"), std::uint32_t{2}); }},
      {"AFunctionOfDwarf", "not a plain frame", [](std::string& image) { send_to_dwarf(image); }},
      {"AnUnsignedReturnAddress", "does not sign its return address",
       [](std::string& image) { unsign_return_address(image, framed_function(image)); }},
      {"CodeThatIsNotSigned", "does not sign its return address",
       [](std::string& image) { image = seed("slices/unsigned"); }},
      {"CodeThatLoadsASignedWord", "loads the signed word",
       [](std::string& image) { load_plainly(image, personality_address(image)); }},
      {"InitialisersThatArePointers", "pointers, not offsets",
       [](std::string& image) {
         put(image, section_record_at(image, "__init_offsets") + 64, macho::kSectionInitPointers);
       }},
      {"InitialisersThatCanBeWritten", "can be written",
       [](std::string& image) {
         put(image, command_at(image, macho::kCommandSegment64) + 60, std::uint32_t{3});
       }},
  };
}

class DamagedBundle : public ::testing::TestWithParam<std::size_t> {};
INSTANTIATE_TEST_SUITE_P(Each, DamagedBundle, ::testing::Range(std::size_t{0}, damages().size()),
                         [](const auto& test) { return std::string(damages()[test.param].what); });

TEST_P(DamagedBundle, IsRefusedByName) {
  const Damage damage = damages()[GetParam()];
  std::string image = linked();
  damage.damage(image);
  if (damage.sign) static_cast<void>(slices::sign_anew(image));
  const auto finished = slices::finish(image);
  ASSERT_FALSE(finished.ok());
  EXPECT_THAT(finished.error().message, HasSubstr(damage.why));
}

TEST(Finish, CutAnywhereIsRefused) {
  const std::string whole = linked();
  for (std::size_t size = 0; size < whole.size(); size += 1 + size / 200) {
    EXPECT_FALSE(slices::finish(std::string_view(whole).substr(0, size)).ok()) << size;
  }
}

TEST(Finish, EveryFlippedBitOfItsTablesIsRefusedOrHarmless) {
  // Signed anew after each, so that the readers of everything else are reached.
  const std::string whole = linked();
  const auto image = macho::parse_image(whole);
  const auto try_range = [&](std::size_t begin, std::size_t size) {
    for (std::size_t bit = begin * 8; bit < (begin + size) * 8; bit += 3) {
      std::string bytes = whole;
      bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << (bit % 8)));
      if (!slices::sign_anew(bytes)) continue;
      const auto finished = slices::finish(bytes);
      EXPECT_TRUE(!finished || macho::check_signature(*macho::parse_image(finished->bytes)).ok()) << bit;
    }
  };
  try_range(0, sizeof(macho::Header64) + sizeof(macho::SegmentCommand64));
  try_range(image->chained_fixups->offset, 64);
  const std::size_t table = section_at(whole, "__unwind_info");
  try_range(table, 64);
}

}  // namespace
}  // namespace wispen::testing
