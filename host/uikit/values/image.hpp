// host/uikit/values/image.hpp: UIImage, and its way to and from the images that are drawn.
#pragma once

#include <optional>
#include <string>

#include "host/graphics/colour.hpp"
#include "host/graphics/image.hpp"
#include "host/uikit/values/symbol_configuration.hpp"
#include "platform/UIKit/UIImage.hpp"

namespace wispen::uikit {

/// A symbol's name and what it is to look like, kept so that it can be drawn again differently.
struct SymbolSource {
  std::string name;
  SymbolLook look;
};

/// What an image object is made of.
struct ImageParts {
  graphics::Image image;
  std::optional<graphics::Colour> tint = std::nullopt;  ///< in place of the image's own colours
  std::optional<SymbolSource> symbol = std::nullopt;
};

UIImage image_from_parts(ImageParts parts);
/// The same as the end of an initialiser.
UIImage init_with_parts(objc::Allocated<UIImage> self, ImageParts parts);
/// Null for nil. It lives as long as the object; ask again after the appearance has changed.
const graphics::Image* image_of(const UIImage& image);
UIImage image_from(graphics::Image image);

void define_image();

}  // namespace wispen::uikit
