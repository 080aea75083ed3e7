// wispen/macho/format.hpp: the numbers and records of Mach-O files, as the platform documents them
// (mach-o/loader.h, mach-o/fat.h, mach-o/fixup-chains.h).
#pragma once

#include <cstdint>

namespace wispen::macho {

inline constexpr std::uint32_t kMagic64 = 0xFEEDFACF;
inline constexpr std::uint32_t kFatMagic = 0xCAFEBABE;  // big-endian, as all of a fat header

inline constexpr std::uint32_t kCpuX86_64 = 0x01000007;
inline constexpr std::uint32_t kCpuArm64 = 0x0100000C;
inline constexpr std::uint32_t kSubtypeMask = 0x00FFFFFF;  // the high byte holds capabilities
inline constexpr std::uint32_t kSubtypeArm64e = 2;
inline constexpr std::uint32_t kSubtypeArm64eAbi0 = 0x80000002;  // the ABI's version is in the high byte

inline constexpr std::uint32_t kFileObject = 1;
inline constexpr std::uint32_t kFileBundle = 8;
inline constexpr std::uint32_t kFlagNoUndefined = 0x1;
inline constexpr std::uint32_t kFlagForDynamicLinker = 0x4;
inline constexpr std::uint32_t kFlagTwoLevel = 0x80;

inline constexpr std::uint32_t kPlatformIos = 2;
inline constexpr std::uint32_t kPlatformIosSimulator = 7;

inline constexpr std::uint32_t kRequired = 0x80000000;  // a loader that does not know the command must refuse
inline constexpr std::uint32_t kCommandSymbols = 0x2;
inline constexpr std::uint32_t kCommandDynamicSymbols = 0xB;
inline constexpr std::uint32_t kCommandLoadLibrary = 0xC;
inline constexpr std::uint32_t kCommandLoadWeakLibrary = 0x18 | kRequired;
inline constexpr std::uint32_t kCommandReexportLibrary = 0x1F | kRequired;
inline constexpr std::uint32_t kCommandSegment64 = 0x19;
inline constexpr std::uint32_t kCommandUuid = 0x1B;
inline constexpr std::uint32_t kCommandRunPath = 0x1C | kRequired;
inline constexpr std::uint32_t kCommandSignature = 0x1D;
inline constexpr std::uint32_t kCommandDyldInfo = 0x22;
inline constexpr std::uint32_t kCommandDyldInfoOnly = 0x22 | kRequired;
inline constexpr std::uint32_t kCommandVersionMinIos = 0x25;
inline constexpr std::uint32_t kCommandFunctionStarts = 0x26;
inline constexpr std::uint32_t kCommandDataInCode = 0x29;
inline constexpr std::uint32_t kCommandEncryption64 = 0x2C;
inline constexpr std::uint32_t kCommandBuildVersion = 0x32;
inline constexpr std::uint32_t kCommandExportsTrie = 0x33 | kRequired;
inline constexpr std::uint32_t kCommandChainedFixups = 0x34 | kRequired;

inline constexpr std::uint32_t kProtectionRead = 1;
inline constexpr std::uint32_t kProtectionWrite = 2;
inline constexpr std::uint32_t kProtectionExecute = 4;

inline constexpr std::uint32_t kSectionTypeMask = 0xFF;
inline constexpr std::uint32_t kSectionZeroFill = 0x1;
inline constexpr std::uint32_t kSectionInitPointers = 0x9;
inline constexpr std::uint32_t kSectionThreadZeroFill = 0x12;
inline constexpr std::uint32_t kSectionThreadVariables = 0x13;
inline constexpr std::uint32_t kSectionInitOffsets = 0x16;
inline constexpr std::uint32_t kSectionPureInstructions = 0x80000000;
inline constexpr std::uint32_t kSectionSomeInstructions = 0x400;

struct Header64 {
  std::uint32_t magic, cpu, subtype, file_type, command_count, commands_size, flags, reserved;
};
struct CommandHeader {
  std::uint32_t command, size;
};
struct SegmentCommand64 {
  std::uint32_t command, size;
  char name[16];
  std::uint64_t address, memory_size, file_offset, file_size;
  std::uint32_t most_protection, protection, section_count, flags;
};
struct SectionRecord64 {
  char name[16], segment[16];
  std::uint64_t address, size;
  std::uint32_t offset, alignment, relocation_offset, relocation_count, flags, reserved1, reserved2,
      reserved3;
};
struct LibraryCommand {
  std::uint32_t command, size, name_offset, timestamp, current_version, compatibility_version;
};
struct RunPathCommand {
  std::uint32_t command, size, path_offset;
};
struct UuidCommand {
  std::uint32_t command, size;
  std::uint8_t uuid[16];
};
struct LinkeditCommand {
  std::uint32_t command, size, offset, data_size;
};
struct DyldInfoCommand {
  std::uint32_t command, size, rebase_offset, rebase_size, bind_offset, bind_size, weak_bind_offset,
      weak_bind_size, lazy_bind_offset, lazy_bind_size, export_offset, export_size;
};
struct BuildVersionCommand {
  std::uint32_t command, size, platform, minimum, sdk, tool_count;
};
struct SymbolsCommand {
  std::uint32_t command, size, offset, count, strings_offset, strings_size;
};
struct EncryptionCommand64 {
  std::uint32_t command, size, offset, data_size, id, pad;
};
struct SymbolRecord64 {
  std::uint32_t name_offset;
  std::uint8_t type, section;
  std::uint16_t description;
  std::uint64_t value;
};

struct ChainedFixupsHeader {
  std::uint32_t version, starts_offset, imports_offset, symbols_offset, import_count, imports_format,
      symbols_format;
};
struct ChainedStartsInSegment {  // 22 bytes in the file; the pages' starts follow
  std::uint32_t size;
  std::uint16_t page_size, pointer_format;
  std::uint64_t segment_offset;
  std::uint32_t most_valid_pointer;
  std::uint16_t page_count;
};
inline constexpr std::uint64_t kChainedStartsSize = 22;
inline constexpr std::uint16_t kChainedNoStart = 0xFFFF;
inline constexpr std::uint16_t kChainedPointer64 = 2;
inline constexpr std::uint16_t kChainedPointer64Offset = 6;
inline constexpr std::uint16_t kChainedPointerArm64e = 12;  // signed where a word says so

struct FatEntry {  // big-endian
  std::uint32_t cpu, subtype, offset, size, alignment_log2;
};

}  // namespace wispen::macho
