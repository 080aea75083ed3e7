// cells/OndrelTintCell.hpp: a cell class that is made at run time: its titles are lavender.
#pragma once

#include "platform/Preferences.hpp"

namespace wispen {

/// Makes the class "OndrelTintCell", a PSTableCell with a `setTitle:` of its own. To be called once in a
/// process: whether the name is taken is not asked.
void registerOndrelTintCellClass();

/// The method: the receiver's superclass sets the title, and the title's label becomes lavender. The lookup
/// follows the receiver's own class, so a subclass of it would call itself without end.
void ondrel_setTitle(const PSTableCell& cell, objc::Selector name, const NSString& title);

}  // namespace wispen
