// host/plist/document.cpp: a property list that has been read, and views of its values.

#include "host/plist/document.hpp"

#include <cerrno>
#include <new>

#include "host/files/read_file.hpp"
#include "host/plist/binary_contents.hpp"
#include "host/plist/limits.hpp"
#include "host/plist/old_style_parser.hpp"
#include "host/plist/tree.hpp"
#include "host/plist/utf.hpp"
#include "host/plist/xml_contents.hpp"

namespace wispen::plist {

namespace {

template <class Specific>
Result<std::shared_ptr<const Contents>> as_contents(Result<std::shared_ptr<const Specific>> specific) {
  if (!specific) return specific.error();
  return std::shared_ptr<const Contents>(*std::move(specific));
}

std::string_view without_mark(std::string_view text) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  return text.substr(text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0);
}

/// Old-style lists have no writer, as on the platform: they are taken over as XML, or, where a string holds
/// what XML cannot, as binary lists.
Result<std::shared_ptr<const Contents>> parse_old_style(std::string_view text) {
  const Result<Tree> tree = OldStyleParser(text).run();
  if (!tree) return tree.error();
  if (Result<std::string> xml = encode(*tree, Format::Xml)) {
    return as_contents(XmlContents::parse(files::Buffer(*xml), XmlEncoding::Utf8));
  }
  const Result<std::string> binary = encode(*tree, Format::Binary);
  if (!binary) return binary.error();
  return as_contents(BinaryContents::parse(files::Buffer(*binary)));
}

Result<std::shared_ptr<const Contents>> parse_utf16(std::string_view bytes, ByteOrder order) {
  const std::optional<std::string> text = utf8_from_utf16_strict(bytes, order);
  if (!text) return Error{"the file is not well-formed UTF-16"};
  if (const std::string_view list = without_mark(*text); looks_old_style(list)) return parse_old_style(list);
  return as_contents(XmlContents::parse(
      files::Buffer(*text), order == ByteOrder::Big ? XmlEncoding::Utf16Big : XmlEncoding::Utf16Little));
}

Result<std::shared_ptr<const Contents>> parse_any(files::Buffer bytes) {
  const std::string_view view = bytes.view();
  if (view.size() > kMaxFileSize) {
    return Error{"the property list is larger than " + std::to_string(kMaxFileSize) + " bytes"};
  }
  if (view.starts_with(kBinaryMagic)) return as_contents(BinaryContents::parse(std::move(bytes)));
  if (view.starts_with("\xFF\xFE")) return parse_utf16(view, ByteOrder::Little);
  if (view.starts_with("\xFE\xFF")) return parse_utf16(view, ByteOrder::Big);
  if (const std::string_view list = without_mark(view); looks_old_style(list)) return parse_old_style(list);
  return as_contents(XmlContents::parse(std::move(bytes), XmlEncoding::Utf8));
}

/// Whether an error is about the file itself, and would be the same a moment later.
bool says_what_is_there(int error_number) {
  switch (error_number) {
    case ENOENT:
    case ENOTDIR:
    case EISDIR:
    case EINVAL:  // not a regular file
    case ELOOP:
    case ENAMETOOLONG:
    case EACCES:
    case EPERM:
      return true;
    default:
      return false;
  }
}

}  // namespace

bool Value::boolean() const { return is(Type::Boolean) && contents_->boolean(node_); }

Integer Value::integer() const { return is(Type::Integer) ? contents_->integer(node_) : Integer{}; }

double Value::real() const { return is(Type::Real) ? contents_->number(node_) : 0; }

double Value::date() const { return is(Type::Date) ? contents_->number(node_) : 0; }

std::uint64_t Value::uid() const { return is(Type::Uid) ? contents_->uid(node_) : 0; }

std::vector<std::uint8_t> Value::data() const {
  return is(Type::Data) ? contents_->data(node_) : std::vector<std::uint8_t>{};
}

std::string Value::string() const { return is(Type::String) ? contents_->text(node_) : std::string{}; }

std::optional<std::string_view> Value::string_view() const {
  return is(Type::String) ? contents_->text_in_place(node_) : std::nullopt;
}

std::size_t Value::count() const {
  return is(Type::Array) || is(Type::Dictionary) ? contents_->count(node_) : 0;
}

Elements Value::elements() const { return {*contents_, node_, is(Type::Array)}; }

Entries Value::entries() const { return {*contents_, node_, is(Type::Dictionary)}; }

std::optional<Value> Value::find(std::string_view key) const {
  if (!is(Type::Dictionary)) return std::nullopt;
  const std::optional<Node> found = contents_->find(node_, key);
  if (!found) return std::nullopt;
  return Value(*contents_, *found);
}

Result<Document> Document::parse(files::Buffer bytes) {
  try {
    Result<std::shared_ptr<const Contents>> contents = parse_any(std::move(bytes));
    if (!contents) return contents.error();
    return Document(*std::move(contents));
  } catch (const std::bad_alloc&) {
    return Error{"out of memory"};
  }
}

Result<Document> Document::parse(std::string_view bytes) {
  try {
    return parse(files::Buffer(bytes));
  } catch (const std::bad_alloc&) {
    return Error{"out of memory"};
  }
}

Result<Document> Document::read(const std::string& path, const files::SystemCalls& calls) {
  Result<files::Buffer> bytes = files::read(path, kMaxFileSize, calls);
  if (!bytes) return bytes.error();
  Result<Document> document = parse(*std::move(bytes));
  if (document) return document;
  try {
    return Error{path + ": " + document.error().message};
  } catch (const std::bad_alloc&) {
    return Error{"out of memory"};
  }
}

Result<std::optional<Document>> Document::read_for_writing(const std::string& path,
                                                           const files::SystemCalls& calls) {
  try {
    int error_number = 0;
    Result<files::Buffer> bytes = files::read(path, kMaxFileSize, calls, &error_number);
    if (!bytes) {
      if (!says_what_is_there(error_number)) return bytes.error();
      return std::optional<Document>();
    }
    Result<std::shared_ptr<const Contents>> contents = parse_any(*std::move(bytes));
    if (!contents) return std::optional<Document>();
    return std::optional<Document>(Document(*std::move(contents)));
  } catch (const std::bad_alloc&) {
    return Error{"out of memory"};
  }
}

const char* name_of(Type type) {
  switch (type) {
    case Type::Boolean:
      return "a boolean";
    case Type::Integer:
      return "an integer";
    case Type::Real:
      return "a real number";
    case Type::String:
      return "a string";
    case Type::Data:
      return "data";
    case Type::Date:
      return "a date";
    case Type::Array:
      return "an array";
    case Type::Dictionary:
      return "a dictionary";
    case Type::Uid:
      return "a UID";
  }
  return "a value";
}

}  // namespace wispen::plist
