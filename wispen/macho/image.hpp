// wispen/macho/image.hpp: a Mach-O file, taken apart and checked for what every reader relies on.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/core/result.hpp"

namespace wispen::macho {

/// Bytes of the file, by their place.
struct Range {
  std::uint64_t offset = 0;
  std::uint64_t size = 0;
};

struct Section {
  std::string name;
  std::uint64_t address = 0;
  std::uint64_t size = 0;
  std::uint64_t offset = 0;
  std::uint32_t flags = 0;

  std::uint32_t type() const;
  bool is_zero_fill() const;
};

struct Segment {
  std::string name;
  std::uint64_t address = 0;
  std::uint64_t memory_size = 0;
  std::uint64_t file_offset = 0;
  std::uint64_t file_size = 0;
  std::uint32_t most_protection = 0;
  std::uint32_t protection = 0;
  std::vector<Section> sections;

  bool writable() const;
};

struct Library {
  std::string name;  // the path that the loader looks for
  bool weak = false;
  bool reexported = false;
};

/// The opcode form of fixups; each part may be empty.
struct DyldInfo {
  Range rebase, bind, weak_bind, lazy_bind, exports;
};

/// One image for one processor. Holds views of the bytes that it was made from, which must outlive it.
struct Image {
  /// Bounds of what is taken for an image at all.
  static constexpr std::uint64_t kMostMemory = std::uint64_t{64} << 20;
  static constexpr std::size_t kMostSegments = 64;

  std::string_view bytes;
  std::uint32_t cpu = 0;
  std::uint32_t subtype = 0;
  std::uint32_t file_type = 0;
  std::uint32_t flags = 0;
  std::vector<std::uint32_t> commands;  // their numbers, in order
  std::vector<Segment> segments;        // in order of their commands, none over another
  std::vector<Library> libraries;       // ordinal 1 is the first
  std::vector<std::string> run_paths;
  std::optional<std::array<std::uint8_t, 16>> uuid;
  std::optional<std::uint32_t> platform;
  std::uint32_t minimum_version = 0;  // 0x000F0000 is 15.0
  std::optional<std::uint32_t> encryption;
  std::optional<DyldInfo> dyld_info;
  std::optional<Range> chained_fixups;
  std::optional<Range> exports_trie;
  std::optional<Range> signature;

  std::string architecture() const;  // "arm64", "arm64e", "x86_64"
  std::uint64_t base() const;        // the lowest address
  std::uint64_t memory_size() const;
  const Segment* segment(std::string_view name) const;
  /// The segment that holds all `size` bytes at the address, or null.
  const Segment* segment_at(std::uint64_t address, std::uint64_t size) const;
  /// The file's bytes at an address; empty where they are not all in the file.
  std::string_view bytes_at(std::uint64_t address, std::uint64_t size) const;
};

/// Takes one image apart. Every range that it gives lies within the bytes, segments do not overlap in memory
/// or in the file, sections lie within theirs.
Result<Image> parse_image(std::string_view bytes);

/// One image of a file, and what the file says of it.
struct Slice {
  std::string_view bytes;
  std::uint64_t offset = 0;                   // in the file
  std::optional<std::uint32_t> cpu, subtype;  // only a fat file's header names them
};

/// Each image in the file: several of a fat file, else the whole.
Result<std::vector<Slice>> slices_of(std::string_view file);

}  // namespace wispen::macho
