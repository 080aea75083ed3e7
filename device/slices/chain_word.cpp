// device/slices/chain_word.cpp: a pointer's word in a chain of the form that can sign.

#include "device/slices/chain_word.hpp"

namespace wispen::slices {

namespace {

constexpr unsigned kSigned = 63, kBound = 62, kNext = 51;  // where the fields begin
constexpr unsigned kKey = 49, kAddressDiversity = 48, kConstant = 32;
constexpr unsigned kAddend = 32, kTag = 43;

constexpr std::uint64_t below(unsigned bits) { return (std::uint64_t{1} << bits) - 1; }

Result<std::uint64_t> bound(const macho::Fixup& fixup) {
  if (fixup.import > below(24)) return Error{"an import has too high a number"};
  const std::uint64_t word = std::uint64_t{1} << kBound | fixup.import;
  if (fixup.signing) {
    if (fixup.addend != 0) return Error{"a pointer beside a symbol cannot be signed"};
    return word;
  }
  constexpr std::int64_t kMost = (1 << 18) - 1;
  if (fixup.addend > kMost || fixup.addend < -kMost - 1)
    return Error{"a pointer lies too far from its symbol"};
  return word | (static_cast<std::uint64_t>(fixup.addend) & below(19)) << kAddend;
}

Result<std::uint64_t> moved(const macho::Fixup& fixup, std::uint64_t base) {
  const std::uint64_t offset = fixup.target - base;
  if (fixup.signing) {
    if (fixup.tag != 0) return Error{"a pointer with a tag cannot be signed"};
    if (offset > below(32)) return Error{"a signed pointer points too far"};
    return offset;
  }
  if (offset > below(43)) return Error{"a pointer points too far"};
  return std::uint64_t{fixup.tag} << kTag | offset;
}

}  // namespace

Result<std::uint64_t> chain_word(const macho::Fixup& fixup, std::uint64_t base, std::uint64_t next) {
  if (fixup.address % 8 != 0 || next % 8 != 0) return Error{"a fixup does not lie on eight bytes"};
  if (next / 8 > below(11)) return Error{"two fixups of a chain lie too far apart"};
  auto word = fixup.import == macho::Fixup::kRebase ? moved(fixup, base) : bound(fixup);
  if (!word) return word;
  *word |= next / 8 << kNext;
  if (fixup.signing) {
    *word |= std::uint64_t{1} << kSigned | static_cast<std::uint64_t>(fixup.signing->key) << kKey |
             std::uint64_t{fixup.signing->address_diversity} << kAddressDiversity |
             std::uint64_t{fixup.signing->constant} << kConstant;
  }
  return word;
}

}  // namespace wispen::slices
