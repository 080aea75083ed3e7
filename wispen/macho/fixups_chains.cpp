// wispen/macho/fixups_chains.cpp: chained fixups: each pointer's place holds how far the next one is.

#include <limits>

#include "wispen/macho/bytes.hpp"
#include "wispen/macho/fixups.hpp"
#include "wispen/macho/format.hpp"

namespace wispen::macho {

namespace {

constexpr std::uint32_t kImportPlain = 1;
constexpr std::uint32_t kImportAddend = 2;
constexpr std::uint32_t kImportAddend64 = 3;

Error broken(const std::string& what) { return Error{"the chained fixups " + what}; }

class Chains {
 public:
  Chains(const Image& image, Fixups& fixups)
      : image_(image),
        fixups_(fixups),
        data_(part(image.bytes, image.chained_fixups->offset, image.chained_fixups->size)) {}

  Result<void> read() {
    const auto header = read_at<ChainedFixupsHeader>(data_, 0);
    if (!header) return broken("are too short");
    if (header->version != 0) return broken("are of an unknown version");
    if (header->symbols_format != 0) return broken("have compressed names");
    if (auto done = read_imports(*header); !done) return done;
    return read_segments(header->starts_offset);
  }

 private:
  Result<void> read_imports(const ChainedFixupsHeader& header) {
    const std::uint64_t size = header.imports_format == kImportPlain    ? 4
                               : header.imports_format == kImportAddend ? 8
                                                                        : 16;
    if (header.imports_format < kImportPlain || header.imports_format > kImportAddend64) {
      return broken("have imports of an unknown form");
    }
    for (std::uint64_t i = 0; i < header.import_count; ++i) {
      const std::uint64_t at = header.imports_offset + i * size;
      Import import;
      std::uint64_t name = 0;
      std::int64_t addend = 0;
      if (size == 16) {
        const auto raw = read_at<std::uint64_t>(data_, at);
        const auto more = read_at<std::int64_t>(data_, at + 8);
        if (!raw || !more) return broken("end within their imports");
        import.ordinal = signed_ordinal(*raw & 0xFFFF, 0xFFF0, 0x10000);
        import.weak = (*raw >> 16 & 1) != 0;
        name = *raw >> 32;
        addend = *more;
      } else {
        const auto raw = read_at<std::uint32_t>(data_, at);
        const auto more = size == 8 ? read_at<std::int32_t>(data_, at + 4) : std::optional<std::int32_t>(0);
        if (!raw || !more) return broken("end within their imports");
        import.ordinal = signed_ordinal(*raw & 0xFF, 0xF0, 0x100);
        import.weak = (*raw >> 8 & 1) != 0;
        name = *raw >> 9;
        addend = *more;
      }
      const auto text = text_at(data_, header.symbols_offset + name);
      if (!text) return broken("name an import beyond their names");
      import.name = *text;
      if (auto added = add_import(image_, std::move(import), fixups_); !added) return added;
      addends_.push_back(addend);
    }
    return {};
  }

  /// The highest few numbers stand for the negative ones.
  static int signed_ordinal(std::uint64_t raw, std::uint64_t first_negative, std::uint64_t modulus) {
    return raw > first_negative ? static_cast<int>(raw) - static_cast<int>(modulus) : static_cast<int>(raw);
  }

  Result<void> read_segments(std::uint64_t starts) {
    const auto count = read_at<std::uint32_t>(data_, starts);
    if (!count || *count > image_.segments.size()) return broken("are of more segments than there are");
    for (std::uint64_t i = 0; i < *count; ++i) {
      const auto offset = read_at<std::uint32_t>(data_, starts + 4 + 4 * i);
      if (!offset) return broken("end within their segments");
      if (*offset == 0) continue;
      if (auto done = read_pages(starts + *offset, image_.segments[i]); !done) return done;
    }
    return {};
  }

  Result<void> read_pages(std::uint64_t at, const Segment& segment) {
    if (!fits(at, kChainedStartsSize, data_.size())) return broken("end within a segment's pages");
    const auto page_size = *read_at<std::uint16_t>(data_, at + 4);
    const auto format = *read_at<std::uint16_t>(data_, at + 6);
    const auto segment_offset = *read_at<std::uint64_t>(data_, at + 8);
    const auto pages = *read_at<std::uint16_t>(data_, at + 20);
    if (format != kChainedPointer64 && format != kChainedPointer64Offset && format != kChainedPointerArm64e) {
      return broken("have pointers of the form " + std::to_string(format) + ", which is not known here");
    }
    if (page_size != 0x1000 && page_size != 0x4000) return broken("have pages of an odd size");
    if (segment_offset != segment.address - image_.base())
      return broken("misplace the segment " + segment.name);
    fixups_.chained.push_back({image_.chained_fixups->offset + at, format});
    for (std::uint64_t page = 0; page < pages; ++page) {
      const auto start = read_at<std::uint16_t>(data_, at + kChainedStartsSize + 2 * page);
      if (!start) return broken("end within a segment's pages");
      if (*start == kChainedNoStart) continue;
      if (*start >= page_size) return broken("have a chain that begins outside its page");
      const std::uint64_t page_address = segment.address + page * page_size;
      if (auto done = follow(page_address, *start, page_size, format); !done) return done;
    }
    return {};
  }

  /// A chain only ever goes forwards, so it ends.
  Result<void> follow(std::uint64_t page, std::uint64_t at, std::uint64_t page_size, std::uint16_t format) {
    const bool arm64e = format == kChainedPointerArm64e;
    for (;;) {
      const auto raw = read_at<std::uint64_t>(image_.bytes_at(page + at, 8), 0);
      if (!raw) return broken("have a chain that leaves the file");
      auto fixup = arm64e ? arm64e_fixup(*raw) : plain_fixup(*raw, format);
      if (!fixup) return fixup.error();
      fixup->address = page + at;
      if (auto added = add_fixup(image_, *fixup, fixups_); !added) return added;
      const std::uint64_t next = arm64e ? (*raw >> 51 & 0x7FF) * 8 : (*raw >> 51 & 0xFFF) * 4;
      if (next == 0) return {};
      if (next < 8) return broken("have a chain whose pointers lie over each other");
      at += next;
      if (at >= page_size) return broken("have a chain that leaves its page");
    }
  }

  Result<Fixup> plain_fixup(std::uint64_t raw, std::uint16_t format) const {
    Fixup fixup;
    if ((raw >> 63) != 0) return bound(raw & 0xFFFFFF, static_cast<std::int64_t>(raw >> 24 & 0xFF));
    const std::uint64_t target = raw & 0xFFFFFFFFF;
    fixup.tag = static_cast<std::uint8_t>(raw >> 36 & 0xFF);
    fixup.target = format == kChainedPointer64Offset ? image_.base() + target : target;
    return fixup;
  }

  /// Bit 63 says whether the pointer is signed, bit 62 whether it is bound.
  Result<Fixup> arm64e_fixup(std::uint64_t raw) const {
    const bool is_signed = (raw >> 63) != 0;
    Fixup fixup;
    if ((raw >> 62 & 1) != 0) {
      if ((raw >> 24 & 0xFF) != 0) return broken("have a pointer with bits that mean nothing");
      // A signed one has its signing where another has nineteen bits of addend, the highest of them the sign.
      const std::int64_t addend = is_signed ? 0 : static_cast<std::int64_t>(raw << 13) >> 45;
      auto found = bound(raw & 0xFFFFFF, addend);
      if (!found) return found;
      fixup = *found;
      if (is_signed && fixup.addend != 0) return broken("sign a pointer beside a symbol");
    } else if (is_signed) {
      fixup.target = image_.base() + (raw & 0xFFFFFFFF);
    } else {
      fixup.target = image_.base() + (raw & 0x7FFFFFFFFFF);
      fixup.tag = static_cast<std::uint8_t>(raw >> 43 & 0xFF);
    }
    if (is_signed) {
      fixup.signing = Signing{static_cast<Key>(raw >> 49 & 3), (raw >> 48 & 1) != 0,
                              static_cast<std::uint16_t>(raw >> 32 & 0xFFFF)};
    }
    return fixup;
  }

  Result<Fixup> bound(std::size_t import, std::int64_t addend) const {
    if (import >= addends_.size()) return broken("name an import that is not there");
    Fixup fixup;
    fixup.import = import;
    fixup.addend = static_cast<std::int64_t>(static_cast<std::uint64_t>(addend) +
                                             static_cast<std::uint64_t>(addends_[import]));
    return fixup;
  }

  const Image& image_;
  Fixups& fixups_;
  std::string_view data_;
  std::vector<std::int64_t> addends_;
};

}  // namespace

Result<void> read_chains(const Image& image, Fixups& fixups) { return Chains(image, fixups).read(); }

}  // namespace wispen::macho
