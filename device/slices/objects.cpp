// device/slices/objects.cpp

#include "device/slices/objects.hpp"

#include <string>
#include <vector>

#include "wispen/macho/bytes.hpp"
#include "wispen/macho/format.hpp"

namespace wispen::slices {

namespace {

using macho::read_at;

constexpr std::uint32_t kSignedPointer = 11;  // ARM64_RELOC_AUTHENTICATED_POINTER
constexpr std::uint64_t kRelocationSize = 8;

struct ObjectFile {
  std::string_view bytes;
  std::vector<macho::SectionRecord64> sections;
  macho::SymbolsCommand symbols{};
};

Error broken() { return Error{"it is cut off"}; }

Result<ObjectFile> read_object(std::string_view bytes) {
  const auto header = read_at<macho::Header64>(bytes, 0);
  if (!header || header->magic != macho::kMagic64 || header->file_type != macho::kFileObject)
    return Error{"it is no Mach-O object"};
  if (header->cpu != macho::kCpuArm64 || header->subtype != macho::kSubtypeArm64eAbi0)
    return Error{"it holds no arm64e code, whose return addresses the unwinder would authenticate"};
  ObjectFile object{bytes, {}, {}};
  const std::string_view commands = macho::part(bytes, sizeof(macho::Header64), header->commands_size);
  std::uint64_t at = 0;
  for (std::uint32_t i = 0; i < header->command_count; ++i) {
    const auto command = read_at<macho::CommandHeader>(commands, at);
    if (!command || command->size < sizeof(macho::CommandHeader)) return broken();
    if (command->command == macho::kCommandSegment64) {
      const auto segment = read_at<macho::SegmentCommand64>(commands, at);
      if (!segment) return broken();
      for (std::uint64_t s = 0; s < segment->section_count; ++s) {
        const auto section = read_at<macho::SectionRecord64>(
            commands, at + sizeof *segment + s * sizeof(macho::SectionRecord64));
        if (!section) return broken();
        object.sections.push_back(*section);
      }
    } else if (command->command == macho::kCommandSymbols) {
      const auto symbols = read_at<macho::SymbolsCommand>(commands, at);
      if (!symbols) return broken();
      object.symbols = *symbols;
    }
    at += command->size;
  }
  return object;
}

/// The symbol that an address of the section belongs to: the last one before it.
std::string symbol_at(const ObjectFile& object, std::size_t section, std::uint64_t address) {
  constexpr std::uint8_t kDebug = 0xE0, kType = 0x0E, kInSection = 0x0E;
  std::string name = "an unnamed one";
  std::uint64_t best = 0;
  for (std::uint64_t i = 0; i < object.symbols.count; ++i) {
    const auto symbol = read_at<macho::SymbolRecord64>(
        object.bytes, object.symbols.offset + i * sizeof(macho::SymbolRecord64));
    if (!symbol) break;
    if ((symbol->type & kDebug) != 0 || (symbol->type & kType) != kInSection) continue;
    if (symbol->section != section + 1 || symbol->value > address || symbol->value < best) continue;
    const auto text =
        macho::text_at(object.bytes, std::uint64_t{object.symbols.strings_offset} + symbol->name_offset);
    if (!text || text->starts_with("ltmp")) continue;  // the assembler's own, one a section
    name = *text;
    best = symbol->value;
  }
  return name;
}

}  // namespace

Result<void> check_object(std::string_view bytes) {
  const auto object = read_object(bytes);
  if (!object) return object.error();
  for (std::size_t s = 0; s < object->sections.size(); ++s) {
    const macho::SectionRecord64& section = object->sections[s];
    for (std::uint64_t i = 0; i < section.relocation_count; ++i) {
      const std::uint64_t at = section.relocation_offset + i * kRelocationSize;
      const auto offset = read_at<std::uint32_t>(bytes, at);
      const auto what = read_at<std::uint32_t>(bytes, at + 4);
      if (!offset || !what) return broken();
      if (*what >> 28 != kSignedPointer) continue;
      return Error{"it holds a signed pointer in data, in " +
                   symbol_at(*object, s, section.address + *offset) +
                   ": a table of functions, or of virtual ones; fill it when the program runs"};
    }
  }
  return {};
}

}  // namespace wispen::slices
