#include "host/graphics/attributed_text.hpp"

#include <algorithm>

#include "host/plist/utf.hpp"

namespace wispen::graphics {

namespace {

bool begins_character(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

// Only characters of four bytes lie outside the first plane and take two units.
std::size_t units_of(char lead) { return static_cast<unsigned char>(lead) >= 0xF0 ? 2 : 1; }

// The text engine treats a NUL as the end, so the picture of one takes its place.
constexpr char32_t kPictureOfNul = 0x2400;

std::string valid_utf8(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    const std::size_t valid = plist::utf8_error_offset(bytes);
    for (const char byte : bytes.substr(0, valid)) {
      if (byte == '\0') {
        plist::append_utf8(text, kPictureOfNul);
      } else {
        text += byte;
      }
    }
    bytes.remove_prefix(valid);
    if (bytes.empty()) break;
    plist::append_utf8(text, plist::kReplacementCharacter);
    bytes.remove_prefix(1);
  }
  return text;
}

std::string valid_utf8(std::u16string_view units) {
  std::string text;
  for (std::size_t i = 0; i < units.size(); ++i) {
    char32_t character = units[i];
    const bool leads = character >= 0xD800 && character < 0xDC00;
    if (leads && i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] < 0xE000) {
      character = 0x10000 + ((character - 0xD800) << 10) + (units[++i] - 0xDC00u);
    } else if (character >= 0xD800 && character < 0xE000) {
      character = plist::kReplacementCharacter;
    } else if (character == 0) {
      character = kPictureOfNul;
    }
    plist::append_utf8(text, character);
  }
  return text;
}

std::size_t count_units(std::string_view text) {
  std::size_t units = 0;
  for (const char byte : text) {
    if (begins_character(byte)) units += units_of(byte);
  }
  return units;
}

}  // namespace

AttributedText::AttributedText(std::string_view text, const TextAttributes& attributes)
    : text_(valid_utf8(text)), length_(count_units(text_)), empty_attributes_(attributes) {
  if (length_ > 0) runs_.push_back({{0, length_}, attributes});
}

AttributedText::AttributedText(std::u16string_view text, const TextAttributes& attributes)
    : text_(valid_utf8(text)), length_(count_units(text_)), empty_attributes_(attributes) {
  if (length_ > 0) runs_.push_back({{0, length_}, attributes});
}

void AttributedText::edit(TextRange range, const std::function<void(TextAttributes&)>& change) {
  const std::size_t begin = std::min(range.location, length_);
  const std::size_t end = begin + std::min(range.length, length_ - begin);
  std::vector<TextRun> edited;
  const auto add = [&edited](std::size_t from, std::size_t to, const TextAttributes& attributes) {
    if (from >= to) return;
    if (!edited.empty() && edited.back().attributes == attributes) {
      edited.back().range.length += to - from;
    } else {
      edited.push_back({{from, to - from}, attributes});
    }
  };
  for (const TextRun& run : runs_) {
    const std::size_t inside = std::clamp(begin, run.range.location, run.range.end());
    const std::size_t after = std::clamp(end, inside, run.range.end());
    TextAttributes changed = run.attributes;
    if (inside < after) change(changed);
    add(run.range.location, inside, run.attributes);
    add(inside, after, changed);
    add(after, run.range.end(), run.attributes);
  }
  runs_ = std::move(edited);
}

void AttributedText::set_font(TextRange range, const Font& font) {
  edit(range, [&font](TextAttributes& attributes) { attributes.font = font; });
}

void AttributedText::set_colour(TextRange range, const Colour& colour) {
  edit(range, [&colour](TextAttributes& attributes) { attributes.colour = colour; });
}

void AttributedText::append(const AttributedText& other) {
  const std::vector<TextRun> added = other.runs_;  // a copy: text may be appended to itself
  for (TextRun run : added) {
    run.range.location += length_;
    if (!runs_.empty() && runs_.back().attributes == run.attributes) {
      runs_.back().range.length += run.range.length;
    } else {
      runs_.push_back(run);
    }
  }
  text_ += std::string(other.text_);
  length_ += other.length_;
}

const TextAttributes& AttributedText::attributes_at(std::size_t index) const {
  if (runs_.empty()) return empty_attributes_;
  const auto run = std::find_if(runs_.begin(), runs_.end(),
                                [index](const TextRun& each) { return index < each.range.end(); });
  return run == runs_.end() ? runs_.back().attributes : run->attributes;
}

std::size_t AttributedText::utf8_offset(std::size_t index) const {
  if (index >= length_) return text_.size();
  if (length_ == text_.size()) return index;
  std::size_t units = 0;
  for (std::size_t offset = 0; offset < text_.size(); ++offset) {
    if (!begins_character(text_[offset])) continue;
    const std::size_t next = units + units_of(text_[offset]);
    if (next > index) return offset;
    units = next;
  }
  return text_.size();
}

std::size_t AttributedText::index_of(std::size_t utf8_offset) const {
  if (length_ == text_.size()) return std::min(utf8_offset, length_);
  return count_units(std::string_view{text_}.substr(0, utf8_offset));
}

std::size_t AttributedText::hash() const {
  std::size_t value = std::hash<std::string>{}(text_);
  for (const TextRun& run : runs_) {
    value = value * 31 + run.range.length;
    value = value * 31 + std::hash<double>{}(run.attributes.font.size());
    value = value * 31 + std::hash<double>{}(run.attributes.font.weight());
  }
  return value;
}

}  // namespace wispen::graphics
