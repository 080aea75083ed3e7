// host/uikit/values/image_sources.cpp: where images come from: files, data, pixels, symbols.

#include "host/uikit/values/image_sources.hpp"

#include <algorithm>
#include <string_view>
#include <utility>

#include "host/foundation/device_paths.hpp"
#include "host/foundation/problems.hpp"
#include "host/graphics/image_file.hpp"
#include "host/graphics/image_name.hpp"
#include "host/graphics/symbol.hpp"
#include "host/uikit/values/core_graphics.hpp"
#include "host/uikit/values/display_settings.hpp"

namespace wispen::uikit {

namespace {

using Parts = std::optional<ImageParts>;

UIImage object_of(Parts parts) { return parts ? image_from_parts(*std::move(parts)) : UIImage(); }

/// An initialiser that fails gives its object back and nil to the caller.
UIImage initialized(objc::Allocated<UIImage> self, Parts parts) {
  return parts ? init_with_parts(std::move(self), *std::move(parts)) : UIImage();
}

Parts parts_or_report(Result<graphics::Image> image) {
  if (image) return ImageParts{.image = *std::move(image)};
  report_problem(image.error().message);
  return std::nullopt;
}

Parts file_parts(const NSString& path) {
  if (!path) return std::nullopt;
  const DisplaySettings display = display_settings();
  return parts_or_report(graphics::load_image_variant(host_path(path.utf8()),
                                                      static_cast<double>(display.scale), display.idiom));
}

Parts data_parts(const NSData& data, double scale) {
  if (!data || !(scale > 0)) return std::nullopt;
  const std::string_view bytes(static_cast<const char*>(data.bytes()), data.length());
  return parts_or_report(graphics::decode_image(bytes, scale));
}

Parts pixel_parts(CGImageRef image, double scale, NSInteger orientation) {
  if (image == nullptr) return ImageParts{};
  const auto turned = static_cast<graphics::Orientation>(std::clamp<NSInteger>(orientation, 0, 7));
  return ImageParts{.image = graphics::Image(image->pixels, scale > 0 ? scale : 1, turned)};
}

NSBundle main_bundle() { return objc::send<"mainBundle", NSBundle>(objc::class_for<NSBundle>()); }

UIImage image_in_bundle(objc::ClassRef, const NSString& name, const NSBundle& bundle,
                        const NSObject& /*traits*/) {
  const std::string wanted = name.utf8();
  if (wanted.empty()) return {};
  if (wanted.starts_with('/')) return object_of(file_parts(name));
  return named_image((bundle ? bundle : main_bundle()).bundlePath().utf8(), wanted);
}
UIImage image_named(objc::ClassRef cls, const NSString& name) {
  return image_in_bundle(cls, name, NSBundle(), NSObject());
}

UIImage image_of_file(objc::ClassRef, const NSString& path) { return object_of(file_parts(path)); }
UIImage image_of_data(objc::ClassRef, const NSData& data) { return object_of(data_parts(data, 1)); }
UIImage image_of_scaled_data(objc::ClassRef, const NSData& data, double scale) {
  return object_of(data_parts(data, scale));
}
UIImage image_of_pixels(objc::ClassRef, CGImageRef image) { return object_of(pixel_parts(image, 1, 0)); }
UIImage image_of_turned_pixels(objc::ClassRef, CGImageRef image, double scale, NSInteger orientation) {
  return object_of(pixel_parts(image, scale, orientation));
}
UIImage configured_symbol(objc::ClassRef, const NSString& name, const NSObject& configuration) {
  return object_of(symbol_parts({name.utf8(), symbol_look_of(configuration)}));
}
UIImage symbol(objc::ClassRef, const NSString& name) { return object_of(symbol_parts({name.utf8(), {}})); }

UIImage init_plain(objc::Allocated<UIImage> self) { return initialized(std::move(self), ImageParts{}); }
UIImage init_with_file(objc::Allocated<UIImage> self, const NSString& path) {
  return initialized(std::move(self), file_parts(path));
}
UIImage init_with_data(objc::Allocated<UIImage> self, const NSData& data) {
  return initialized(std::move(self), data_parts(data, 1));
}
UIImage init_with_scaled_data(objc::Allocated<UIImage> self, const NSData& data, double scale) {
  return initialized(std::move(self), data_parts(data, scale));
}
UIImage init_with_pixels(objc::Allocated<UIImage> self, CGImageRef image) {
  return initialized(std::move(self), pixel_parts(image, 1, 0));
}
UIImage init_with_turned_pixels(objc::Allocated<UIImage> self, CGImageRef image, double scale,
                                NSInteger orientation) {
  return initialized(std::move(self), pixel_parts(image, scale, orientation));
}

}  // namespace

Parts symbol_parts(const SymbolSource& source) {
  if (source.name.empty()) return std::nullopt;
  auto drawn = graphics::symbol_image(source.name, source.look.resolved());
  if (!drawn) {
    report_problem(drawn.error().message);
    return std::nullopt;
  }
  if (!drawn->known) report_problem("the symbol \"" + source.name + "\" has no drawing here");
  return ImageParts{.image = drawn->image, .symbol = source};
}

void add_image_sources(objc::Class<UIImage>& image) {
  image.class_method<"imageNamed:", &image_named>()
      .class_method<"imageNamed:inBundle:compatibleWithTraitCollection:", &image_in_bundle>()
      .class_method<"imageWithContentsOfFile:", &image_of_file>()
      .class_method<"imageWithData:", &image_of_data>()
      .class_method<"imageWithData:scale:", &image_of_scaled_data>()
      .class_method<"imageWithCGImage:", &image_of_pixels>()
      .class_method<"imageWithCGImage:scale:orientation:", &image_of_turned_pixels>()
      .class_method<"systemImageNamed:", &symbol>()
      .class_method<"systemImageNamed:withConfiguration:", &configured_symbol>()
      .initializer<"init", &init_plain>()
      .initializer<"initWithContentsOfFile:", &init_with_file>()
      .initializer<"initWithData:", &init_with_data>()
      .initializer<"initWithData:scale:", &init_with_scaled_data>()
      .initializer<"initWithCGImage:", &init_with_pixels>()
      .initializer<"initWithCGImage:scale:orientation:", &init_with_turned_pixels>();
}

}  // namespace wispen::uikit
