// wispen/colour_sheet.hpp: images beside their two colours, on one picture.
#pragma once

#include <string>
#include <vector>

#include "host/core/result.hpp"
#include "wispen/colour_items.hpp"

namespace wispen::program {

/// More do not fit into one picture.
inline constexpr std::size_t kMostOnSheet = 600;

/// Writes a PNG file with the images that have a colour, at most kMostOnSheet of them: the image, its
/// dominant colour and its second one. The two lists name the same files in the same order. Fails where there
/// is none.
Result<void> write_colour_sheet(const std::vector<ColourItem>& dominant,
                                const std::vector<ColourItem>& second, const std::string& path);

}  // namespace wispen::program
