#include "host/plist/splice.hpp"

#include <new>
#include <utility>

#include "host/files/replace_file.hpp"
#include "host/plist/binary_splice.hpp"
#include "host/plist/change_set.hpp"
#include "host/plist/limits.hpp"
#include "host/plist/tree_check.hpp"
#include "host/plist/xml_splice.hpp"

namespace wispen::plist {

namespace {

constexpr std::size_t kValueDepth = 2;  // a root's value stands one level below it

const char* find_unwritable(const std::vector<Change>& changes) {
  for (const Change& change : changes) {
    if (!change.value) continue;
    if (const char* reason = plist::find_unwritable(std::string_view{change.key})) return reason;
    if (const char* reason = plist::find_unwritable(*change.value, kValueDepth)) return reason;
  }
  return nullptr;
}

bool xml_holds(const std::vector<Change>& changes) {
  for (const Change& change : changes) {
    if (!change.value) continue;
    if (find_unholdable_by_xml(std::string_view{change.key}) || find_unholdable_by_xml(*change.value))
      return false;
  }
  return true;
}

/// The dictionary with the changes made, to be written as a whole.
Tree apply(Dictionary members, const std::vector<Change>& changes) {
  ChangeSet set(changes);
  Dictionary result;
  for (Member& member : members) {
    ChangeSet::Effective* effective = set.find(std::string_view{member.key});
    if (effective == nullptr) {
      result.push_back(std::move(member));
    } else {
      effective->met = true;
      if (effective->change->value) result.push_back({std::move(member.key), *effective->change->value});
    }
  }
  for (const ChangeSet::Effective& effective : set.effective()) {
    if (!effective.met && effective.change->value) {
      result.push_back({effective.change->key, *effective.change->value});
    }
  }
  return result;
}

Result<std::string> splice_unguarded(const std::optional<Document>& document,
                                     const std::vector<Change>& changes, Format fresh_format) {
  if (const char* reason = find_unwritable(changes)) return Error{reason};
  const bool keeps = document && document->root().is(Type::Dictionary);
  const Format format = keeps ? document->format() : fresh_format;
  if (!keeps || (format == Format::Xml && !xml_holds(changes))) {
    Dictionary members;
    if (keeps) members = std::move(*Tree::of(document->root()).as<Dictionary>());
    return encode(apply(std::move(members), changes), xml_holds(changes) ? format : Format::Binary);
  }
  std::string bytes =
      format == Format::Xml
          ? splice_xml(static_cast<const XmlContents&>(document->contents()), ChangeSet(changes))
          : splice_binary(static_cast<const BinaryContents&>(document->contents()), ChangeSet(changes));
  if (bytes.size() > kMaxFileSize) return Error{kTooLarge};
  return bytes;
}

}  // namespace

Result<std::string> splice(const std::optional<Document>& document, const std::vector<Change>& changes,
                           Format fresh_format) {
  try {
    return splice_unguarded(document, changes, fresh_format);
  } catch (const std::bad_alloc&) {
    return Error{"out of memory"};
  }
}

Result<void> update_file(const std::string& path, const std::vector<Change>& changes, Format fresh_format,
                         const files::SystemCalls& calls) {
  const Result<std::optional<Document>> document = Document::read_for_writing(path, calls);
  if (!document) return document.error();
  const Result<std::string> bytes = splice(*document, changes, fresh_format);
  if (!bytes) return bytes.error();
  return files::replace(path, *bytes, calls);
}

}  // namespace wispen::plist
