// wispen/macho/unwind_table.hpp: how an unwinder gets out of each function of an image: a table of 32-bit
// codes (mach-o/compact_unwind_encoding.h), and DWARF frames for what a code cannot say.
#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "host/core/result.hpp"
#include "wispen/macho/image.hpp"

namespace wispen::macho {

inline constexpr std::uint32_t kUnwindHasLsda = 0x40000000;
inline constexpr std::uint32_t kUnwindModeMask = 0x0F000000;
inline constexpr std::uint32_t kUnwindArm64Frameless = 0x02000000;
inline constexpr std::uint32_t kUnwindArm64Frame = 0x04000000;

/// All offsets are from the image's base.
struct UnwindTable {
  struct Function {
    std::uint32_t offset;
    std::uint32_t size;
    std::uint32_t code;
  };

  std::vector<Function> functions;                             // in order, none over another
  std::vector<std::uint32_t> personalities;                    // words that hold the functions' addresses
  std::vector<std::pair<std::uint32_t, std::uint32_t>> lsdas;  // of a function, in order

  /// The function's table of landing pads.
  std::optional<std::uint32_t> lsda_of(std::uint32_t function) const;
  /// The word with the function's personality; nothing where it has none, or names one that is not there.
  std::optional<std::uint32_t> personality_of(const Function& function) const;
};

/// The image's table, empty where it has none. An error says what is wrong with it.
Result<UnwindTable> read_unwind_table(const Image& image);

/// The addresses (unmoved) of all words through which an unwinder reaches personality functions, by the table
/// and by DWARF frames, in order.
Result<std::vector<std::uint64_t>> personality_words(const Image& image, const UnwindTable& table);

}  // namespace wispen::macho
