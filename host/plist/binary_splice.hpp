// host/plist/binary_splice.hpp: changes made among the objects of a binary property list.
#pragma once

#include <string>

#include "host/plist/binary_contents.hpp"
#include "host/plist/change_set.hpp"

namespace wispen::plist {

/// The file's bytes. The root is a dictionary.
std::string splice_binary(const BinaryContents& contents, ChangeSet changes);

}  // namespace wispen::plist
