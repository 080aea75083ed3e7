// host/preferences/named_method.hpp: the methods that a specifier list names, before they are performed.
#pragma once

#include "host/preferences/method_roles.hpp"
#include "platform/objc/objc.hpp"

namespace wispen::preferences {

/// Whether the target answers the selector with a method that fits the role. One that it has and that does
/// not fit is reported.
bool may_perform(const objc::Object& target, objc::Selector selector, MethodRole role);

/// From now on lists are data only, and nothing that they name is performed: for whoever looks at a list that
/// is not trusted.
void set_lists_as_data(bool as_data);

}  // namespace wispen::preferences
