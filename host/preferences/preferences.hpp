// host/preferences/preferences.hpp: the Preferences framework, made known to the runtime.
#pragma once

namespace wispen::preferences {

/// Registers every class of the framework; UIKit's are there already.
void define_preferences();

}  // namespace wispen::preferences
