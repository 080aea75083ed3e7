// home_screen/separator.hpp: the lines between rows, and between groups of rows.
#pragma once

#include "home_screen/palette.hpp"

namespace wispen::home_screen {

enum class SeparatorKind { Thin, Bold };

/// A line as wide as its superview gives it, at height y of a superview `width` wide; nil where it is hidden.
/// Its frame's height is its thickness. `colour` is that of the place; nil for the system's own lines, which
/// settings do not change.
UIView make_separator(SeparatorKind kind, const SeparatorSettings& settings, const UIColor& colour,
                      const Ground& ground, bool enabled, double y, double width);

}  // namespace wispen::home_screen
