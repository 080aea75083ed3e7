// host/plist/xml_writer.hpp: trees as XML property lists.
#pragma once

#include <string>
#include <string_view>

#include "host/plist/tree.hpp"

namespace wispen::plist {

/// How a file lays its elements out.
struct XmlLayout {
  std::string line;         ///< a line end and the indentation of the element being written
  std::string step = "\t";  ///< what each level adds
};

/// Appends a tree's element. Its first tag stands where the text ends; its further lines follow the layout.
/// The tree is one that XML can hold.
void append_xml(std::string& xml, const Tree& tree, const XmlLayout& layout);

/// Appends <key>...</key>.
void append_xml_key(std::string& xml, std::string_view key);

/// A whole file, laid out as the platform does. The tree is one that XML can hold.
std::string encode_xml(const Tree& tree);

}  // namespace wispen::plist
