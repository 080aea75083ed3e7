#include "host/foundation/plist/splice.hpp"

#include <new>
#include <utility>

#include "host/foundation/files/replace_file.hpp"
#include "host/foundation/plist/binary_splice.hpp"
#include "host/foundation/plist/change_set.hpp"
#include "host/foundation/plist/limits.hpp"
#include "host/foundation/plist/tree_check.hpp"
#include "host/foundation/plist/xml_splice.hpp"

namespace wispen::plist {

namespace {

constexpr std::size_t kValueDepth = 2;  // a root's value stands one level below it

const char* findUnwritable(const std::vector<Change>& changes) {
  for (const Change& change : changes) {
    if (!change.value) continue;
    if (const char* reason = plist::findUnwritable(std::string_view{change.key})) return reason;
    if (const char* reason = plist::findUnwritable(*change.value, kValueDepth)) return reason;
  }
  return nullptr;
}

bool xmlHolds(const std::vector<Change>& changes) {
  for (const Change& change : changes) {
    if (!change.value) continue;
    if (findUnholdableByXml(std::string_view{change.key}) || findUnholdableByXml(*change.value)) return false;
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

Result<std::string> spliceUnguarded(const std::optional<Document>& document,
                                    const std::vector<Change>& changes, Format fresh_format) {
  if (const char* reason = findUnwritable(changes)) return Error{reason};
  const bool keeps = document && document->root().is(Type::Dictionary);
  const Format format = keeps ? document->format() : fresh_format;
  if (!keeps || (format == Format::Xml && !xmlHolds(changes))) {
    Dictionary members;
    if (keeps) members = std::move(*Tree::of(document->root()).as<Dictionary>());
    return encode(apply(std::move(members), changes), xmlHolds(changes) ? format : Format::Binary);
  }
  std::string bytes =
      format == Format::Xml
          ? spliceXml(static_cast<const XmlContents&>(document->contents()), ChangeSet(changes))
          : spliceBinary(static_cast<const BinaryContents&>(document->contents()), ChangeSet(changes));
  if (bytes.size() > kMaxFileSize) return Error{kTooLarge};
  return bytes;
}

}  // namespace

Result<std::string> splice(const std::optional<Document>& document, const std::vector<Change>& changes,
                           Format fresh_format) {
  try {
    return spliceUnguarded(document, changes, fresh_format);
  } catch (const std::bad_alloc&) {
    return Error{"out of memory"};
  }
}

Result<void> updateFile(const std::string& path, const std::vector<Change>& changes, Format fresh_format,
                        const files::SystemCalls& calls) {
  const Result<std::optional<Document>> document = Document::readForWriting(path, calls);
  if (!document) return document.error();
  const Result<std::string> bytes = splice(*document, changes, fresh_format);
  if (!bytes) return bytes.error();
  return files::replace(path, *bytes, calls);
}

}  // namespace wispen::plist
