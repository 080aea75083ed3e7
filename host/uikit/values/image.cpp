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

struct ImageState {
  ImageParts parts;
  // Made when first asked for, from any thread: most images are never tinted nor read as bare pixels.
  struct Drawn {
    std::once_flag once;
    graphics::Image image;
    CountedRef<::CGImage> reference;
  };
  std::array<Drawn, 2> by_appearance;

  const Drawn& drawn() {
    const bool differs = parts.tint && parts.tint->is_dynamic();
    const Appearance appearance = differs ? display_settings().appearance : Appearance::Light;
    Drawn& drawn = by_appearance[static_cast<std::size_t>(appearance)];
    std::call_once(drawn.once, [&] {
      drawn.image = parts.tint ? tinted(parts.image, parts.tint->rgba(appearance)) : parts.image;
      if (drawn.image.empty()) return;
      drawn.reference = CountedRef<::CGImage>::adopt(Counted::make<::CGImage>(drawn.image.pixels()));
    });
    return drawn;
  }
};

namespace {

graphics::RenderingMode rendering_mode(NSInteger number) {
  return static_cast<graphics::RenderingMode>(std::clamp<NSInteger>(number, 0, 2));
}

}  // namespace

const ImageParts& Image::parts() const { return state<ImageState>().parts; }

Image with_parts(Image image, ImageParts parts) {
  if (image) image.state<ImageState>().parts = std::move(parts);
  return image;
}

Image Image::make(ImageParts parts) {
  return with_parts(objc::allocate<Image>().initialize_super<"init">(), std::move(parts));
}

const graphics::Image& Image::drawn() const { return state<ImageState>().drawn().image; }
CGImageRef Image::CGImage() const { return state<ImageState>().drawn().reference.get(); }

CGSize Image::size() const { return to_platform(parts().image.size()); }
double Image::scale() const { return parts().image.scale(); }
NSInteger Image::imageOrientation() const { return static_cast<NSInteger>(parts().image.orientation()); }
NSInteger Image::renderingMode() const { return static_cast<NSInteger>(parts().image.rendering_mode()); }
bool Image::isSymbolImage() const { return parts().image.is_symbol(); }

UIEdgeInsets Image::capInsets() const {
  const auto& resizing = parts().image.resizing();
  return resizing ? to_platform(resizing->caps) : UIEdgeInsetsZero;
}
NSInteger Image::resizingMode() const {
  const auto& resizing = parts().image.resizing();
  return static_cast<NSInteger>(resizing ? resizing->mode : graphics::ResizingMode::Tile);
}

NSObject Image::symbolConfiguration() const {
  return parts().symbol ? SymbolConfiguration::make(parts().symbol->look).as<NSObject>() : NSObject();
}

Image Image::imageWithRenderingMode(NSInteger mode) const {
  ImageParts changed = parts();
  changed.image = changed.image.with_rendering_mode(rendering_mode(mode));
  return make(std::move(changed));
}

Image Image::imageWithTintColor(const UIColor& color) const {
  ImageParts changed = parts();
  changed.tint = colour_of(color);
  return make(std::move(changed));
}

Image Image::imageWithTintColorRenderingMode(const UIColor& color, NSInteger mode) const {
  return imageWithTintColor(color).imageWithRenderingMode(mode);
}

Image Image::imageWithConfiguration(const NSObject& configuration) const {
  const auto& symbol = parts().symbol;
  if (!symbol) return *this;
  auto drawn_again = symbol_parts({symbol->name, symbol->look.applying(symbol_look_of(configuration))});
  if (!drawn_again) return *this;
  drawn_again->image = drawn_again->image.with_rendering_mode(parts().image.rendering_mode());
  drawn_again->tint = parts().tint;
  return make(*std::move(drawn_again));
}

Image Image::resizableImageWithCapInsets(UIEdgeInsets insets) const {
  return resizableImageWithCapInsetsResizingMode(insets, static_cast<NSInteger>(UIImageResizingMode::Tile));
}

Image Image::resizableImageWithCapInsetsResizingMode(UIEdgeInsets insets, NSInteger mode) const {
  ImageParts changed = parts();
  const bool stretch = mode == static_cast<NSInteger>(UIImageResizingMode::Stretch);
  changed.image = changed.image.with_resizing(graphics::Resizing{
      from_platform(insets), stretch ? graphics::ResizingMode::Stretch : graphics::ResizingMode::Tile});
  return make(std::move(changed));
}

bool Image::isEqual(const NSObject& other) const {
  const auto theirs = objc::cast_or_nil<Image>(other);
  return theirs && theirs.parts().image == parts().image && theirs.parts().tint == parts().tint;
}

NSUInteger Image::hash() const { return std::hash<const graphics::Pixels*>()(parts().image.pixels().get()); }

NSString Image::description() const {
  std::array<char, 96> text{};
  std::snprintf(text.data(), text.size(), "<UIImage: %g x %g points at %g pixels a point>", size().width,
                size().height, scale());
  return {text.data()};
}

void Image::define() {
  objc::Class<Image> image;
  image.state<ImageState>()
      .method<"size", &Image::size>()
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

const graphics::Image* image_of(const UIImage& image) {
  const auto ours = objc::cast_or_nil<Image>(image);
  return ours ? &ours.drawn() : nullptr;
}

UIImage image_from(graphics::Image image) { return Image::make({.image = std::move(image)}).as<UIImage>(); }

}  // namespace wispen::uikit

extern "C" [[gnu::visibility("default")]] objc::abi::id UIImagePNGRepresentation(objc::abi::id image) {
  const wispen::graphics::Image* const drawn = wispen::uikit::image_of(objc::retain<UIImage>(image));
  const auto bytes =
      drawn != nullptr ? wispen::graphics::encode_png(*drawn) : wispen::Error{"there is no image"};
  if (!bytes) return nullptr;
  return objc::abi::autorelease(objc::leak(NSData::dataWithBytes(bytes->data(), bytes->size())));
}
