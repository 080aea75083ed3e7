// tests/device/chain_word_test.cpp: each kind of pointer, as its word stands in a chain.

#include "device/slices/chain_word.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <optional>

namespace wispen::testing {
namespace {

using ::testing::HasSubstr;

constexpr std::uint64_t kBase = 0x4000;
constexpr macho::Signing kPersonality{macho::Key::IA, true, 0};

macho::Fixup bound(std::size_t import, std::int64_t addend = 0, std::optional<macho::Signing> signing = {}) {
  macho::Fixup fixup;
  fixup.address = 0x8000;
  fixup.import = import;
  fixup.addend = addend;
  fixup.signing = signing;
  return fixup;
}

macho::Fixup moved(std::uint64_t target, std::uint8_t tag = 0, std::optional<macho::Signing> signing = {}) {
  macho::Fixup fixup;
  fixup.address = 0x8000;
  fixup.target = target;
  fixup.tag = tag;
  fixup.signing = signing;
  return fixup;
}

struct Golden {
  macho::Fixup fixup;
  std::uint64_t next;
  std::uint64_t word;
};

TEST(ChainWord, HasTheFieldsOfItsKind) {
  // Worked out by hand from the format's published fields.
  const Golden all[] = {
      {bound(5), 8, 0x4008'0000'0000'0005},
      {bound(0xFFFFFF), 0, 0x4000'0000'00FF'FFFF},
      {bound(5, 3), 0, 0x4000'0003'0000'0005},
      {bound(5, -1), 0, 0x4007'FFFF'0000'0005},
      {bound(5, 0, kPersonality), 0, 0xC001'0000'0000'0005},
      {bound(5, 0, kPersonality), 16, 0xC011'0000'0000'0005},
      {bound(5, 0, macho::Signing{macho::Key::DB, false, 0xC1AB}), 0, 0xC006'C1AB'0000'0005},
      {bound(5, 0, macho::Signing{macho::Key::IB, true, 1}), 0, 0xC003'0001'0000'0005},
      {moved(0x8010), 0, 0x0000'0000'0000'4010},
      {moved(0x8010, 0x80), 2047 * 8, 0x3FFC'0000'0000'4010},
      {moved(0x8010, 0, kPersonality), 0, 0x8001'0000'0000'4010},
      {moved(0x8010, 0, macho::Signing{macho::Key::DA, true, 0x6AE1}), 8, 0x800D'6AE1'0000'4010},
  };
  for (const Golden& golden : all) {
    const auto word = slices::chain_word(golden.fixup, kBase, golden.next);
    ASSERT_TRUE(word.ok()) << word.error().message;
    EXPECT_EQ(*word, golden.word) << std::hex << *word << " is not " << golden.word;
  }
}

std::string why_not(const macho::Fixup& fixup, std::uint64_t next = 0) {
  const auto word = slices::chain_word(fixup, kBase, next);
  return word ? "" : word.error().message;
}

TEST(ChainWord, WhatTheFormCannotSayIsRefused) {
  EXPECT_THAT(why_not(bound(5), 12), HasSubstr("eight bytes"));
  macho::Fixup askew = bound(5);
  askew.address = 0x8004;
  EXPECT_THAT(why_not(askew), HasSubstr("eight bytes"));
  EXPECT_THAT(why_not(bound(5), 2048 * 8), HasSubstr("too far apart"));
  EXPECT_THAT(why_not(bound(1 << 24)), HasSubstr("too high a number"));
  EXPECT_EQ(why_not(bound(5, (1 << 18) - 1)), "");
  EXPECT_THAT(why_not(bound(5, 1 << 18)), HasSubstr("too far from its symbol"));
  EXPECT_EQ(why_not(bound(5, -(1 << 18))), "");
  EXPECT_THAT(why_not(bound(5, -(1 << 18) - 1)), HasSubstr("too far from its symbol"));
  EXPECT_THAT(why_not(bound(5, std::numeric_limits<std::int64_t>::min())), HasSubstr("too far"));
  EXPECT_THAT(why_not(bound(5, 1, kPersonality)), HasSubstr("beside a symbol"));
  EXPECT_THAT(why_not(moved(0x8010, 1, kPersonality)), HasSubstr("with a tag"));
  EXPECT_THAT(why_not(moved(kBase + (std::uint64_t{1} << 32), 0, kPersonality)), HasSubstr("points too far"));
  EXPECT_THAT(why_not(moved(kBase + (std::uint64_t{1} << 43))), HasSubstr("points too far"));
}

}  // namespace
}  // namespace wispen::testing
