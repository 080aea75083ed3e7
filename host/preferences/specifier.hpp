// host/preferences/specifier.hpp: PSSpecifier: one row of a page.
#pragma once

#include "host/preferences/cell_types.hpp"
#include "platform/Preferences.hpp"

namespace wispen::preferences {

void define_specifier();

/// A specifier without target and properties.
PSSpecifier make_specifier(const NSString& name, CellType type);
/// The target's methods by which the row's value is read and written; null for none.
void set_accessors(const PSSpecifier& specifier, objc::Selector getter, objc::Selector setter);
CellType type_of(const PSSpecifier& specifier);
/// The page that the row leads to; null for none. With a key a row leads to its choices.
objc::ClassRef page_of(const PSSpecifier& specifier);

}  // namespace wispen::preferences
