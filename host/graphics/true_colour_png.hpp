// host/graphics/true_colour_png.hpp: the kind of PNG that icons are, read fast.
#pragma once

#include <optional>
#include <string_view>

#include "host/core/result.hpp"
#include "host/graphics/pixels.hpp"

namespace wispen::graphics {

/// The pixels of a sound PNG file of eight bits a channel, with or without alpha, that is not interlaced.
/// Nothing for every other kind and for whatever is odd about a file: the drawing library reads those, and
/// finds the words for what is wrong. Fails where the pixels end early, which the library would not say: it
/// shows the rows that it has. Icons are read by the thousand, and the library's inflating takes most of that
/// time.
Result<std::optional<Pixels>> decode_true_colour_png(std::string_view bytes);

}  // namespace wispen::graphics
