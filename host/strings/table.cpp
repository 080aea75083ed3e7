#include "host/strings/table.hpp"

#include <new>
#include <utility>

#include "host/files/read_file.hpp"
#include "host/plist/document.hpp"
#include "host/plist/limits.hpp"
#include "host/plist/utf.hpp"
#include "host/strings/text_parser.hpp"

namespace wispen::strings {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

using plist::ByteOrder;

struct Reading {
  Entries entries;
  std::optional<Error> error;
};

/// Whether the bytes are an XML list: a .strings text has no use for '<' at its start.
bool looks_like_xml(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  return first != std::string_view::npos && text[first] == '<';
}

Reading read_property_list(std::string_view bytes) {
  Reading reading;
  const Result<plist::Document> document = plist::Document::parse(bytes);
  if (!document) {
    reading.error = document.error();
    return reading;
  }
  const plist::Value root = document->root();
  if (!root.is(plist::Type::Dictionary)) {
    reading.error = Error{"expected a dictionary of strings, found " + std::string(name_of(root.type()))};
    return reading;
  }
  for (const plist::Entry& entry : root.entries()) {
    std::string key = entry.key.string();
    if (entry.value.is(plist::Type::String)) {
      reading.entries.insert_or_assign(std::move(key), entry.value.string());
    } else if (!reading.error) {
      reading.error =
          Error{"expected a string for \"" + key + "\", found " + std::string(name_of(entry.value.type()))};
    }
  }
  return reading;
}

Reading read_text(std::string_view text) {
  TextParser parser(text);
  Reading reading;
  parser.run(reading.entries);
  reading.error = parser.error();
  return reading;
}

Reading read_any(std::string_view bytes) {
  if (bytes.size() > plist::kMaxFileSize) return {{}, Error{"the table is too large"}};
  if (bytes.starts_with("bplist")) return read_property_list(bytes);
  if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
    const ByteOrder order = bytes[0] == '\xFF' ? ByteOrder::Little : ByteOrder::Big;
    const std::optional<std::string> text = plist::utf8_from_utf16_strict(bytes.substr(2), order);
    if (!text) return {{}, Error{"the file is no well-formed UTF-16"}};
    return looks_like_xml(*text) ? read_property_list(bytes) : read_text(*text);
  }
  const std::string_view text = bytes.starts_with(kUtf8Mark) ? bytes.substr(kUtf8Mark.size()) : bytes;
  return looks_like_xml(text) ? read_property_list(bytes) : read_text(text);
}

}  // namespace

Table Table::parse(std::string_view bytes, std::string_view name) {
  Table table;
  try {
    Reading reading = read_any(bytes);
    table.entries_ = std::move(reading.entries);
    if (reading.error) table.error_ = Error{std::string(name) + ": " + reading.error->message};
  } catch (const std::bad_alloc&) {
    table.error_ = Error{"out of memory"};
  }
  return table;
}

Table Table::read(const std::string& path, const files::SystemCalls& calls) {
  const Result<files::Buffer> bytes = files::read(path, plist::kMaxFileSize, calls);
  if (bytes) return parse(bytes->view(), path);
  Table table;
  table.error_ = bytes.error();
  return table;
}

const std::string* Table::find(std::string_view key) const {
  const auto found = entries_.find(key);
  return found == entries_.end() ? nullptr : &found->second;
}

Result<Entries> Table::complete() const {
  if (error_) return *error_;
  return entries_;
}

}  // namespace wispen::strings
