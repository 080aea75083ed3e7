// host/uikit/values/image.hpp: UIImage, and its way to and from the images that are drawn.
#pragma once

#include <optional>
#include <string>

#include "host/graphics/colour.hpp"
#include "host/graphics/image.hpp"
#include "host/uikit/values/symbol_configuration.hpp"
#include "platform/UIKit/UIImage.hpp"

namespace wispen::uikit {

struct ImageState;

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

class Image : public objc::Authored<Image, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"UIImage"};
  using Authored::Authored;

  static void define();
  static Image make(ImageParts parts);

  /// In the display's appearance; it lives as long as the object.
  const graphics::Image& drawn() const;
  CGSize size() const;
  double scale() const;
  CGImageRef CGImage() const;
  NSInteger imageOrientation() const;
  NSInteger renderingMode() const;
  UIEdgeInsets capInsets() const;
  NSInteger resizingMode() const;
  bool isSymbolImage() const;
  NSObject symbolConfiguration() const;

  Image imageWithRenderingMode(NSInteger mode) const;
  Image imageWithTintColor(const UIColor& color) const;
  Image imageWithTintColorRenderingMode(const UIColor& color, NSInteger mode) const;
  Image imageWithConfiguration(const NSObject& configuration) const;
  Image resizableImageWithCapInsets(UIEdgeInsets insets) const;
  Image resizableImageWithCapInsetsResizingMode(UIEdgeInsets insets, NSInteger mode) const;
  bool isEqual(const NSObject& other) const;
  NSUInteger hash() const;
  NSString description() const;
  Image copy() const { return *this; }

 private:
  friend Image with_parts(Image image, ImageParts parts);
  const ImageParts& parts() const;
};

/// Null for nil. It lives as long as the object; ask again after the appearance has changed.
const graphics::Image* image_of(const UIImage& image);
UIImage image_from(graphics::Image image);

}  // namespace wispen::uikit
