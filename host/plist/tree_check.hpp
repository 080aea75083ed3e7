// host/plist/tree_check.hpp: what must not be written, because nobody could read it again.
#pragma once

#include <optional>
#include <string>

#include "host/plist/tree.hpp"

namespace wispen::plist {

inline constexpr const char* kTooLarge = "the property list would be larger than a reader takes";

/// Why no format can hold the tree, or null. `depth` is how deep its root will stand, counted from 1.
const char* find_unwritable(const Tree& tree, std::size_t depth);
/// Why a key can stand in no format, or null.
const char* find_unwritable(std::string_view text);

/// Why XML cannot hold a tree or a text that another format can, or nothing.
std::optional<std::string> find_unholdable_by_xml(const Tree& tree);
std::optional<std::string> find_unholdable_by_xml(std::string_view text);

}  // namespace wispen::plist
