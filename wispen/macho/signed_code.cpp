// wispen/macho/signed_code.cpp

#include "wispen/macho/signed_code.hpp"

#include <algorithm>
#include <cstdio>
#include <string>

#include "wispen/macho/bytes.hpp"
#include "wispen/macho/code_loads.hpp"
#include "wispen/macho/format.hpp"

namespace wispen::macho {

namespace {

constexpr std::uint32_t kSignReturnAddress = 0xD503237F;  // pacibsp

std::string hexadecimal(std::uint64_t number) {
  char text[24];
  std::snprintf(text, sizeof text, "0x%llx", static_cast<unsigned long long>(number));
  return text;
}

std::string name_of(const Fixup& fixup, const Fixups& fixups) {
  return fixup.import == Fixup::kRebase ? "a pointer into the image" : fixups.imports[fixup.import].name;
}

std::string difference(const Signing& found) {
  if (found.key != kPersonalitySigning.key) return "with another key than IA";
  if (!found.address_diversity) return "without its own address";
  return "with the constant " + hexadecimal(found.constant);
}

}  // namespace

Result<void> check_subtype(const Image& image) {
  if (image.cpu != kCpuArm64 || image.subtype != kSubtypeArm64eAbi0)
    return Error{"the header says " + hexadecimal(image.subtype) +
                 ", which is not arm64e of the ABI's version 0"};
  return {};
}

Result<void> check_form(const Image& image, const Fixups& fixups) {
  if (image.dyld_info) return Error{"the fixups are opcodes, which cannot sign"};
  if (!image.chained_fixups) return Error{"there are no chained fixups"};
  for (const ChainedSegment& segment : fixups.chained) {
    if (segment.form != kChainedPointerArm64e) {
      return Error{"there is a chain of the form " + std::to_string(segment.form) + ", which cannot sign"};
    }
  }
  return {};
}

Result<void> check_signed_words(const Image& image, const Fixups& fixups, const UnwindTable& table) {
  const auto words = personality_words(image, table);
  if (!words) return words.error();
  for (const std::uint64_t word : *words) {
    if (std::ranges::find(fixups.fixups, word, &Fixup::address) == fixups.fixups.end())
      return Error{"no fixup writes the personality word at " + hexadecimal(word)};
  }
  for (const Fixup& fixup : fixups.fixups) {
    const bool personality = std::ranges::binary_search(*words, fixup.address);
    if (personality && !fixup.signing) {
      return Error{"the personality word at " + hexadecimal(fixup.address) + " is not signed"};
    }
    if (personality && *fixup.signing != kPersonalitySigning) {
      return Error{"the personality word at " + hexadecimal(fixup.address) + " is signed " +
                   difference(*fixup.signing)};
    }
    if (!personality && fixup.signing) {
      return Error{"the word at " + hexadecimal(fixup.address) + " (" + name_of(fixup, fixups) +
                   ") is signed, though no unwinder reads it"};
    }
  }
  return {};
}

Result<void> check_loads(const Image& image, const Fixups& fixups) {
  std::vector<std::uint64_t> signed_words;
  for (const Fixup& fixup : fixups.fixups) {
    if (fixup.signing) signed_words.push_back(fixup.address);
  }
  std::ranges::sort(signed_words);
  for (const CodeLoad& load : code_loads(image)) {
    const auto word = std::ranges::lower_bound(signed_words, load.target);
    if (word != signed_words.end() && *word < load.target + load.size) {
      return Error{"the instruction at " + hexadecimal(load.instruction) + " loads the signed word at " +
                   hexadecimal(*word)};
    }
  }
  return {};
}

Result<void> check_unwinding(const UnwindTable& table) {
  for (const UnwindTable::Function& function : table.functions) {
    const std::uint32_t mode = function.code & kUnwindModeMask;
    if (mode != kUnwindArm64Frame && mode != kUnwindArm64Frameless) {
      return Error{"the function at " + hexadecimal(function.offset) + " has the unwinding code " +
                   hexadecimal(function.code) + ", which is no plain frame"};
    }
  }
  return {};
}

Result<void> check_return_addresses(const Image& image, const UnwindTable& table) {
  for (const UnwindTable::Function& function : table.functions) {
    if ((function.code & kUnwindModeMask) != kUnwindArm64Frame) continue;
    const std::string_view code = image.bytes_at(image.base() + function.offset, function.size);
    bool found = false;
    for (std::uint64_t at = 0; at + 4 <= code.size() && !found; at += 4) {
      found = read_at<std::uint32_t>(code, at) == kSignReturnAddress;
    }
    if (!found)
      return Error{"the function at " + hexadecimal(function.offset) + " does not sign its return address"};
  }
  return {};
}

Result<void> check_initialiser_offsets(const Image& image) {
  for (const Segment& segment : image.segments) {
    for (const Section& section : segment.sections) {
      if (section.type() == kSectionInitPointers)
        return Error{"the initialisers in " + section.name + " are pointers, not offsets"};
      if (section.type() == kSectionInitOffsets && segment.writable())
        return Error{"the initialisers in " + segment.name + " lie where they can be written"};
    }
  }
  return {};
}

Result<void> check_signed_code(const Image& image, const Fixups& fixups, const UnwindTable& table) {
  if (auto done = check_subtype(image); !done) return done;
  if (auto done = check_form(image, fixups); !done) return done;
  if (auto done = check_signed_words(image, fixups, table); !done) return done;
  if (auto done = check_loads(image, fixups); !done) return done;
  if (auto done = check_return_addresses(image, table); !done) return done;
  if (auto done = check_unwinding(table); !done) return done;
  return check_initialiser_offsets(image);
}

}  // namespace wispen::macho
