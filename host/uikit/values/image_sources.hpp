// host/uikit/values/image_sources.hpp: where images come from: files, data, pixels, symbols.
#pragma once

#include <optional>
#include <string>

#include "host/uikit/values/image.hpp"

namespace wispen::uikit {

/// A symbol, drawn for the display. A name that has no drawing is reported and stands as a dashed box;
/// nothing for an empty name and for sizes that cannot be drawn.
std::optional<ImageParts> symbol_parts(const SymbolSource& symbol);

/// The best variant of the name in the folder, remembered until its file changes; nil where there is none or
/// it cannot be read, which is reported.
UIImage named_image(const std::string& folder, const std::string& name);

/// UIImage's class methods and initialisers.
void add_image_sources(objc::Class<UIImage>& image);

}  // namespace wispen::uikit
