// host/preferences/method_roles.hpp: which methods a specifier list may name for what.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/objc/method_shape.hpp"

namespace wispen::preferences {

/// What a list has a method for.
enum class MethodRole {
  Getter,      ///< "get": returns an object, takes the row
  Setter,      ///< "set": takes the value and the row
  Action,      ///< "action" and its like: takes the row or nothing
  DataSource,  ///< "valuesDataSource", "titlesDataSource": returns an object, takes the row
};

/// Why a method of this name and shape is not performed because a list says so; nothing where it may be. A
/// list is data: what it names is never called with other arguments than it takes, and never counts
/// references.
std::optional<std::string> why_not_performed(std::string_view name, const objc::MethodShape& shape,
                                             MethodRole role);

}  // namespace wispen::preferences
