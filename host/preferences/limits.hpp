// host/preferences/limits.hpp: how much of a specifier list is shown. A list that was saved by accident must
// not freeze the window that follows it.
#pragma once

#include <cstddef>

namespace wispen::preferences {

/// Rows of one list, groups counted.
inline constexpr std::size_t kMostRows = 10'000;

/// Characters of a text on a page, in UTF-16 units; the rest is an ellipsis.
inline constexpr std::size_t kLongestText = 16'384;

}  // namespace wispen::preferences
