// fuzz/plist_fuzz.cpp: any bytes as a property list; what can be read is walked, written, spliced, read
// again.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "host/plist/document.hpp"
#include "host/plist/splice.hpp"
#include "host/plist/tree.hpp"

namespace {

using namespace wispen::plist;

void require(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "broken promise: %s\n", what);
  std::abort();
}

Document reread(const wispen::Result<std::string>& bytes) {
  wispen::Result<Document> document = Document::parse(*bytes);
  require(document.ok(), "what was written can be read");
  return *std::move(document);
}

void check_writing(const Tree& tree, Format format) {
  const wispen::Result<std::string> binary = encode(tree, Format::Binary);
  if (binary) require(Tree::of(reread(binary).root()) == tree, "binary holds every value");
  const wispen::Result<std::string> xml = encode(tree, Format::Xml);
  if (!xml) return;
  const Tree again = Tree::of(reread(xml).root());
  // A binary list may hold fractions of a second, NaNs of many kinds and UIDs; an XML list holds nothing
  // that XML would change.
  require(format == Format::Binary || again == tree, "XML holds every value of an XML list");
}

/// Whether the dictionary has this very value, or, for null, no such key.
void check_entry(const Document& document, const std::string& key, const Tree* value) {
  const std::optional<Value> found = document.root().find(key);
  require(found.has_value() == (value != nullptr), "a key is there exactly when it should be");
  if (value != nullptr) require(Tree::of(*found) == *value, "a key has the value it should have");
}

void check_splicing(const Document& document, const Dictionary& members) {
  const Tree value(Array{true, "\xF0\x9F\x98\x80", Dictionary{{"<&>", 1.5}}});
  std::vector<Change> changes = {{"a new key", value}};
  if (!members.empty()) changes.push_back({members.front().key, std::nullopt});
  if (members.size() > 1) changes.push_back({members.back().key, value});
  const wispen::Result<std::string> bytes = splice(document, changes);
  if (!bytes) return;  // too deep or too large
  const Document changed = reread(bytes);
  for (const Member& member : members) {
    const Tree* expected = &member.value;
    for (const Change& change : changes) {
      if (change.key == member.key) expected = change.value ? &*change.value : nullptr;
    }
    check_entry(changed, member.key, expected);
  }
  if (members.empty() || members.front().key != "a new key") check_entry(changed, "a new key", &value);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const wispen::Result<Document> document = Document::parse(bytes);
  if (!document) {
    require(!document.error().message.empty(), "an error says something");
    return 0;
  }
  const Tree tree = Tree::of(document->root());
  check_writing(tree, document->format());
  if (const Dictionary* members = tree.as<Dictionary>()) check_splicing(*document, *members);
  return 0;
}
