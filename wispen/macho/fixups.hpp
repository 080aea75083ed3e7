// wispen/macho/fixups.hpp: what has to be written into an image once its place in memory and the addresses of
// what it imports are known.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/core/result.hpp"
#include "wispen/macho/image.hpp"

namespace wispen::macho {

/// Where an import is looked for, besides a library's ordinal (1 and up).
inline constexpr int kOrdinalSelf = 0;
inline constexpr int kOrdinalMain = -1;
inline constexpr int kOrdinalFlat = -2;
inline constexpr int kOrdinalWeak = -3;

struct Import {
  std::string name;  // with the leading underscore of C names
  int ordinal = 0;
  bool weak = false;  // may stay null
};

enum class Key : std::uint8_t { IA, IB, DA, DB };

/// How a loader signs a pointer: with the key, and with the address of the pointer itself, a constant, or
/// both.
struct Signing {
  Key key = Key::IA;
  bool address_diversity = false;
  std::uint16_t constant = 0;

  bool operator==(const Signing&) const = default;
};

/// One pointer of eight bytes. Either it moves with the image (`target` is its unmoved value) or it becomes
/// the address of an import plus `addend`.
struct Fixup {
  static constexpr std::size_t kRebase = ~std::size_t{0};

  std::uint64_t address = 0;     // unmoved
  std::size_t import = kRebase;  // index into Fixups::imports
  std::uint64_t target = 0;      // unmoved
  std::uint8_t tag = 0;          // the top byte of a moved pointer, which the processor ignores
  std::int64_t addend = 0;
  std::optional<Signing> signing;
};

/// A segment whose pointers are chained.
struct ChainedSegment {
  std::uint64_t starts = 0;  // where its ChainedStartsInSegment lies in the image's bytes
  std::uint16_t form = 0;    // kChainedPointer...
};

struct Fixups {
  /// More than any image has that fits Image::kMostMemory would only cost time.
  static constexpr std::size_t kMost = std::size_t{1} << 20;

  std::vector<Import> imports;
  std::vector<Fixup> fixups;  // in the order in which a loader applies them
  std::vector<ChainedSegment> chained;
};

/// Reads both forms, opcodes (rebase, bind, weak and lazy bind) and chains (64-bit pointers, plain or
/// arm64e's). Every address lies in a writable segment's memory, or in one that is made read-only later;
/// every rebase points into the image, and every ordinal names one of its libraries.
Result<Fixups> read_fixups(const Image& image);

/// The two forms by themselves; the other is not looked at.
Result<void> read_opcodes(const Image& image, Fixups& fixups);
Result<void> read_chains(const Image& image, Fixups& fixups);

/// Checks one fixup against the image and adds it; an error names what is wrong with it.
Result<void> add_fixup(const Image& image, const Fixup& fixup, Fixups& fixups);
/// The same for an import.
Result<void> add_import(const Image& image, Import import, Fixups& fixups);

}  // namespace wispen::macho
