// host/uikit/values/image.cpp: UIImage: what it is and what can be made of it.

#include "host/uikit/values/image.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <mutex>
#include <utility>

#include "host/graphics/image_file.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/values/core_graphics.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/geometry.hpp"
#include "host/uikit/values/image_sources.hpp"
#include "host/uikit/values/tinted_image.hpp"

namespace wispen::uikit {

using graphics::Appearance;

namespace {

class Image : public objc::Implementation<Image, UIImage> {
 public:
  void set_parts(ImageParts parts) { parts_ = std::move(parts); }

  /// In the display's appearance; it lives as long as the object.
  const graphics::Image& drawn() const { return in_appearance().image; }
  CGImageRef CGImage() const { return in_appearance().reference.get(); }
  CGSize size() const { return to_platform(parts_.image.size()); }
  double scale() const { return parts_.image.scale(); }
  NSInteger imageOrientation() const { return static_cast<NSInteger>(parts_.image.orientation()); }
  NSInteger renderingMode() const { return static_cast<NSInteger>(parts_.image.rendering_mode()); }
  bool isSymbolImage() const { return parts_.image.is_symbol(); }
  UIEdgeInsets capInsets() const;
  NSInteger resizingMode() const;
  UIImageSymbolConfiguration symbolConfiguration() const {
    return parts_.symbol ? symbol_configuration_from(parts_.symbol->look) : UIImageSymbolConfiguration();
  }

  UIImage imageWithRenderingMode(NSInteger mode) const;
  UIImage imageWithTintColor(const UIColor& color) const;
  UIImage imageWithTintColorRenderingMode(const UIColor& color, NSInteger mode) const {
    return of(imageWithTintColor(color)).imageWithRenderingMode(mode);
  }
  UIImage imageWithConfiguration(const NSObject& configuration) const;
  UIImage resizableImageWithCapInsets(UIEdgeInsets insets) const {
    return resizableImageWithCapInsetsResizingMode(insets, static_cast<NSInteger>(UIImageResizingMode::Tile));
  }
  UIImage resizableImageWithCapInsetsResizingMode(UIEdgeInsets insets, NSInteger mode) const;
  bool isEqual(const NSObject& other) const {
    const auto theirs = objc::cast_or_nil<UIImage>(other);
    return theirs && of(theirs).parts_.image == parts_.image && of(theirs).parts_.tint == parts_.tint;
  }
  NSUInteger hash() const { return std::hash<const graphics::Pixels*>()(parts_.image.pixels().get()); }
  NSString description() const;
  UIImage copy() const { return self(); }

 private:
  // Made when first asked for, from any thread: most images are never tinted nor read as bare pixels.
  struct Drawn {
    std::once_flag once;
    graphics::Image image;
    CountedRef<::CGImage> reference;
  };
  const Drawn& in_appearance() const;

  ImageParts parts_;
  mutable std::array<Drawn, 2> by_appearance_;
};

graphics::RenderingMode rendering_mode(NSInteger number) {
  return static_cast<graphics::RenderingMode>(std::clamp<NSInteger>(number, 0, 2));
}

const Image::Drawn& Image::in_appearance() const {
  const bool differs = parts_.tint && parts_.tint->is_dynamic();
  const Appearance appearance = differs ? display_settings().appearance : Appearance::Light;
  Drawn& drawn = by_appearance_[static_cast<std::size_t>(appearance)];
  std::call_once(drawn.once, [&] {
    drawn.image = parts_.tint ? tinted(parts_.image, parts_.tint->rgba(appearance)) : parts_.image;
    if (drawn.image.empty()) return;
    drawn.reference = CountedRef<::CGImage>::adopt(Counted::make<::CGImage>(drawn.image.pixels()));
  });
  return drawn;
}

UIEdgeInsets Image::capInsets() const {
  const auto& resizing = parts_.image.resizing();
  return resizing ? to_platform(resizing->caps) : UIEdgeInsetsZero;
}
NSInteger Image::resizingMode() const {
  const auto& resizing = parts_.image.resizing();
  return static_cast<NSInteger>(resizing ? resizing->mode : graphics::ResizingMode::Tile);
}

UIImage Image::imageWithRenderingMode(NSInteger mode) const {
  ImageParts changed = parts_;
  changed.image = changed.image.with_rendering_mode(rendering_mode(mode));
  return image_from_parts(std::move(changed));
}

UIImage Image::imageWithTintColor(const UIColor& color) const {
  ImageParts changed = parts_;
  changed.tint = colour_of(color);
  return image_from_parts(std::move(changed));
}

UIImage Image::imageWithConfiguration(const NSObject& configuration) const {
  const auto& symbol = parts_.symbol;
  if (!symbol) return self();
  auto drawn_again = symbol_parts({symbol->name, symbol->look.applying(symbol_look_of(configuration))});
  if (!drawn_again) return self();
  drawn_again->image = drawn_again->image.with_rendering_mode(parts_.image.rendering_mode());
  drawn_again->tint = parts_.tint;
  return image_from_parts(*std::move(drawn_again));
}

UIImage Image::resizableImageWithCapInsetsResizingMode(UIEdgeInsets insets, NSInteger mode) const {
  ImageParts changed = parts_;
  const bool stretch = mode == static_cast<NSInteger>(UIImageResizingMode::Stretch);
  changed.image = changed.image.with_resizing(graphics::Resizing{
      from_platform(insets), stretch ? graphics::ResizingMode::Stretch : graphics::ResizingMode::Tile});
  return image_from_parts(std::move(changed));
}

NSString Image::description() const {
  std::array<char, 96> text{};
  std::snprintf(text.data(), text.size(), "<UIImage: %g x %g points at %g pixels a point>", size().width,
                size().height, scale());
  return {text.data()};
}

}  // namespace

void define_image() {
  auto image = objc::Class<UIImage>::implemented_by<Image>();
  image.method<"size", &Image::size>()
      .method<"scale", &Image::scale>()
      .method<"CGImage", &Image::CGImage>()
      .method<"imageOrientation", &Image::imageOrientation>()
      .method<"renderingMode", &Image::renderingMode>()
      .method<"capInsets", &Image::capInsets>()
      .method<"resizingMode", &Image::resizingMode>()
      .method<"isSymbolImage", &Image::isSymbolImage>()
      .method<"symbolConfiguration", &Image::symbolConfiguration>()
      .method<"configuration", &Image::symbolConfiguration>()
      .method<"imageWithRenderingMode:", &Image::imageWithRenderingMode>()
      .method<"imageWithTintColor:", &Image::imageWithTintColor>()
      .method<"imageWithTintColor:renderingMode:", &Image::imageWithTintColorRenderingMode>()
      .method<"imageWithConfiguration:", &Image::imageWithConfiguration>()
      .method<"imageByApplyingSymbolConfiguration:", &Image::imageWithConfiguration>()
      .method<"resizableImageWithCapInsets:", &Image::resizableImageWithCapInsets>()
      .method<"resizableImageWithCapInsets:resizingMode:", &Image::resizableImageWithCapInsetsResizingMode>()
      .method<"isEqual:", &Image::isEqual>()
      .method<"hash", &Image::hash>()
      .method<"description", &Image::description>()
      .copying<&Image::copy>();
  add_image_sources(image);
  image.register_class();
}

UIImage init_with_parts(objc::Allocated<UIImage> self, ImageParts parts) {
  UIImage image = std::move(self).initialize_super<"init">();
  if (image) Image::of(image).set_parts(std::move(parts));
  return image;
}

UIImage image_from_parts(ImageParts parts) {
  return init_with_parts(objc::allocate<UIImage>(), std::move(parts));
}

UIImage image_from(graphics::Image image) { return image_from_parts({.image = std::move(image)}); }

const graphics::Image* image_of(const UIImage& image) {
  return objc::cast_or_nil<UIImage>(image) ? &Image::of(image).drawn() : nullptr;
}

}  // namespace wispen::uikit

extern "C" [[gnu::visibility("default")]] objc::abi::id UIImagePNGRepresentation(objc::abi::id image) {
  const wispen::graphics::Image* const drawn = wispen::uikit::image_of(objc::retain<UIImage>(image));
  const auto bytes =
      drawn != nullptr ? wispen::graphics::encode_png(*drawn) : wispen::Error{"there is no image"};
  if (!bytes) return nullptr;
  return objc::abi::autorelease(objc::leak(NSData::dataWithBytes(bytes->data(), bytes->size())));
}
