// tests/device/loader/compact_unwind.cpp

#include "tests/device/loader/compact_unwind.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "wispen/macho/bytes.hpp"
#include "wispen/macho/format.hpp"
#include "wispen/macho/unwind_table.hpp"

namespace wispen::loader {

namespace {

using macho::kUnwindModeMask;

/// Numbers as DWARF writes them, one after the other.
class Bytes {
 public:
  template <class T>
  Bytes& raw(T value) {
    text_.append(reinterpret_cast<const char*>(&value), sizeof value);
    return *this;
  }
  Bytes& byte(unsigned value) { return raw(static_cast<std::uint8_t>(value)); }
  Bytes& uleb(std::uint64_t value) {
    do {
      const auto low = static_cast<unsigned>(value & 0x7F);
      value >>= 7;
      byte(low | (value != 0 ? 0x80U : 0U));
    } while (value != 0);
    return *this;
  }
  Bytes& append(const std::string& more) {
    text_ += more;
    return *this;
  }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

/// The instructions of one function's frame; offsets are from the frame's address (CFA), in words downwards.
class Rules {
 public:
  Rules& frame(unsigned base_register, std::uint64_t offset) {
    bytes_.byte(0x0C).uleb(base_register).uleb(offset);
    return *this;
  }
  Rules& saved(unsigned number, std::uint64_t words_below) {
    if (number < 64) {
      bytes_.byte(0x80U | number).uleb(words_below);
    } else {
      bytes_.byte(0x05).uleb(number).uleb(words_below);
    }
    return *this;
  }
  /// From here on the return address is signed.
  Rules& signed_return() {
    bytes_.byte(0x2D);  // DW_CFA_AARCH64_negate_ra_state
    return *this;
  }
  const std::string& text() const { return bytes_.text(); }

 private:
  Bytes bytes_;
};

/// x86-64: rbp 6, rsp 7, return address 16. A frame pointer, with up to five registers saved below it.
std::optional<std::string> rules_x86_64(std::uint32_t code) {
  constexpr std::uint32_t kWithFrame = 0x01000000;
  constexpr std::uint32_t kWithoutFrame = 0x02000000;
  constexpr std::array<unsigned, 6> kRegisters = {0, 3, 12, 13, 14, 15};
  if ((code & kUnwindModeMask) == kWithFrame) {
    Rules rules;
    rules.frame(6, 16).saved(16, 1).saved(6, 2);
    const std::uint64_t deepest = code >> 16 & 0xFF;
    for (unsigned i = 0; i < 5; ++i) {
      const unsigned which = code >> (3 * i) & 7;
      if (which == 0) continue;
      if (which > 5 || deepest < i) return std::nullopt;
      rules.saved(kRegisters[which], 2 + deepest - i);
    }
    return rules.text();
  }
  if ((code & kUnwindModeMask) == kWithoutFrame && (code >> 10 & 7) == 0) {  // no register saved
    const std::uint64_t words = code >> 16 & 0xFF;
    if (words == 0) return std::nullopt;
    return Rules().frame(7, words * 8).saved(16, 1).text();
  }
  return std::nullopt;
}

/// arm64: fp 29, lr 30, sp 31, d8 is 72. Registers are saved in pairs. Each frame of arm64e code has a signed
/// return address.
std::optional<std::string> rules_arm64(std::uint32_t code, bool arm64e) {
  Rules rules;
  std::uint64_t next = 1;
  if ((code & kUnwindModeMask) == macho::kUnwindArm64Frame) {
    rules.frame(29, 16).saved(30, 1).saved(29, 2);
    if (arm64e) rules.signed_return();
    next = 3;
  } else if ((code & kUnwindModeMask) == macho::kUnwindArm64Frameless) {
    rules.frame(31, static_cast<std::uint64_t>(code >> 12 & 0xFFF) * 16);
  } else {
    return std::nullopt;
  }
  constexpr std::array<std::pair<std::uint32_t, unsigned>, 9> kPairs = {{{0x1, 19},
                                                                         {0x2, 21},
                                                                         {0x4, 23},
                                                                         {0x8, 25},
                                                                         {0x10, 27},
                                                                         {0x100, 72},
                                                                         {0x200, 74},
                                                                         {0x400, 76},
                                                                         {0x800, 78}}};
  for (const auto& [bit, first] : kPairs) {
    if ((code & bit) == 0) continue;
    rules.saved(first, next).saved(first + 1, next + 1);
    next += 2;
  }
  return rules.text();
}

bool is_arm64e(const macho::Image& image) { return image.architecture() == "arm64e"; }

/// Writes the section, record by record.
class Frames {
 public:
  explicit Frames(const macho::Image& image) : image_(image) {}

  /// A record that frames refer to, for functions with a personality or (0) without; its place.
  std::size_t common(std::uintptr_t personality) {
    for (const auto& [known, place] : commons_) {
      if (known == personality) return place;
    }
    const bool arm = image_.cpu == macho::kCpuArm64;
    Bytes body;
    body.raw(std::uint32_t{0}).byte(1);
    body.append(personality != 0 ? "zPLR" : "zR");
    if (is_arm64e(image_)) body.append("B");  // with key IB
    body.byte(0);
    body.uleb(1).byte(0x78);  // code in bytes, data in words downwards
    body.uleb(arm ? 30 : 16);
    if (personality != 0) {
      body.uleb(11).byte(0).raw(static_cast<std::uint64_t>(personality)).byte(0).byte(0);
    } else {
      body.uleb(1).byte(0);
    }
    if (!arm) body.append(Rules().frame(7, 8).saved(16, 1).text());
    const std::size_t place = add(body);
    commons_.emplace_back(personality, place);
    return place;
  }

  void function(std::size_t common, std::uint64_t begin, std::uint64_t size,
                std::optional<std::uint64_t> lsda, const std::string& rules) {
    Bytes body;
    body.raw(static_cast<std::uint32_t>(section_.size() + 4 - common));
    body.raw(begin).raw(size);
    if (lsda) {
      body.uleb(8).raw(*lsda);
    } else {
      body.uleb(0);
    }
    add(body.append(rules));
  }

  std::string finish() && { return std::move(section_) + std::string(4, '\0'); }

 private:
  std::size_t add(const Bytes& body) {
    std::string padded = body.text();
    padded.resize((padded.size() + 4 + 7) / 8 * 8 - 4, '\0');  // zero is "nothing to do"
    const std::size_t place = section_.size();
    section_ += Bytes().raw(static_cast<std::uint32_t>(padded.size())).text() + padded;
    return place;
  }

  const macho::Image& image_;
  std::string section_;
  std::vector<std::pair<std::uintptr_t, std::size_t>> commons_;
};

}  // namespace

Result<std::string> dwarf_frames(const macho::Image& image, std::uintptr_t base,
                                 std::uintptr_t authenticating_personality) {
  const auto table = macho::read_unwind_table(image);
  if (!table) return table.error();
  if (table->functions.empty()) return std::string();

  const bool arm64e = is_arm64e(image);
  if (arm64e && table->personalities.size() > 1)
    return Error{"the image has several personality functions, of which only one could be authenticated"};
  Frames frames(image);
  for (const macho::UnwindTable::Function& function : table->functions) {
    if (function.size == 0 || !macho::fits(function.offset, function.size, image.memory_size())) continue;
    const auto rules =
        image.cpu == macho::kCpuArm64 ? rules_arm64(function.code, arm64e) : rules_x86_64(function.code);
    if (!rules) continue;
    std::uintptr_t personality = 0;
    std::optional<std::uint64_t> lsda;
    const auto place = table->personality_of(function);
    if ((function.code & macho::kUnwindHasLsda) != 0 && place) {
      const auto offset = table->lsda_of(function.offset);
      if (!offset || !macho::fits(*place, 8, image.memory_size()) || *offset >= image.memory_size()) {
        return Error{"the table of unwinding codes leads out of the image"};
      }
      if (arm64e) {
        personality = authenticating_personality;
      } else {
        // The pointer was bound already: it lies in the image's own table of imports.
        std::memcpy(&personality, reinterpret_cast<const void*>(base + *place), sizeof personality);
      }
      lsda = base + *offset;
    }
    frames.function(frames.common(personality), base + function.offset, function.size, lsda, *rules);
  }
  return std::move(frames).finish();
}

}  // namespace wispen::loader
