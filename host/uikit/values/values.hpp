// host/uikit/values/values.hpp: UIKit's value classes, all of them.
#pragma once

namespace wispen::uikit {

/// Registers the classes and makes the exported strings. Again does nothing.
void define_values();

}  // namespace wispen::uikit
