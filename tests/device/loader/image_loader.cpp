// tests/device/loader/image_loader.cpp

#include "tests/device/loader/image_loader.hpp"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <optional>
#include <utility>
#include <vector>

#include "tests/device/loader/pointer_signing.hpp"
#include "wispen/macho/bytes.hpp"
#include "wispen/macho/exports.hpp"
#include "wispen/macho/format.hpp"

namespace wispen::loader {

namespace {

constexpr std::uint64_t kPage = 0x1000;

std::uint64_t rounded_up(std::uint64_t size) { return (size + kPage - 1) / kPage * kPage; }

void* memory_at(const macho::Image& image, const Mapping& mapping, std::uint64_t address) {
  return reinterpret_cast<void*>(mapping.base() + (address - image.base()));
}

Result<std::uint64_t> value_of(const macho::Image& image, const Mapping& mapping, const macho::Fixups& fixups,
                               const macho::Fixup& fixup, const std::vector<macho::Export>& exports,
                               const Resolver& resolve) {
  if (fixup.import == macho::Fixup::kRebase)
    return (mapping.base() + (fixup.target - image.base())) | std::uint64_t{fixup.tag} << 56;
  const macho::Import& import = fixups.imports[fixup.import];
  const macho::Library* const library =
      import.ordinal > 0 ? &image.libraries[static_cast<std::size_t>(import.ordinal) - 1] : nullptr;
  // What the image has itself, and would share with others where several had it.
  if (import.ordinal == macho::kOrdinalSelf || import.ordinal == macho::kOrdinalWeak) {
    const auto own = std::ranges::find(exports, import.name, &macho::Export::name);
    if (own != exports.end()) return mapping.base() + own->offset + static_cast<std::uint64_t>(fixup.addend);
  }
  void* const found =
      resolve(import, library != nullptr ? std::string_view(library->name) : std::string_view());
  if (found == nullptr) {
    if (import.weak || (library != nullptr && library->weak)) return std::uint64_t{0};
    return Error{"the image wants " + import.name + " of " +
                 (library != nullptr ? library->name : "any library") + ", and nothing here has it"};
  }
  return reinterpret_cast<std::uint64_t>(found) + static_cast<std::uint64_t>(fixup.addend);
}

Result<void> protect(const macho::Image& image, const Mapping& mapping) {
  for (const macho::Segment& segment : image.segments) {
    int protection = PROT_NONE;
    if ((segment.protection & macho::kProtectionRead) != 0) protection |= PROT_READ;
    if ((segment.protection & macho::kProtectionWrite) != 0) protection |= PROT_WRITE;
    if ((segment.protection & macho::kProtectionExecute) != 0) protection |= PROT_EXEC;
    if (segment.memory_size == 0) continue;
    void* const begin = memory_at(image, mapping, segment.address);
    if (::mprotect(begin, rounded_up(segment.memory_size), protection) != 0) {
      return Error{"cannot protect the segment " + segment.name + ": " + std::strerror(errno)};
    }
  }
  return {};
}

using Initialiser = void (*)(int, const char**, const char**, const char**, const void*);

Result<void> run(const macho::Image& image, const Mapping& mapping, std::uint64_t offset) {
  const macho::Segment* const segment = image.segment_at(image.base() + offset, 1);
  if (segment == nullptr || (segment->protection & macho::kProtectionExecute) == 0) {
    return Error{"an initialiser of the image lies outside its code"};
  }
  reinterpret_cast<Initialiser>(mapping.base() + offset)(0, nullptr, nullptr, nullptr, nullptr);
  return {};
}

}  // namespace

Mapping::Mapping(Mapping&& other) noexcept
    : base_(std::exchange(other.base_, 0)), size_(std::exchange(other.size_, 0)) {}

Mapping& Mapping::operator=(Mapping&& other) noexcept {
  std::swap(base_, other.base_);
  std::swap(size_, other.size_);
  return *this;
}

Mapping::~Mapping() {
  if (size_ != 0) ::munmap(reinterpret_cast<void*>(base_), size_);
}

Result<Mapping> Mapping::reserve(std::size_t size) {
  if (size == 0) return Error{"the image has no memory"};
  void* const memory = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) return Error{std::string("no memory for the image: ") + std::strerror(errno)};
  Mapping mapping;
  mapping.base_ = reinterpret_cast<std::uintptr_t>(memory);
  mapping.size_ = size;
  return mapping;
}

bool Mapping::holds(const void* address) const {
  const auto place = reinterpret_cast<std::uintptr_t>(address);
  return place >= base_ && place - base_ < size_;
}

Result<Mapping> map_image(const macho::Image& image, const Resolver& resolve) {
  if (image.architecture() == "arm64e" && !keys_are_live())
    return Error{"the image is of signed code, and this processor signs no pointers"};
  for (const macho::Segment& segment : image.segments) {
    if ((segment.address - image.base()) % kPage != 0) {
      return Error{"the segment " + segment.name + " does not begin on a page"};
    }
    // Two on one page would take each other's protection.
    for (const macho::Segment& other : image.segments) {
      if (&other != &segment && other.address >= segment.address &&
          other.address < segment.address + rounded_up(segment.memory_size)) {
        return Error{"the segments " + segment.name + " and " + other.name + " share a page"};
      }
    }
  }
  const auto fixups = macho::read_fixups(image);
  if (!fixups) return fixups.error();
  const auto exports = macho::read_exports(image);
  if (!exports) return exports.error();
  auto mapping = Mapping::reserve(rounded_up(image.memory_size()));
  if (!mapping) return mapping;
  for (const macho::Segment& segment : image.segments) {
    std::memcpy(memory_at(image, *mapping, segment.address), image.bytes.data() + segment.file_offset,
                segment.file_size);
  }
  for (const macho::Fixup& fixup : fixups->fixups) {
    auto value = value_of(image, *mapping, *fixups, fixup, *exports, resolve);
    if (!value) return value.error();
    void* const place = memory_at(image, *mapping, fixup.address);
    if (fixup.signing) *value = signed_pointer(*value, *fixup.signing, place);
    std::memcpy(place, &*value, sizeof *value);
  }
  if (auto done = protect(image, *mapping); !done) return done.error();
  __builtin___clear_cache(reinterpret_cast<char*>(mapping->base()),
                          reinterpret_cast<char*>(mapping->base() + mapping->size()));
  return mapping;
}

Result<void> run_initialisers(const macho::Image& image, const Mapping& mapping) {
  for (const macho::Segment& segment : image.segments) {
    for (const macho::Section& section : segment.sections) {
      const std::uintptr_t place = mapping.base() + (section.address - image.base());
      if (section.type() == macho::kSectionInitOffsets) {
        for (std::uint64_t at = 0; at + 4 <= section.size; at += 4) {
          std::uint32_t offset = 0;
          std::memcpy(&offset, reinterpret_cast<const void*>(place + at), sizeof offset);
          if (auto done = run(image, mapping, offset); !done) return done;
        }
      } else if (section.type() == macho::kSectionInitPointers) {
        for (std::uint64_t at = 0; at + 8 <= section.size; at += 8) {
          std::uint64_t pointer = 0;
          std::memcpy(&pointer, reinterpret_cast<const void*>(place + at), sizeof pointer);
          if (auto done = run(image, mapping, pointer - mapping.base()); !done) return done;
        }
      }
    }
  }
  return {};
}

Result<std::string_view> slice_for_this_machine(std::string_view file) {
#if defined(__aarch64__)
  constexpr std::uint32_t kCpu = macho::kCpuArm64;
#else
  constexpr std::uint32_t kCpu = macho::kCpuX86_64;
#endif
  const auto slices = macho::slices_of(file);
  if (!slices) return slices.error();
  std::optional<std::string_view> plain;
  for (const macho::Slice& slice : *slices) {
    const auto header = macho::read_at<macho::Header64>(slice.bytes, 0);
    if (!header || header->magic != macho::kMagic64 || header->cpu != kCpu) continue;
    const bool arm64e =
        kCpu == macho::kCpuArm64 && (header->subtype & macho::kSubtypeMask) == macho::kSubtypeArm64e;
    if (arm64e && keys_are_live()) return slice.bytes;
    if (!arm64e && !plain) plain = slice.bytes;
  }
  if (plain) return *plain;
  return Error{"the file has no code for this processor"};
}

}  // namespace wispen::loader
