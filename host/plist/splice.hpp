// host/plist/splice.hpp: changed keys in a list that otherwise stays as it was written.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/core/result.hpp"
#include "host/files/system_calls.hpp"
#include "host/plist/document.hpp"
#include "host/plist/tree.hpp"

namespace wispen::plist {

/// A key of the root dictionary that gets a value, or, without one, goes.
struct Change {
  std::string key;
  std::optional<Tree> value;
};

/// The bytes of `document` with `changes` made; of several for one key the last counts.
///
/// Format, text encoding and every value that is not changed stay byte for byte. In XML that holds for all
/// that stands around them too: order, white space, comments; new keys come last, indented like the last
/// one. In a binary list it holds for the objects, which keep their numbers; objects that nothing names any
/// more go, and references are made wider when their number outgrows them. A changed key that stood twice
/// stands once afterwards.
///
/// No document, or one whose root is not a dictionary, counts as an empty dictionary, written in
/// `fresh_format`. A value that XML cannot hold (see encode()) turns an XML list into a binary one rather
/// than being lost. Errors are those of encode().
Result<std::string> splice(const std::optional<Document>& document, const std::vector<Change>& changes,
                           Format fresh_format = Format::Xml);

/// Reads the file, splices and replaces it (see Document::read_for_writing and files::replace).
Result<void> update_file(const std::string& path, const std::vector<Change>& changes,
                         Format fresh_format = Format::Xml,
                         const files::SystemCalls& calls = files::SystemCalls::real());

}  // namespace wispen::plist
