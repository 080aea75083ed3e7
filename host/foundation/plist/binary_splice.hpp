// host/foundation/plist/binary_splice.hpp: changes made among the objects of a binary property list.
#pragma once

#include <string>

#include "host/foundation/plist/binary_contents.hpp"
#include "host/foundation/plist/change_set.hpp"

namespace wispen::plist {

/// The file's bytes. The root is a dictionary.
std::string splice_binary(const BinaryContents& contents, ChangeSet changes);

}  // namespace wispen::plist
