// tests/device/image_patches.hpp: changing one thing of an image's bytes, for tests of what then is refused.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>

#include "wispen/macho/bytes.hpp"
#include "wispen/macho/fixups.hpp"
#include "wispen/macho/format.hpp"
#include "wispen/macho/image.hpp"
#include "wispen/macho/unwind_table.hpp"

namespace wispen::testing {

template <class T>
void put(std::string& bytes, std::size_t at, T value) {
  ASSERT_LE(at + sizeof value, bytes.size());
  std::memcpy(bytes.data() + at, &value, sizeof value);
}

template <class T>
T get(const std::string& bytes, std::size_t at) {
  const auto value = macho::read_at<T>(bytes, at);
  EXPECT_TRUE(value.has_value()) << at;
  return value.value_or(T{});
}

/// Where the command of that number begins.
inline std::size_t command_at(const std::string& image, std::uint32_t number, std::size_t which = 0) {
  std::size_t at = sizeof(macho::Header64);
  for (std::uint32_t i = 0; i < get<macho::Header64>(image, 0).command_count; ++i) {
    const auto command = get<macho::CommandHeader>(image, at);
    if (command.command == number && which-- == 0) return at;
    at += command.size;
  }
  ADD_FAILURE() << "no command " << number;
  return 0;
}

/// Where the record of a section begins.
inline std::size_t section_record_at(const std::string& image, const std::string& name) {
  std::size_t at = sizeof(macho::Header64);
  for (std::uint32_t i = 0; i < get<macho::Header64>(image, 0).command_count; ++i) {
    const auto command = get<macho::CommandHeader>(image, at);
    if (command.command == macho::kCommandSegment64) {
      const auto segment = get<macho::SegmentCommand64>(image, at);
      for (std::uint32_t s = 0; s < segment.section_count; ++s) {
        const std::size_t record = at + sizeof segment + s * sizeof(macho::SectionRecord64);
        if (name == macho::text_of(get<macho::SectionRecord64>(image, record).name)) return record;
      }
    }
    at += command.size;
  }
  ADD_FAILURE() << "no section " << name;
  return 0;
}

/// Where a section's bytes begin.
inline std::size_t section_at(const std::string& image, const std::string& name) {
  return get<macho::SectionRecord64>(image, section_record_at(image, name)).offset;
}

/// Where the bytes of an address (unmoved) lie.
inline std::size_t place_of(const std::string& image, std::uint64_t address) {
  const auto parsed = macho::parse_image(image);
  EXPECT_TRUE(parsed.ok());
  const std::string_view bytes = parsed->bytes_at(address, 1);
  EXPECT_FALSE(bytes.empty()) << address;
  return bytes.empty() ? 0 : static_cast<std::size_t>(bytes.data() - image.data());
}

/// The address of the only personality word.
inline std::uint64_t personality_address(const std::string& image) {
  const auto parsed = macho::parse_image(image);
  const auto table = macho::read_unwind_table(*parsed);
  EXPECT_TRUE(table.ok() && table->personalities.size() == 1);
  return parsed->base() + table->personalities.at(0);
}

/// The first function with a frame.
inline macho::UnwindTable::Function framed_function(const std::string& image) {
  const auto table = macho::read_unwind_table(*macho::parse_image(image));
  for (const auto& function : table->functions) {
    if ((function.code & macho::kUnwindModeMask) == macho::kUnwindArm64Frame) return function;
  }
  ADD_FAILURE() << "no function has a frame";
  return {};
}

/// The first segment's starts of chains.
inline std::size_t starts_at(const std::string& image) {
  const auto fixups = macho::read_fixups(*macho::parse_image(image));
  EXPECT_TRUE(fixups.ok() && !fixups->chained.empty());
  return fixups->chained.at(0).starts;
}

/// The first fixup's word.
inline std::size_t first_word_at(const std::string& image) {
  const auto parsed = macho::parse_image(image);
  const auto fixups = macho::read_fixups(*parsed);
  EXPECT_TRUE(fixups.ok() && !fixups->fixups.empty());
  return place_of(image, fixups->fixups.at(0).address);
}

/// Makes every instruction that signs a return address one that does nothing.
inline void unsign_return_address(std::string& image, const macho::UnwindTable::Function& function) {
  constexpr std::uint32_t kSign = 0xD503237F, kNothing = 0xD503201F;  // pacibsp, nop
  const std::uint64_t base = macho::parse_image(image)->base();
  const std::size_t begin = place_of(image, base + function.offset);
  for (std::size_t at = begin; at < begin + function.size; at += 4) {
    if (get<std::uint32_t>(image, at) == kSign) put(image, at, kNothing);
  }
}

/// Makes the first instruction of the code one that loads the word at an address.
inline void load_plainly(std::string& image, std::uint64_t address) {
  const auto text = get<macho::SectionRecord64>(image, section_record_at(image, "__text"));
  const auto distance = static_cast<std::uint32_t>((address - text.address) / 4) & 0x7FFFF;
  put(image, text.offset, 0x58000000U | distance << 5);  // ldr x0, relative to itself
}

/// Gives a function an unwinding code that sends the unwinder to DWARF.
inline void send_to_dwarf(std::string& image) {
  // The first code that is common to several functions; every compressed page may refer to it.
  const std::size_t table = section_at(image, "__unwind_info");
  const std::size_t codes = table + get<std::uint32_t>(image, table + 4);
  put(image, codes, std::uint32_t{0x03000000});
}

/// Turns the chained fixups into opcodes, of which there are none, as far as the commands say it.
inline void pretend_opcodes(std::string& image) {
  put(image, command_at(image, macho::kCommandChainedFixups), macho::kCommandDataInCode);
  const std::size_t at =
      command_at(image, macho::kCommandDynamicSymbols);  // the longest that is not needed here
  ASSERT_GE(get<macho::CommandHeader>(image, at).size, sizeof(macho::DyldInfoCommand));
  std::memset(image.data() + at + sizeof(macho::CommandHeader), 0,
              sizeof(macho::DyldInfoCommand) - sizeof(macho::CommandHeader));
  put(image, at, macho::kCommandDyldInfoOnly);
}

}  // namespace wispen::testing
