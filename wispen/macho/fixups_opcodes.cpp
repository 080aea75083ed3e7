// wispen/macho/fixups_opcodes.cpp: fixups as two small programs, one that moves pointers and one that binds
// them.

#include <map>
#include <string>

#include "wispen/macho/bytes.hpp"
#include "wispen/macho/fixups.hpp"
#include "wispen/macho/format.hpp"

namespace wispen::macho {

namespace {

// Opcode in the high four bits, a small number in the low four.
enum RebaseOpcode : std::uint8_t {
  kRebaseDone = 0x00,
  kRebaseSetType = 0x10,
  kRebaseSetPlace = 0x20,
  kRebaseAdd = 0x30,
  kRebaseAddScaled = 0x40,
  kRebaseTimes = 0x50,
  kRebaseTimesUleb = 0x60,
  kRebaseAndAdd = 0x70,
  kRebaseTimesSkipping = 0x80,
};
enum BindOpcode : std::uint8_t {
  kBindDone = 0x00,
  kBindSetOrdinal = 0x10,
  kBindSetOrdinalUleb = 0x20,
  kBindSetSpecial = 0x30,
  kBindSetName = 0x40,
  kBindSetType = 0x50,
  kBindSetAddend = 0x60,
  kBindSetPlace = 0x70,
  kBindAdd = 0x80,
  kBindOnce = 0x90,
  kBindAndAdd = 0xA0,
  kBindAndAddScaled = 0xB0,
  kBindTimesSkipping = 0xC0,
};
constexpr std::uint8_t kTypePointer = 1;
constexpr std::uint64_t kPointer = 8;

Error broken(const std::string& what) { return Error{"the fixup opcodes " + what}; }

/// What both programs have: a place, and what moves it.
class Program {
 public:
  Program(const Image& image, Fixups& fixups, Range range)
      : image_(image), fixups_(fixups), cursor_(part(image.bytes, range.offset, range.size)) {}

 protected:
  Result<void> set_place(unsigned segment) {
    const std::uint64_t offset = cursor_.uleb();
    if (segment >= image_.segments.size()) return broken("name a segment that is not there");
    address_ = image_.segments[segment].address + offset;
    return {};
  }
  static Result<void> check_type(unsigned type) {
    if (type != kTypePointer) return broken("have a pointer of an unknown type");
    return {};
  }

  const Image& image_;
  Fixups& fixups_;
  Cursor cursor_;
  std::uint64_t address_ = 0;  // wraps as the format's negative steps want it; judged where it is used
};

class RebaseProgram : public Program {
 public:
  using Program::Program;

  Result<void> run() {
    while (!cursor_.at_end()) {
      const std::uint8_t opcode = cursor_.byte();
      const std::uint8_t small = opcode & 0x0F;
      Result<void> done;
      switch (opcode & 0xF0) {
        case kRebaseDone:
          return {};
        case kRebaseSetType:
          done = check_type(small);
          break;
        case kRebaseSetPlace:
          done = set_place(small);
          break;
        case kRebaseAdd:
          address_ += cursor_.uleb();
          break;
        case kRebaseAddScaled:
          address_ += small * kPointer;
          break;
        case kRebaseTimes:
          done = rebase(small, 0);
          break;
        case kRebaseTimesUleb:
          done = rebase(cursor_.uleb(), 0);
          break;
        case kRebaseAndAdd:
          done = rebase(1, cursor_.uleb());
          break;
        case kRebaseTimesSkipping: {
          const std::uint64_t times = cursor_.uleb();
          done = rebase(times, cursor_.uleb());
          break;
        }
        default:
          return broken("have a rebase opcode that is not known");
      }
      if (!done) return done;
      if (!cursor_.ok()) return broken("end within a rebase");
    }
    return {};
  }

 private:
  Result<void> rebase(std::uint64_t times, std::uint64_t skip) {
    for (std::uint64_t i = 0; i < times; ++i) {
      const auto target = read_at<std::uint64_t>(image_.bytes_at(address_, kPointer), 0);
      if (!target) return broken("move a pointer that is not in the file");
      Fixup fixup;
      fixup.address = address_;
      fixup.target = *target & ~(std::uint64_t{0xFF} << 56);
      fixup.tag = static_cast<std::uint8_t>(*target >> 56);
      if (auto added = add_fixup(image_, fixup, fixups_); !added) return added;
      address_ += kPointer + skip;
    }
    return {};
  }
};

class BindProgram : public Program {
 public:
  BindProgram(const Image& image, Fixups& fixups, Range range, bool lazy, bool by_name)
      : Program(image, fixups, range), lazy_(lazy) {
    if (by_name) import_.ordinal = kOrdinalWeak;
  }

  Result<void> run() {
    while (!cursor_.at_end()) {
      const std::uint8_t opcode = cursor_.byte();
      const std::uint8_t small = opcode & 0x0F;
      Result<void> done;
      switch (opcode & 0xF0) {
        case kBindDone:
          if (!lazy_) return {};
          break;  // there it only ends one symbol's part
        case kBindSetOrdinal:
          import_.ordinal = small;
          break;
        case kBindSetOrdinalUleb:
          done = set_ordinal(cursor_.uleb());
          break;
        case kBindSetSpecial:
          import_.ordinal = small == 0 ? 0 : static_cast<int>(small) - 16;
          break;
        case kBindSetName:
          import_.name = cursor_.text();
          import_.weak = (small & 1) != 0;
          break;
        case kBindSetType:
          done = check_type(small);
          break;
        case kBindSetAddend:
          addend_ = cursor_.sleb();
          break;
        case kBindSetPlace:
          done = set_place(small);
          break;
        case kBindAdd:
          address_ += cursor_.uleb();
          break;
        case kBindOnce:
          done = bind(1, 0);
          break;
        case kBindAndAdd:
          done = bind(1, cursor_.uleb());
          break;
        case kBindAndAddScaled:
          done = bind(1, small * kPointer);
          break;
        case kBindTimesSkipping: {
          const std::uint64_t times = cursor_.uleb();
          done = bind(times, cursor_.uleb());
          break;
        }
        default:
          return broken("have a bind opcode that is not known");
      }
      if (!done) return done;
      if (!cursor_.ok()) return broken("end within a bind");
    }
    return {};
  }

 private:
  Result<void> set_ordinal(std::uint64_t ordinal) {
    if (ordinal > image_.libraries.size()) return broken("name a library that is not there");
    import_.ordinal = static_cast<int>(ordinal);
    return {};
  }

  Result<void> bind(std::uint64_t times, std::uint64_t skip) {
    if (times == 0) return {};
    auto index = index_of_import();
    if (!index) return index.error();
    for (std::uint64_t i = 0; i < times; ++i) {
      Fixup fixup;
      fixup.address = address_;
      fixup.import = *index;
      fixup.addend = addend_;
      if (auto added = add_fixup(image_, fixup, fixups_); !added) return added;
      address_ += kPointer + skip;
    }
    return {};
  }

  Result<std::size_t> index_of_import() {
    const auto [known, fresh] =
        indices_.emplace(std::pair{import_.name, import_.ordinal}, fixups_.imports.size());
    if (fresh) {
      if (auto added = add_import(image_, import_, fixups_); !added) return added.error();
    }
    return known->second;
  }

  bool lazy_;
  Import import_;
  std::int64_t addend_ = 0;
  std::map<std::pair<std::string, int>, std::size_t> indices_;
};

}  // namespace

Result<void> read_opcodes(const Image& image, Fixups& fixups) {
  const DyldInfo& info = *image.dyld_info;
  if (auto done = RebaseProgram(image, fixups, info.rebase).run(); !done) return done;
  if (auto done = BindProgram(image, fixups, info.bind, false, false).run(); !done) return done;
  if (auto done = BindProgram(image, fixups, info.lazy_bind, true, false).run(); !done) return done;
  return BindProgram(image, fixups, info.weak_bind, false, true).run();
}

}  // namespace wispen::macho
