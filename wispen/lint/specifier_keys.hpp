// wispen/lint/specifier_keys.hpp: the keys that a row may have, and what they hold.
#pragma once

#include <span>
#include <string_view>

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

struct KnownKey {
  std::string_view name;
  Holds holds;
};

/// The platform's own and this bundle's. A Text is translated; so are the strings of a title array.
std::span<const KnownKey> known_keys();
const KnownKey* find_known_key(std::string_view name);
/// "a string", "a number": for messages.
std::string_view description(Holds holds);

}  // namespace wispen::lint
