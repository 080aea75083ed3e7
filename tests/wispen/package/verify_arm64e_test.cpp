// tests/wispen/package/verify_arm64e_test.cpp: every way to break the slice for newer phones is named, and
// nothing else is.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "device/slices/chain_word.hpp"
#include "device/slices/fat_file.hpp"
#include "device/slices/finish.hpp"
#include "tests/device/image_patches.hpp"
#include "tests/wispen/package/shipped_package.hpp"

namespace wispen::testing {
namespace {

using macho::Key;
using macho::Signing;
using package::DebFile;

DebFile shipped() { return package_at(WISPEN_TEST_ROOTLESS_PACKAGE); }

/// The bytes of each slice, arm64 first.
std::vector<std::string> slices_in(const std::string& code) {
  std::vector<std::string> slices;
  const auto read = macho::slices_of(code);
  EXPECT_TRUE(read.ok());
  for (const macho::Slice& slice : *read) slices.emplace_back(slice.bytes);
  EXPECT_EQ(slices.size(), 2U);
  return slices;
}

using Change = std::function<void(std::string& slice)>;

/// The slice changed, signed anew so that nothing else is wrong, and joined to the other again.
std::function<void(DebFile&)> in_slice(std::size_t which, Change change, bool sign = true) {
  return [=](DebFile& deb) {
    std::string& code = code_of(deb).bytes;
    std::vector<std::string> slices = slices_in(code);
    change(slices.at(which));
    EXPECT_TRUE(!sign || slices::sign_anew(slices.at(which)).ok());
    const auto joined = slices::join(slices);
    EXPECT_TRUE(joined.ok());
    code = *joined;
  };
}
auto in_arm64e(Change change, bool sign = true) { return in_slice(1, std::move(change), sign); }

/// Signs a fixup in another way, or not at all.
void sign_otherwise(std::string& slice, std::uint64_t address, std::optional<Signing> signing) {
  const auto image = macho::parse_image(slice);
  const auto fixups = macho::read_fixups(*image);
  for (macho::Fixup fixup : fixups->fixups) {
    if (fixup.address != address) continue;
    fixup.signing = signing;
    const std::size_t place = place_of(slice, address);
    const std::uint64_t next = (get<std::uint64_t>(slice, place) >> 51 & 0x7FF) * 8;
    put(slice, place, *slices::chain_word(fixup, image->base(), next));
  }
}

auto with_personality(std::optional<Signing> signing) {
  return in_arm64e([=](std::string& slice) { sign_otherwise(slice, personality_address(slice), signing); });
}

void put_big(std::string& bytes, std::size_t at, std::uint32_t value) {
  put(bytes, at, __builtin_bswap32(value));
}

std::vector<Breakage> breakages() {
  return {
      {"AnOlderSubtype", "subtype", "0x2, which is not arm64e",
       in_arm64e([](std::string& slice) { put(slice, 8, macho::kSubtypeArm64e); })},
      {"AnotherSubtypeInTheFatHeader", "slices", "of the subtype 0x2, and the slice says 0x80000002",
       [](DebFile& deb) { put_big(code_of(deb).bytes, 8 + 20 + 4, macho::kSubtypeArm64e); }},
      {"ASliceOffItsPage", "slices", "16 KB",
       [](DebFile& deb) {
         std::string& code = code_of(deb).bytes;
         const std::uint32_t offset = __builtin_bswap32(get<std::uint32_t>(code, 8 + 20 + 8));
         code.insert(offset, std::string(0x1000, '\0'));
         put_big(code, 8 + 20 + 8, offset + 0x1000);
       }},
      {"TwoSlicesForTheSameProcessor", "slices", "two slices for the same processor",
       [](DebFile& deb) {
         std::string& code = code_of(deb).bytes;
         const std::uint32_t offset = __builtin_bswap32(get<std::uint32_t>(code, 8 + 8));
         put(code, offset + 8, macho::kSubtypeArm64eAbi0);
         put_big(code, 8 + 4, macho::kSubtypeArm64eAbi0);
       }},
      {"TheNewerSliceAlone", "slices", "no arm64 slice",
       [](DebFile& deb) { code_of(deb).bytes = slices_in(code_of(deb).bytes).at(1); }},
      {"ASliceForAnotherProcessor", "slices", "no phone's processor",
       in_arm64e([](std::string& slice) { put(slice, 4, macho::kCpuX86_64); })},
      {"OpcodesForFixups", "form of fixups", "opcodes, which cannot sign", in_arm64e(pretend_opcodes)},
      {"AFormThatCannotSign", "form of fixups", "of the form 6, which cannot sign",
       in_arm64e([](std::string& slice) {
         // Every word of the other form that has the same next one: a chain of one for each page.
         const std::size_t starts = starts_at(slice);
         put(slice, first_word_at(slice), std::uint64_t{1} << 63);
         put(slice, starts + 6, macho::kChainedPointer64Offset);
       })},
      {"AFormThatSignsInTheOlderSlice", "signed pointers", "the form that signs",
       in_slice(0,
                [](std::string& slice) {
                  put(slice, first_word_at(slice), std::uint64_t{1} << 62);
                  put(slice, starts_at(slice) + 6, macho::kChainedPointerArm64e);
                })},
      {"APlainPersonalityWord", "signed pointers", "is not signed", with_personality(std::nullopt)},
      {"APersonalityWordWithAnotherKey", "signed pointers", "another key than IA",
       with_personality(Signing{Key::IB, true, 0})},
      {"APersonalityWordWithoutItsAddress", "signed pointers", "without its own address",
       with_personality(Signing{Key::IA, false, 0})},
      {"APersonalityWordWithAConstant", "signed pointers", "with the constant 0x7ead",
       with_personality(Signing{Key::IA, true, 0x7EAD})},
      {"AnotherSignedWord", "signed pointers", "though no unwinder reads it",
       in_arm64e([](std::string& slice) {
         const auto fixups = macho::read_fixups(*macho::parse_image(slice));
         sign_otherwise(slice, fixups->fixups.front().address, Signing{Key::IA, true, 0});
       })},
      {"APersonalityWordThatNothingWrites", "signed pointers", "no fixup writes",
       in_arm64e([](std::string& slice) {
         const std::size_t table = section_at(slice, "__unwind_info");
         const std::size_t place = table + get<std::uint32_t>(slice, table + 12);
         put(slice, place, get<std::uint32_t>(slice, place) + 4);
       })},
      {"CodeThatLoadsASignedWord", "plain loads", "loads the signed word",
       in_arm64e([](std::string& slice) { load_plainly(slice, personality_address(slice)); })},
      {"AFunctionOfDwarf", "unwinding codes", "not a plain frame", in_arm64e(send_to_dwarf)},
      {"AnUnwindingTableOfAnotherVersion", "unwinding codes", "unknown version",
       in_arm64e(
           [](std::string& slice) { put(slice, section_at(slice, "__unwind_info"), std::uint32_t{2}); })},
      {"AnUnsignedReturnAddress", "return addresses", "does not sign its return address",
       in_arm64e([](std::string& slice) { unsign_return_address(slice, framed_function(slice)); })},
      {"InitialisersThatArePointers", "initialiser offsets", "pointers, not offsets",
       in_arm64e([](std::string& slice) {
         put(slice, section_record_at(slice, "__init_offsets") + 64, macho::kSectionInitPointers);
       })},
      {"InitialisersThatCanBeWritten", "initialiser offsets", "can be written",
       in_arm64e([](std::string& slice) {
         put(slice, command_at(slice, macho::kCommandSegment64) + 60, std::uint32_t{3});
       })},
      {"ASliceThatIsTooBig", "size", "it has 2",
       in_arm64e([](std::string& slice) { slice.resize(240 * 1024); }, false)},
      {"AFlippedBitOfTheNewerSlice", "signature", "does not fit page",
       in_arm64e([](std::string& slice) { slice[0x5000] ^= 1; }, false)},
      {"ACutNewerSlice", "slices", "ends within its slices",
       [](DebFile& deb) { code_of(deb).bytes.resize(code_of(deb).bytes.size() - 0x1000); }},
  };
}

class BrokenNewerSlice : public ::testing::TestWithParam<std::size_t> {};
INSTANTIATE_TEST_SUITE_P(Each, BrokenNewerSlice, ::testing::Range(std::size_t{0}, breakages().size()),
                         [](const auto& test) { return std::string(breakages()[test.param].what); });

TEST_P(BrokenNewerSlice, IsNamedByTheRightCheck) { expect_named(breakages()[GetParam()], shipped()); }

TEST(NewerSlice, JoinedAnewIsClean) {
  // Otherwise the broken ones above could be broken by their maker.
  DebFile deb = shipped();
  const std::string before = code_of(deb).bytes;
  in_arm64e([](std::string&) {})(deb);
  EXPECT_EQ(code_of(deb).bytes, before);
  EXPECT_TRUE(package::verify_package(make_deb(deb), shipped_facts()).clean());
}

TEST(NewerSlice, IsNamedBesideTheOlderOne) {
  const auto report = package::verify_package(make_deb(shipped()), shipped_facts());
  const auto slices = std::ranges::find(report.checks, "slices", &package::Check::name);
  ASSERT_NE(slices, report.checks.end());
  EXPECT_EQ(slices->detail, "arm64 and arm64e");
}

}  // namespace
}  // namespace wispen::testing
