// host/foundation/plist_objects.hpp: property-list values as Foundation's objects, and back.
#pragma once

#include <string>
#include <string_view>

#include "host/core/result.hpp"
#include "host/plist/document.hpp"
#include "host/plist/tree.hpp"
#include "platform/Foundation.hpp"

namespace wispen {

/// A string of any content, zero bytes included; nil for bytes that are not UTF-8.
NSString string_of(std::string_view utf8);
/// The string's UTF-8; an error where it holds half a surrogate pair.
Result<std::string> utf8_of(const NSString& string);

/// The object that a value stands for, containers immutable and made whole.
NSObject object_of(const plist::Value& value);

/// The tree of an object. An error where it, or something in it, is none of a property list's kinds, a
/// dictionary has a key that is not a string, or containers are nested too deeply (or in a circle).
Result<plist::Tree> tree_of(const objc::Object& object);

}  // namespace wispen
