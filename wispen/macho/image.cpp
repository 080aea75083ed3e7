// wispen/macho/image.cpp

#include "wispen/macho/image.hpp"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "wispen/macho/bytes.hpp"
#include "wispen/macho/format.hpp"

namespace wispen::macho {

namespace {

constexpr std::uint32_t kMostSlices = 16;
constexpr std::uint32_t kMostCommands = 1024;

Error broken(const std::string& what) { return Error{"the image " + what}; }

/// Fills an Image, command by command.
class Parser {
 public:
  explicit Parser(std::string_view bytes) { image_.bytes = bytes; }

  Result<Image> parse() {
    const auto header = read_at<Header64>(image_.bytes, 0);
    if (!header || header->magic != kMagic64) return broken("does not begin as a 64-bit Mach-O file");
    image_.cpu = header->cpu;
    image_.subtype = header->subtype;
    image_.file_type = header->file_type;
    image_.flags = header->flags;
    const std::string_view commands = part(image_.bytes, sizeof(Header64), header->commands_size);
    if (commands.size() != header->commands_size) return broken("ends within its load commands");
    if (header->command_count > kMostCommands) return broken("has too many load commands");

    std::uint64_t at = 0;
    for (std::uint32_t i = 0; i < header->command_count; ++i) {
      const auto command = read_at<CommandHeader>(commands, at);
      if (!command || command->size < sizeof(CommandHeader) || command->size % 4 != 0 ||
          !fits(at, command->size, commands.size())) {
        return broken("has a load command " + std::to_string(i) + " that is cut off or of a wrong size");
      }
      image_.commands.push_back(command->command);
      if (auto taken = take(command->command, commands.substr(at, command->size)); !taken)
        return taken.error();
      at += command->size;
    }
    if (auto checked = check_segments(); !checked) return checked.error();
    return std::move(image_);
  }

 private:
  Result<void> take(std::uint32_t number, std::string_view command) {
    switch (number) {
      case kCommandSegment64:
        return take_segment(command);
      case kCommandLoadLibrary:
      case kCommandLoadWeakLibrary:
      case kCommandReexportLibrary:
        return take_library(number, command);
      case kCommandRunPath:
        return take_run_path(command);
      case kCommandUuid:
        return take_uuid(command);
      case kCommandBuildVersion:
        return take_version(command);
      case kCommandEncryption64:
        return take_encryption(command);
      case kCommandDyldInfo:
      case kCommandDyldInfoOnly:
        return take_dyld_info(command);
      case kCommandChainedFixups:
        return take_linkedit(command, image_.chained_fixups);
      case kCommandExportsTrie:
        return take_linkedit(command, image_.exports_trie);
      case kCommandSignature:
        return take_linkedit(command, image_.signature);
      default:
        return {};
    }
  }

  Result<void> take_segment(std::string_view command) {
    const auto raw = read_at<SegmentCommand64>(command, 0);
    if (!raw) return broken("has a segment command that is too short");
    Segment segment{std::string(text_of(raw->name)),
                    raw->address,
                    raw->memory_size,
                    raw->file_offset,
                    raw->file_size,
                    raw->most_protection,
                    raw->protection,
                    {}};
    if (image_.segments.size() == Image::kMostSegments) return broken("has too many segments");
    if (!fits(raw->file_offset, raw->file_size, image_.bytes.size())) {
      return broken("ends within its segment " + segment.name);
    }
    if (raw->file_size > raw->memory_size || raw->memory_size > Image::kMostMemory ||
        raw->address > UINT64_MAX - raw->memory_size) {
      return broken("has a segment " + segment.name + " of an impossible size");
    }
    for (std::uint64_t i = 0; i < raw->section_count; ++i) {
      const auto record = read_at<SectionRecord64>(command, sizeof *raw + i * sizeof(SectionRecord64));
      if (!record) return broken("has a segment " + segment.name + " with fewer sections than it says");
      Section section{std::string(text_of(record->name)), record->address, record->size, record->offset,
                      record->flags};
      const bool in_memory = record->address >= raw->address &&
                             fits(record->address - raw->address, record->size, raw->memory_size);
      const bool in_file = section.is_zero_fill() || record->size == 0 ||
                           (record->offset >= raw->file_offset &&
                            fits(record->offset - raw->file_offset, record->size, raw->file_size) &&
                            record->offset - raw->file_offset == record->address - raw->address);
      if (!in_memory || !in_file) {
        return broken("has a section " + section.name + " that leaves its segment " + segment.name);
      }
      segment.sections.push_back(std::move(section));
    }
    image_.segments.push_back(std::move(segment));
    return {};
  }

  Result<void> take_library(std::uint32_t number, std::string_view command) {
    const auto raw = read_at<LibraryCommand>(command, 0);
    const auto name = raw ? text_at(command, raw->name_offset) : std::nullopt;
    if (!name || raw->name_offset < sizeof(LibraryCommand)) return broken("loads a library without a name");
    image_.libraries.push_back(
        {std::string(*name), number == kCommandLoadWeakLibrary, number == kCommandReexportLibrary});
    return {};
  }

  Result<void> take_run_path(std::string_view command) {
    const auto raw = read_at<RunPathCommand>(command, 0);
    const auto path = raw ? text_at(command, raw->path_offset) : std::nullopt;
    if (!path || raw->path_offset < sizeof(RunPathCommand)) return broken("has a run path without a path");
    image_.run_paths.emplace_back(*path);
    return {};
  }

  Result<void> take_uuid(std::string_view command) {
    const auto raw = read_at<UuidCommand>(command, 0);
    if (!raw) return broken("has a UUID that is too short");
    std::copy(std::begin(raw->uuid), std::end(raw->uuid), image_.uuid.emplace().begin());
    return {};
  }

  Result<void> take_version(std::string_view command) {
    const auto raw = read_at<BuildVersionCommand>(command, 0);
    if (!raw) return broken("has a build version that is too short");
    image_.platform = raw->platform;
    image_.minimum_version = raw->minimum;
    return {};
  }

  Result<void> take_encryption(std::string_view command) {
    const auto raw = read_at<EncryptionCommand64>(command, 0);
    if (!raw) return broken("has an encryption command that is too short");
    image_.encryption = raw->id;
    return {};
  }

  Result<void> take_range(std::uint32_t offset, std::uint32_t size, Range& range) {
    if (!fits(offset, size, image_.bytes.size())) return broken("ends within its link-edit data");
    range = {offset, size};
    return {};
  }

  Result<void> take_linkedit(std::string_view command, std::optional<Range>& range) {
    const auto raw = read_at<LinkeditCommand>(command, 0);
    if (!raw) return broken("has a link-edit command that is too short");
    if (range) return broken("has the same link-edit command twice");
    return take_range(raw->offset, raw->data_size, range.emplace());
  }

  Result<void> take_dyld_info(std::string_view command) {
    const auto raw = read_at<DyldInfoCommand>(command, 0);
    if (!raw) return broken("has a fixup command that is too short");
    if (image_.dyld_info) return broken("has two fixup commands");
    DyldInfo& info = image_.dyld_info.emplace();
    struct Part {
      std::uint32_t offset, size;
      Range* range;
    };
    for (const auto& [offset, size, range] :
         {Part{raw->rebase_offset, raw->rebase_size, &info.rebase},
          Part{raw->bind_offset, raw->bind_size, &info.bind},
          Part{raw->weak_bind_offset, raw->weak_bind_size, &info.weak_bind},
          Part{raw->lazy_bind_offset, raw->lazy_bind_size, &info.lazy_bind},
          Part{raw->export_offset, raw->export_size, &info.exports}}) {
      if (auto taken = take_range(offset, size, *range); !taken) return taken;
    }
    return {};
  }

  Result<void> check_segments() const {
    if (image_.segments.empty()) return broken("has no segments");
    if (image_.memory_size() > Image::kMostMemory) return broken("wants too much memory");
    for (std::size_t i = 0; i < image_.segments.size(); ++i) {
      for (std::size_t j = 0; j < i; ++j) {
        const Segment& a = image_.segments[i];
        const Segment& b = image_.segments[j];
        const bool memory = a.address < b.address + b.memory_size && b.address < a.address + a.memory_size;
        const bool file =
            a.file_offset < b.file_offset + b.file_size && b.file_offset < a.file_offset + a.file_size;
        if (memory || file)
          return broken("has the segments " + b.name + " and " + a.name + " over each other");
      }
    }
    return {};
  }

  Image image_;
};

}  // namespace

std::uint32_t Section::type() const { return flags & kSectionTypeMask; }

bool Section::is_zero_fill() const { return type() == kSectionZeroFill || type() == kSectionThreadZeroFill; }

bool Segment::writable() const { return (protection & kProtectionWrite) != 0; }

std::string Image::architecture() const {
  if (cpu == kCpuX86_64) return "x86_64";
  if (cpu == kCpuArm64) return (subtype & kSubtypeMask) == kSubtypeArm64e ? "arm64e" : "arm64";
  return "processor " + std::to_string(cpu);
}

std::uint64_t Image::base() const {
  return segments.empty() ? 0 : std::ranges::min(segments, {}, &Segment::address).address;
}

std::uint64_t Image::memory_size() const {
  std::uint64_t end = base();
  for (const Segment& segment : segments) end = std::max(end, segment.address + segment.memory_size);
  return end - base();
}

const Segment* Image::segment(std::string_view name) const {
  const auto found = std::ranges::find(segments, name, &Segment::name);
  return found != segments.end() ? &*found : nullptr;
}

const Segment* Image::segment_at(std::uint64_t address, std::uint64_t size) const {
  for (const Segment& segment : segments) {
    if (address >= segment.address && fits(address - segment.address, size, segment.memory_size))
      return &segment;
  }
  return nullptr;
}

std::string_view Image::bytes_at(std::uint64_t address, std::uint64_t size) const {
  const Segment* const found = segment_at(address, size);
  if (found == nullptr || !fits(address - found->address, size, found->file_size)) return {};
  return part(bytes, found->file_offset + (address - found->address), size);
}

Result<Image> parse_image(std::string_view bytes) { return Parser(bytes).parse(); }

Result<std::vector<Slice>> slices_of(std::string_view file) {
  const auto big = [&](std::uint64_t offset) -> std::optional<std::uint32_t> {
    const auto raw = read_at<std::uint32_t>(file, offset);
    return raw ? std::optional(__builtin_bswap32(*raw)) : std::nullopt;
  };
  if (big(0) != kFatMagic) return std::vector{Slice{file, 0, std::nullopt, std::nullopt}};
  const auto count = big(4);
  if (!count || *count == 0 || *count > kMostSlices)
    return Error{"the fat file has no sensible number of slices"};
  std::vector<Slice> slices;
  std::vector<Range> taken{{0, 8 + std::uint64_t{*count} * sizeof(FatEntry)}};
  for (std::uint64_t i = 0; i < *count; ++i) {
    const std::uint64_t entry = 8 + i * sizeof(FatEntry);
    const auto offset = big(entry + offsetof(FatEntry, offset));
    const auto size = big(entry + offsetof(FatEntry, size));
    if (!offset || !size || *size == 0 || !fits(*offset, *size, file.size())) {
      return Error{"the fat file ends within its slices"};
    }
    for (const Range& other : taken) {
      if (*offset < other.offset + other.size && other.offset < std::uint64_t{*offset} + *size) {
        return Error{"the fat file's slices lie over each other"};
      }
    }
    taken.push_back({*offset, *size});
    slices.push_back(
        {file.substr(*offset, *size), *offset, big(entry), big(entry + offsetof(FatEntry, subtype))});
  }
  return slices;
}

}  // namespace wispen::macho
