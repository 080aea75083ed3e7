// tests/wispen/macho/signed_code_check_test.cpp: arm64e images read, and each thing that must hold in them
// looked at.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "device/slices/chain_word.hpp"
#include "tests/device/image_patches.hpp"
#include "tests/device/loader/compact_unwind.hpp"
#include "tests/device/loader/image_loader.hpp"
#include "tests/device/loader/phone_symbols.hpp"
#include "tests/device/loader/pointer_signing.hpp"
#include "tests/device/loader/signed_personality.hpp"
#include "tests/support/temporary_folder.hpp"
#include "wispen/macho/code_loads.hpp"
#include "wispen/macho/signed_code.hpp"

namespace wispen::testing {
namespace {

using ::testing::HasSubstr;

std::string seed(const std::string& name) { return contents_of(std::string(WISPEN_TEST_SEEDS) + "/" + name); }

std::string arm64e() { return seed("macho/arm64e"); }

std::string fault(const Result<void>& result) { return result ? "" : result.error().message; }

/// What check_signed_code says of the bytes.
std::string fault_of(const std::string& bytes) {
  const auto image = macho::parse_image(bytes);
  if (!image) return image.error().message;
  const auto fixups = macho::read_fixups(*image);
  if (!fixups) return fixups.error().message;
  const auto table = macho::read_unwind_table(*image);
  if (!table) return table.error().message;
  return fault(macho::check_signed_code(*image, *fixups, *table));
}

/// The same with one fixup's signing changed.
std::string fault_with(std::uint64_t address, std::optional<macho::Signing> signing) {
  std::string bytes = arm64e();
  const auto image = macho::parse_image(bytes);
  const auto fixups = macho::read_fixups(*image);
  for (macho::Fixup fixup : fixups->fixups) {
    if (fixup.address != address) continue;
    const std::size_t place = place_of(bytes, address);
    fixup.signing = signing;
    put(bytes, place,
        *slices::chain_word(fixup, image->base(), (get<std::uint64_t>(bytes, place) >> 51 & 0x7FF) * 8));
  }
  return fault_of(bytes);
}

TEST(SignedImage, IsReadAsItWasWritten) {
  // Each golden word in the place of the first one, which then ends the chain.
  struct Golden {
    std::uint64_t word;
    std::size_t import;
    std::uint64_t target;
    std::int64_t addend;
    std::uint8_t tag;
    std::optional<macho::Signing> signing;
  };
  constexpr std::size_t kNone = macho::Fixup::kRebase;
  const Golden all[] = {
      {0x4000'0000'0000'0005, 5, 0, 0, 0, {}},
      {0x4000'0003'0000'0005, 5, 0, 3, 0, {}},
      {0x4007'FFFF'0000'0005, 5, 0, -1, 0, {}},
      {0xC001'0000'0000'0005, 5, 0, 0, 0, macho::Signing{macho::Key::IA, true, 0}},
      {0xC006'C1AB'0000'0005, 5, 0, 0, 0, macho::Signing{macho::Key::DB, false, 0xC1AB}},
      {0x0000'0000'0000'4010, kNone, 0x4010, 0, 0, {}},
      {0x0004'0000'0000'4010, kNone, 0x4010, 0, 0x80, {}},
      {0x8001'0000'0000'4010, kNone, 0x4010, 0, 0, macho::Signing{macho::Key::IA, true, 0}},
      {0x8005'6AE1'0000'4010, kNone, 0x4010, 0, 0, macho::Signing{macho::Key::DA, true, 0x6AE1}},
  };
  const std::size_t place = first_word_at(arm64e());
  for (const Golden& golden : all) {
    std::string bytes = arm64e();
    put(bytes, place, golden.word);
    const auto image = macho::parse_image(bytes);
    const auto fixups = macho::read_fixups(*image);
    ASSERT_TRUE(fixups.ok()) << fixups.error().message;
    const macho::Fixup& fixup = fixups->fixups.front();
    EXPECT_EQ(fixup.import, golden.import) << std::hex << golden.word;
    EXPECT_EQ(fixup.target, golden.import == kNone ? image->base() + golden.target : 0);
    EXPECT_EQ(fixup.addend, golden.addend);
    EXPECT_EQ(fixup.tag, golden.tag);
    EXPECT_EQ(fixup.signing, golden.signing);
  }
}

TEST(SignedImage, WordsThatMeanNothingAreRefused) {
  const std::size_t place = first_word_at(arm64e());
  const auto why_not = [&](std::uint64_t word, std::size_t further = 0) {
    std::string bytes = arm64e();
    put(bytes, place + further, word);
    const auto fixups = macho::read_fixups(*macho::parse_image(bytes));
    return fixups ? "" : fixups.error().message;
  };
  EXPECT_THAT(why_not(0x4000'0000'0100'0005), HasSubstr("bits that mean nothing"));
  EXPECT_THAT(why_not(0x4000'0000'00FF'FFFF), HasSubstr("name an import"));
  EXPECT_THAT(why_not(0x8001'0000'FFFF'FFFF), HasSubstr("points out of the image"));
  EXPECT_THAT(why_not(0x0000'0700'0000'0000), HasSubstr("points out of the image"));
  EXPECT_THAT(why_not(0x7FF8'0000'0000'0005, 8), HasSubstr("leaves its page"));
}

TEST(SignedImage, ThatIsFinishedHasNoFault) { EXPECT_EQ(fault_of(arm64e()), ""); }

TEST(SignedImage, NeedsTheSubtypeOfTheAbi) {
  std::string bytes = arm64e();
  put(bytes, 8, macho::kSubtypeArm64e);
  EXPECT_THAT(fault_of(bytes), HasSubstr("0x2, which is not arm64e of the ABI's version 0"));
}

TEST(SignedImage, NeedsChainsThatCanSign) {
  EXPECT_THAT(fault_of(seed("slices/linked")), HasSubstr("not arm64e of the ABI's version 0"));
  std::string plain = seed("slices/linked");
  put(plain, 8, macho::kSubtypeArm64eAbi0);
  EXPECT_THAT(fault_of(plain), HasSubstr("of the form"));
  std::string opcodes = arm64e();
  pretend_opcodes(opcodes);
  EXPECT_THAT(fault_of(opcodes), HasSubstr("opcodes, which cannot sign"));
}

TEST(SignedImage, NeedsItsPersonalityWordSignedAsTheUnwinderWantsIt) {
  using macho::Key;
  using macho::Signing;
  const std::uint64_t word = personality_address(arm64e());
  EXPECT_EQ(fault_with(word, Signing{Key::IA, true, 0}), "");
  EXPECT_THAT(fault_with(word, {}), HasSubstr("is not signed"));
  EXPECT_THAT(fault_with(word, Signing{Key::IB, true, 0}), HasSubstr("another key than IA"));
  EXPECT_THAT(fault_with(word, Signing{Key::IA, false, 0}), HasSubstr("without its own address"));
  EXPECT_THAT(fault_with(word, Signing{Key::IA, true, 0x7EAD}), HasSubstr("with the constant 0x7ead"));
}

TEST(SignedImage, HasNoOtherSignedWord) {
  const auto image_bytes = arm64e();
  const auto fixups = macho::read_fixups(*macho::parse_image(image_bytes));
  const std::uint64_t first = fixups->fixups.front().address;
  ASSERT_NE(first, personality_address(image_bytes));
  EXPECT_THAT(fault_with(first, macho::kPersonalitySigning), HasSubstr("though no unwinder reads it"));
}

TEST(SignedImage, CodeLoadsEveryWordOfTheTableButTheSignedOne) {
  const std::string bytes = arm64e();
  const auto image = macho::parse_image(bytes);
  std::set<std::uint64_t> loaded;
  for (const macho::CodeLoad& load : macho::code_loads(*image)) {
    for (std::uint64_t at = 0; at < load.size; at += 8) loaded.insert(load.target + at);
  }
  std::size_t found = 0;
  const auto fixups = macho::read_fixups(*image);
  for (const macho::Fixup& fixup : fixups->fixups) {
    if (fixup.import == macho::Fixup::kRebase) continue;
    EXPECT_EQ(loaded.contains(fixup.address), !fixup.signing.has_value()) << std::hex << fixup.address;
    ++found;
  }
  EXPECT_GT(found, 30U)
      << "the scan must follow what the linker writes, or it would find nothing wrong either";
}

TEST(SignedImage, EveryWayToLoadAWordIsFollowed) {
  const std::uint64_t word = personality_address(arm64e());
  const auto text = get<macho::SectionRecord64>(arm64e(), section_record_at(arm64e(), "__text"));
  const std::uint64_t pages = (word >> 12) - (text.address >> 12);
  const std::uint64_t low = word & 0xFFF;
  const auto adrp = static_cast<std::uint32_t>(0x90000001 | (pages & 3) << 29 | (pages >> 2 & 0x7FFFF) << 5);
  const auto add = static_cast<std::uint32_t>(0x91000021 | low << 10);  // x1, x1
  const std::uint32_t nothing = 0xD503201F;
  const std::vector<std::vector<std::uint32_t>> ways = {
      {adrp, static_cast<std::uint32_t>(0xF9400020 | low / 8 << 10)},  // ldr x0, [x1, #low]
      {adrp, nothing, add, 0xF9400020},                                // ldr x0, [x1]
      {adrp, add, 0xF8408420},                                         // ldr x0, [x1], #8
      {adrp, add, 0xA9400820},                                         // ldp x0, x2, [x1]
      {adrp, add, 0xA97F8820},                                         // ldp x0, x2, [x1, #-8]: the second
      {adrp, add, 0xF8400020},                                         // ldur x0, [x1]
      {static_cast<std::uint32_t>(0x10000001 | ((word - text.address) >> 2) << 5), 0xF9400020},  // adr x1
  };
  for (std::size_t i = 0; i < ways.size(); ++i) {
    std::string bytes = arm64e();
    for (std::size_t k = 0; k < ways[i].size(); ++k) put(bytes, text.offset + 4 * k, ways[i][k]);
    EXPECT_THAT(fault_of(bytes), HasSubstr("loads the signed word")) << i;
  }
  // What was written over meanwhile, or lost in a call, is not an address any more.
  for (const std::uint32_t between :
       {0xAA0203E1U /* mov x1, x2 */, 0xF9400041U /* ldr x1, [x2] */, 0x94000000U /* bl */,
        0xD63F0040U /* blr x2 */, 0xA9400441U /* ldp x1, x1 */}) {
    std::string bytes = arm64e();
    put(bytes, text.offset, adrp);
    put(bytes, text.offset + 4, between);
    put(bytes, text.offset + 8, static_cast<std::uint32_t>(0xF9400020 | low / 8 << 10));
    EXPECT_THAT(fault_of(bytes), ::testing::Not(HasSubstr("loads the signed word"))) << std::hex << between;
  }
}

TEST(SignedImage, NeedsPlainFramesWithSignedReturnAddresses) {
  std::string dwarf = arm64e();
  send_to_dwarf(dwarf);
  EXPECT_THAT(fault_of(dwarf), HasSubstr("not a plain frame"));
  std::string plain = arm64e();
  unsign_return_address(plain, framed_function(plain));
  EXPECT_THAT(fault_of(plain), HasSubstr("does not sign its return address"));
}

TEST(SignedImage, NeedsInitialiserOffsetsThatNobodyCanWrite) {
  std::string pointers = arm64e();
  put(pointers, section_record_at(pointers, "__init_offsets") + 64, macho::kSectionInitPointers);
  EXPECT_THAT(fault_of(pointers), HasSubstr("are pointers"));
  std::string writable = arm64e();
  put(writable, command_at(writable, macho::kCommandSegment64) + 60, std::uint32_t{3});
  EXPECT_THAT(fault_of(writable), HasSubstr("can be written"));
}

TEST(SignedImage, DwarfFramesNameTheirPersonalityWords) {
  // A common record of its own, in the place of the strings, whose only pointer is to the word.
  std::string bytes = arm64e();
  const std::size_t record = section_record_at(bytes, "__cstring");
  auto section = get<macho::SectionRecord64>(bytes, record);
  std::memset(section.name, 0, sizeof section.name);
  std::memcpy(section.name, "__eh_frame", 10);
  put(bytes, record, section);
  const std::uint64_t word = personality_address(bytes);
  std::string frames("\x16\0\0\0\0\0\0\0\1zPLRB\0\1\x78\x1E\x07\x9B", 20);
  const auto distance = static_cast<std::uint32_t>(word + 8 - (section.address + frames.size()));
  frames.append(reinterpret_cast<const char*>(&distance), 4);
  frames += std::string("\0\x1B\0\0\0\0", 6);
  ASSERT_LE(frames.size(), section.size);
  bytes.replace(section.offset, frames.size(), frames);
  const auto image = macho::parse_image(bytes);
  const auto words = macho::personality_words(*image, *macho::read_unwind_table(*image));
  ASSERT_TRUE(words.ok()) << words.error().message;
  EXPECT_EQ(*words, (std::vector<std::uint64_t>{word, word + 8}));
  bytes[section.offset + 19] = 0;  // an absolute pointer, which would have to be a fixup
  const auto other = macho::parse_image(bytes);
  EXPECT_FALSE(macho::personality_words(*other, *macho::read_unwind_table(*other)).ok());
}

TEST(SignedFrames, HaveSignedReturnAddressesAndThePersonalityThatAuthenticates) {
  const std::string bytes = arm64e();
  const auto image = macho::parse_image(bytes);
  const auto personality = reinterpret_cast<std::uintptr_t>(&loader::authenticating_personality);
  const auto frames = loader::dwarf_frames(*image, 0x10000000, personality);
  ASSERT_TRUE(frames.ok()) << frames.error().message;
  const auto table = macho::read_unwind_table(*image);
  std::size_t commons = 0, framed = 0, with_personality = 0;
  for (std::size_t at = 0; get<std::uint32_t>(*frames, at) != 0; at += 4 + get<std::uint32_t>(*frames, at)) {
    if (get<std::uint32_t>(*frames, at + 4) == 0) {
      ++commons;
      const std::string letters = frames->c_str() + at + 9;
      EXPECT_THAT(letters, ::testing::AnyOf("zRB", "zPLRB"));
      if (letters == "zPLRB") {
        EXPECT_EQ(get<std::uint64_t>(*frames, at + 20), personality);
        ++with_personality;
      }
      continue;
    }
    const std::uint64_t function = get<std::uint64_t>(*frames, at + 8) - 0x10000000;
    const auto found = std::ranges::find(table->functions, function, &macho::UnwindTable::Function::offset);
    ASSERT_NE(found, table->functions.end());
    const bool frame = (found->code & macho::kUnwindModeMask) == macho::kUnwindArm64Frame;
    // The frame's address, both saved registers, and then that the return address is signed.
    const std::string rules("\x0C\x1D\x10\x9E\x01\x9D\x02\x2D", 8);
    const std::string record = frames->substr(at, 4 + get<std::uint32_t>(*frames, at));
    EXPECT_EQ(record.find(rules) != std::string::npos, frame);
    framed += frame;
  }
  EXPECT_EQ(commons, 2U);
  EXPECT_EQ(with_personality, 1U);
  EXPECT_GT(framed, 20U);
}

TEST(SignedFrames, OfUnsignedCodeAreAsBefore) {
  const std::string bytes = seed("loader/arm64-exceptions-fixup_chains");
  const auto frames = loader::dwarf_frames(*macho::parse_image(bytes),
                                           reinterpret_cast<std::uintptr_t>(bytes.data()) - 0x4000);
  ASSERT_TRUE(frames.ok());
  EXPECT_EQ(frames->find("RB"), std::string::npos);
}

TEST(SignedImage, IsNotMappedWhereThereAreNoKeys) {
  if (loader::keys_are_live()) GTEST_SKIP() << "this processor has keys";
  const std::string bytes = arm64e();
  const auto mapping = loader::map_image(*macho::parse_image(bytes), loader::phone_symbol);
  ASSERT_FALSE(mapping.ok());
  EXPECT_THAT(mapping.error().message, HasSubstr("signs no pointers"));
  EXPECT_FALSE(loader::slice_for_this_machine(bytes).ok());
}

}  // namespace
}  // namespace wispen::testing
