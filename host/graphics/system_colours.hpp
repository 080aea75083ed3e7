// host/graphics/system_colours.hpp: the platform's named colours, fixed and by appearance.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "host/graphics/colour.hpp"

namespace wispen::graphics {

/// The platform's colour of a name: "red", "darkGray", "clear" (fixed); "label", "secondaryLabel",
/// "systemBackground", "separator", "systemRed", "systemGray3", "tint" (by appearance). The words are the
/// platform's selectors without their ending "Color". Nothing for a name that it does not have.
std::optional<Colour> named_colour(std::string_view name);

/// Every name that named_colour() knows, in the order of the table.
std::vector<std::string_view> colour_names();

}  // namespace wispen::graphics
