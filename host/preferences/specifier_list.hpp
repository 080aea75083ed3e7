// host/preferences/specifier_list.hpp: the specifier lists of a bundle, made into specifiers.
#pragma once

#include <string>

#include "host/preferences/specifier.hpp"

namespace wispen::preferences {

struct SpecifierList {
  /// The list's own "title", translated; nil where it has none.
  NSString title;
  NSMutableArray specifiers;  // empty where there is no list
};

/// Reads `name`.plist of the bundle and makes a specifier of every dictionary among its "items", in file
/// order. Labels and texts are translated by the strings table of the same name. Getter and setter are the
/// row's "get" and "set", else the value store of the target. A row that needs a capability which the device
/// lacks is left out. What cannot be used (no such list, an item that is not a dictionary, an unknown cell)
/// is reported as a problem and passed over.
SpecifierList load_specifier_list(const NSBundle& bundle, const NSString& name, const NSObject& target);

/// The text, or so much of it that it can be shown (limits.hpp), with an ellipsis.
NSString shortened(const NSString& text);

}  // namespace wispen::preferences
