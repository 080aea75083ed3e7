// wispen/macho/unwind_table.cpp

#include "wispen/macho/unwind_table.hpp"

#include <algorithm>
#include <string>

#include "wispen/macho/bytes.hpp"

namespace wispen::macho {

namespace {

constexpr std::size_t kMostFunctions = std::size_t{1} << 20;  // pages may be named more than once
constexpr std::uint32_t kMostPersonalities = 3;               // two bits of a code number them, from 1

Error broken(const std::string& what) { return Error{"the table of unwinding codes " + what}; }

/// Reads the table page by page.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {}

  Result<UnwindTable> read() {
    const auto version = number(0);
    common_ = number(4).value_or(0);
    common_count_ = number(8).value_or(0);
    const auto personalities = number(12);
    const auto personality_count = number(16);
    const auto index = number(20);
    const auto index_count = number(24);
    if (version != 1U || !index_count) return broken("is of an unknown version");
    if (*personality_count > kMostPersonalities) return broken("has too many personality functions");
    for (std::uint64_t i = 0; i < *personality_count; ++i) {
      const auto word = number(*personalities + 4 * i);
      if (!word) return broken("is cut off");
      table_.personalities.push_back(*word);
    }
    if (*index_count == 0) return broken("is cut off");
    for (std::uint64_t i = 0; i + 1 < *index_count; ++i) {
      const auto first = number(*index + 12 * i);
      const auto page = number(*index + 12 * i + 4);
      if (!first || !page) return broken("is cut off");
      if (*page == 0) continue;  // none of these functions has a code
      if (auto done = read_page(*page, *first); !done) return done.error();
    }
    const std::uint64_t last = *index + 12 * (std::uint64_t{*index_count} - 1);
    const auto end = number(last);
    if (!end) return broken("is cut off");
    if (auto done = measure(*end); !done) return done.error();
    if (auto done = read_lsdas(number(*index + 8ULL), number(last + 8)); !done) return done.error();
    return std::move(table_);
  }

 private:
  std::optional<std::uint32_t> number(std::uint64_t at) const { return read_at<std::uint32_t>(bytes_, at); }

  Result<void> read_page(std::uint64_t page, std::uint32_t first) {
    constexpr std::uint32_t kRegular = 2;
    constexpr std::uint32_t kCompressed = 3;
    const auto kind = number(page);
    const auto entries = read_at<std::uint16_t>(bytes_, page + 4);
    const auto count = read_at<std::uint16_t>(bytes_, page + 6);
    if (!count) return broken("is cut off");
    for (std::uint64_t i = 0; i < *count; ++i) {
      UnwindTable::Function function{};
      if (kind == kRegular) {
        const auto offset = number(page + *entries + 8 * i);
        const auto code = number(page + *entries + 8 * i + 4);
        if (!code) return broken("is cut off");
        function = {*offset, 0, *code};
      } else if (kind == kCompressed) {
        const auto codes = read_at<std::uint16_t>(bytes_, page + 8);
        const auto entry = number(page + *entries + 4 * i);
        if (!codes || !entry) return broken("is cut off");
        const std::uint64_t which = *entry >> 24;
        const auto code =
            number(which < common_count_ ? common_ + 4 * which : page + *codes + 4 * (which - common_count_));
        if (!code) return broken("is cut off");
        function = {first + (*entry & 0xFFFFFF), 0, *code};
      } else {
        return broken("has a page of an unknown kind");
      }
      if (!table_.functions.empty() && function.offset < table_.functions.back().offset)
        return broken("is out of order");
      if (table_.functions.size() == kMostFunctions) return broken("has too many functions");
      table_.functions.push_back(function);
    }
    return {};
  }

  /// Each function reaches up to the next one.
  Result<void> measure(std::uint32_t end) {
    auto& functions = table_.functions;
    for (std::size_t i = 0; i < functions.size(); ++i) {
      const std::uint32_t next = i + 1 < functions.size() ? functions[i + 1].offset : end;
      if (next < functions[i].offset) return broken("is out of order");
      functions[i].size = next - functions[i].offset;
    }
    return {};
  }

  Result<void> read_lsdas(std::optional<std::uint32_t> begin, std::optional<std::uint32_t> end) {
    if (!begin || !end) return broken("is cut off");
    for (std::uint64_t at = *begin; at + 8 <= *end; at += 8) {
      const auto function = number(at);
      const auto lsda = number(at + 4);
      if (!function || !lsda) return broken("is cut off");
      table_.lsdas.emplace_back(*function, *lsda);
    }
    std::ranges::sort(table_.lsdas);
    return {};
  }

  std::string_view bytes_;
  std::uint64_t common_ = 0;
  std::uint64_t common_count_ = 0;
  UnwindTable table_;
};

/// The personality words that DWARF's common records name.
class FrameReader {
 public:
  FrameReader(std::string_view bytes, std::uint64_t address) : bytes_(bytes), address_(address) {}

  Result<void> read(std::vector<std::uint64_t>& words) const {
    std::uint64_t at = 0;
    while (const auto length = read_at<std::uint32_t>(bytes_, at)) {
      if (*length == 0) return {};
      const auto kind = read_at<std::uint32_t>(bytes_, at + 4);
      if (!kind || *length < 4 || !fits(at + 4, *length, bytes_.size())) return broken_frames("are cut off");
      if (*kind == 0) {
        if (auto done = read_common(at + 8, *length - 4, words); !done) return done;
      }
      at += 4 + std::uint64_t{*length};
    }
    return {};
  }

 private:
  static Error broken_frames(const std::string& what) { return Error{"the DWARF frames " + what}; }

  Result<void> read_common(std::uint64_t at, std::uint64_t size, std::vector<std::uint64_t>& words) const {
    constexpr std::uint8_t kIndirectRelative = 0x9B;  // 4 bytes from here to the word
    Cursor cursor(part(bytes_, at, size));
    if (cursor.byte() != 1) return broken_frames("are of an unknown version");
    const std::string_view letters = cursor.text();
    cursor.uleb();  // code
    cursor.sleb();  // data
    cursor.uleb();  // return address
    if (!letters.starts_with('z')) return letters.empty() ? Result<void>() : unknown(letters);
    cursor.uleb();
    for (const char letter : letters.substr(1)) {
      if (letter == 'P') {
        if (cursor.byte() != kIndirectRelative)
          return broken_frames("name a personality function in an unknown way");
        const std::uint64_t here = at + cursor.position();
        const auto distance = read_at<std::int32_t>(bytes_, here);
        for (int i = 0; i < 4; ++i) cursor.byte();
        if (!distance || !cursor.ok()) return broken_frames("are cut off");
        words.push_back(address_ + here + static_cast<std::uint64_t>(std::int64_t{*distance}));
      } else if (letter == 'L' || letter == 'R') {
        cursor.byte();
      } else if (letter != 'B' && letter != 'S' && letter != 'G') {
        return unknown(letters);
      }
    }
    return cursor.ok() ? Result<void>() : Result<void>(broken_frames("are cut off"));
  }

  static Result<void> unknown(std::string_view letters) {
    return broken_frames("have a record of an unknown kind: " + std::string(letters));
  }

  std::string_view bytes_;
  std::uint64_t address_;
};

const Section* section_of(const Image& image, std::string_view name) {
  for (const Segment& segment : image.segments) {
    const auto found = std::ranges::find(segment.sections, name, &Section::name);
    if (found != segment.sections.end() && !found->is_zero_fill()) return &*found;
  }
  return nullptr;
}

}  // namespace

std::optional<std::uint32_t> UnwindTable::lsda_of(std::uint32_t function) const {
  const auto found =
      std::ranges::lower_bound(lsdas, function, {}, &std::pair<std::uint32_t, std::uint32_t>::first);
  if (found == lsdas.end() || found->first != function) return std::nullopt;
  return found->second;
}

std::optional<std::uint32_t> UnwindTable::personality_of(const Function& function) const {
  const std::size_t which = function.code >> 28 & 3;
  if (which == 0 || which > personalities.size()) return std::nullopt;
  return personalities[which - 1];
}

Result<UnwindTable> read_unwind_table(const Image& image) {
  const Section* const section = section_of(image, "__unwind_info");
  if (section == nullptr) return UnwindTable();
  return Reader(part(image.bytes, section->offset, section->size)).read();
}

Result<std::vector<std::uint64_t>> personality_words(const Image& image, const UnwindTable& table) {
  std::vector<std::uint64_t> words;
  for (const std::uint32_t offset : table.personalities) words.push_back(image.base() + offset);
  if (const Section* const frames = section_of(image, "__eh_frame")) {
    const FrameReader reader(part(image.bytes, frames->offset, frames->size), frames->address);
    if (auto read = reader.read(words); !read) return read.error();
  }
  std::ranges::sort(words);
  words.erase(std::unique(words.begin(), words.end()), words.end());
  return words;
}

}  // namespace wispen::macho
