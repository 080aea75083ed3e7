// host/plist/xml_splice.hpp: changes made inside the text of an XML property list.
#pragma once

#include <string>

#include "host/plist/change_set.hpp"
#include "host/plist/xml_contents.hpp"

namespace wispen::plist {

/// The file's bytes, in its own encoding. The root is a dictionary; XML can hold every new key and value.
std::string splice_xml(const XmlContents& contents, ChangeSet changes);

}  // namespace wispen::plist
