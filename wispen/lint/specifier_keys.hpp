// wispen/lint/specifier_keys.hpp: the keys that a row may have, and what they hold.
#pragma once

#include <optional>
#include <string_view>

#include "wispen/facts/facts.hpp"

namespace wispen::lint {

enum class Holds {
  Any,
  String,
  Boolean,
  Number,
  Array,
  Dictionary,
  ClassName,
  SelectorName,
  ImageName,
  Text
};

/// What a key holds, of the platform's or of the bundle's own; nothing for any other. A Text is translated;
/// so are the strings of a title array.
std::optional<Holds> known_key(std::string_view name, const BundleFacts& facts);
/// Whether phones heed the key and the stand-ins do not.
bool is_ignored(std::string_view name);
/// "a string", "a number": for messages.
std::string_view description(Holds holds);

}  // namespace wispen::lint
