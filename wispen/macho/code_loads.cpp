// wispen/macho/code_loads.cpp

#include "wispen/macho/code_loads.hpp"

#include <array>
#include <optional>

#include "wispen/macho/bytes.hpp"
#include "wispen/macho/format.hpp"

namespace wispen::macho {

namespace {

/// `count` bits from `first` on, as a number.
constexpr std::uint32_t bits(std::uint32_t word, unsigned first, unsigned count) {
  return word >> first & ((std::uint32_t{1} << count) - 1);
}

/// The same, with the highest bit for the sign.
constexpr std::uint64_t signed_bits(std::uint32_t word, unsigned first, unsigned count) {
  const std::uint64_t value = bits(word, first, count);
  const std::uint64_t sign = std::uint64_t{1} << (count - 1);
  return (value ^ sign) - sign;
}

constexpr std::size_t kStackOrZero = 31;

/// Goes through instructions one after the other and remembers which registers hold an address.
class Follower {
 public:
  explicit Follower(std::vector<CodeLoad>& loads) : loads_(loads) {}

  void take(std::uint32_t word, std::uint64_t address) {
    const std::size_t target = bits(word, 0, 5);
    const std::optional<std::uint64_t> base = registers_[bits(word, 5, 5)];
    if ((word & 0x1F000000) == 0x10000000) {  // adr, adrp
      const std::uint64_t distance = signed_bits(bits(word, 5, 19) << 2 | bits(word, 29, 2), 0, 21);
      const bool page = (word >> 31) != 0;
      set(target, page ? (address & ~std::uint64_t{0xFFF}) + (distance << 12) : address + distance);
    } else if ((word & 0xFF800000) == 0x91000000) {  // add, with a number
      const std::uint64_t more = std::uint64_t{bits(word, 10, 12)} << (bits(word, 22, 1) != 0 ? 12 : 0);
      set(target, base ? std::optional(*base + more) : std::nullopt);
    } else if ((word & 0xFF000000) == 0x58000000) {  // ldr, relative to the instruction
      load(address, address + (signed_bits(word, 5, 19) << 2), 8);
      set(target, std::nullopt);
    } else if ((word & 0xFFC00000) == 0xF9400000) {  // ldr, at an offset
      if (base) load(address, *base + std::uint64_t{bits(word, 10, 12)} * 8, 8);
      set(target, std::nullopt);
    } else if ((word & 0xFFE00000) == 0xF8400000) {  // ldur, and ldr that moves its base
      const bool after = bits(word, 10, 2) == 1;
      if (base) load(address, *base + (after ? 0 : signed_bits(word, 12, 9)), 8);
      if ((word & 0x400) != 0) set(bits(word, 5, 5), std::nullopt);
      set(target, std::nullopt);
    } else if ((word & 0xFE400000) == 0xA8400000) {  // ldp
      const bool after = bits(word, 23, 2) == 1;
      if (base) load(address, *base + (after ? 0 : signed_bits(word, 15, 7) * 8), 16);
      if (bits(word, 23, 1) != 0) set(bits(word, 5, 5), std::nullopt);
      set(target, std::nullopt);
      set(bits(word, 10, 5), std::nullopt);
    } else {
      forget(word, target);
    }
  }

 private:
  void set(std::size_t number, std::optional<std::uint64_t> value) {
    if (number != kStackOrZero) registers_[number] = value;
  }

  void load(std::uint64_t address, std::uint64_t target, std::uint64_t size) {
    loads_.push_back({address, target, size});
  }

  /// What any other instruction writes.
  void forget(std::uint32_t word, std::size_t target) {
    const bool branch = (word & 0x1C000000) == 0x14000000;
    const bool memory = (word & 0x0A000000) == 0x08000000;
    const bool vector = memory && (word & 0x04000000) != 0;
    if (branch) {
      const bool call =
          (word & 0xFC000000) == 0x94000000 || (word & 0xFEFFF000) == 0xD63F0000;  // bl, blr and kin
      if (!call) return;
      for (std::size_t i = 0; i <= 18; ++i) registers_[i].reset();
      registers_[30].reset();
    } else if (!memory) {
      set(target, std::nullopt);
    } else if ((word & 0x3A000000) == 0x28000000) {  // pairs
      if (bits(word, 22, 1) != 0 && !vector) {
        set(target, std::nullopt);
        set(bits(word, 10, 5), std::nullopt);
      }
      if (bits(word, 23, 1) != 0) set(bits(word, 5, 5), std::nullopt);
    } else {
      const bool stores = (word & 0x3A000000) == 0x38000000 && bits(word, 22, 2) == 0;
      if (!stores && !vector) set(target, std::nullopt);
      const bool moves_base = (word & 0x3B200400) == 0x38000400;
      if (moves_base) set(bits(word, 5, 5), std::nullopt);
    }
  }

  std::vector<CodeLoad>& loads_;
  std::array<std::optional<std::uint64_t>, 32> registers_;
};

}  // namespace

std::vector<CodeLoad> code_loads(const Image& image) {
  std::vector<CodeLoad> loads;
  for (const Segment& segment : image.segments) {
    for (const Section& section : segment.sections) {
      if ((section.flags & (kSectionPureInstructions | kSectionSomeInstructions)) == 0) continue;
      if (section.is_zero_fill()) continue;
      const std::string_view code = part(image.bytes, section.offset, section.size);
      Follower follower(loads);
      for (std::uint64_t at = 0; at + 4 <= code.size(); at += 4) {
        follower.take(*read_at<std::uint32_t>(code, at), section.address + at);
      }
    }
  }
  return loads;
}

}  // namespace wispen::macho
