// platform/UIKit/UIImage.hpp: images.
#pragma once

#include "platform/CoreGraphics/CGImage.hpp"
#include "platform/UIKit/UIColor.hpp"
#include "platform/UIKit/UIGeometry.hpp"
#include "platform/UIKit/UIImageSymbolConfiguration.hpp"

enum class UIImageOrientation : NSInteger {
  Up = 0,
  Down = 1,
  Left = 2,
  Right = 3,
  UpMirrored = 4,
  DownMirrored = 5,
  LeftMirrored = 6,
  RightMirrored = 7
};

enum class UIImageRenderingMode : NSInteger { Automatic = 0, AlwaysOriginal = 1, AlwaysTemplate = 2 };

enum class UIImageResizingMode : NSInteger { Tile = 0, Stretch = 1 };

class UIImage : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"UIImage"};
  using NSObject::NSObject;

  // Each is nil where there is no such image, or it cannot be read.

  /// By name in the main bundle: the best variant for the display's scale and the device.
  static UIImage imageNamed(const NSString& name) { return from<"imageNamed:">(name); }
  /// In the bundle's folder; for nil traits as the display is.
  static UIImage imageNamed(const NSString& name, const NSBundle& bundle, const objc::Object& traits) {
    return from<"imageNamed:inBundle:compatibleWithTraitCollection:">(name, bundle, traits);
  }
  static UIImage imageWithContentsOfFile(const NSString& path) {
    return from<"imageWithContentsOfFile:">(path);
  }
  static UIImage imageWithData(const NSData& data) { return from<"imageWithData:">(data); }
  static UIImage imageWithData(const NSData& data, CGFloat scale) {
    return from<"imageWithData:scale:">(data, scale);
  }
  static UIImage imageWithCGImage(CGImageRef image) { return from<"imageWithCGImage:">(image); }
  static UIImage imageWithCGImage(CGImageRef image, CGFloat scale, UIImageOrientation orientation) {
    return from<"imageWithCGImage:scale:orientation:">(image, scale, orientation);
  }
  static UIImage systemImageNamed(const NSString& name) { return from<"systemImageNamed:">(name); }
  static UIImage systemImageNamed(const NSString& name, const UIImageConfiguration& configuration) {
    return from<"systemImageNamed:withConfiguration:">(name, configuration);
  }

  /// Points, as the image stands upright.
  CGSize size() const { return objc::send<"size", CGSize>(*this); }
  /// Pixels a point.
  CGFloat scale() const { return objc::send<"scale", CGFloat>(*this); }
  /// The pixels as stored; they live as long as this object. Null for an image without any.
  CGImageRef CGImage() const { return objc::send<"CGImage", CGImageRef>(*this); }
  UIImageOrientation imageOrientation() const {
    return objc::send<"imageOrientation", UIImageOrientation>(*this);
  }
  UIImageRenderingMode renderingMode() const {
    return objc::send<"renderingMode", UIImageRenderingMode>(*this);
  }
  bool isSymbolImage() const { return objc::send<"isSymbolImage", bool>(*this); }
  UIEdgeInsets capInsets() const { return objc::send<"capInsets", UIEdgeInsets>(*this); }
  UIImageResizingMode resizingMode() const { return objc::send<"resizingMode", UIImageResizingMode>(*this); }

  UIImage imageWithRenderingMode(UIImageRenderingMode mode) const {
    return objc::send<"imageWithRenderingMode:", UIImage>(*this, mode);
  }
  UIImage imageWithTintColor(const UIColor& color) const {
    return objc::send<"imageWithTintColor:", UIImage>(*this, color);
  }
  UIImage imageWithTintColor(const UIColor& color, UIImageRenderingMode mode) const {
    return objc::send<"imageWithTintColor:renderingMode:", UIImage>(*this, color, mode);
  }
  UIImage imageWithConfiguration(const UIImageConfiguration& configuration) const {
    return objc::send<"imageWithConfiguration:", UIImage>(*this, configuration);
  }
  UIImage resizableImageWithCapInsets(UIEdgeInsets insets) const {
    return objc::send<"resizableImageWithCapInsets:", UIImage>(*this, insets);
  }
  UIImage resizableImageWithCapInsets(UIEdgeInsets insets, UIImageResizingMode mode) const {
    return objc::send<"resizableImageWithCapInsets:resizingMode:", UIImage>(*this, insets, mode);
  }

 private:
  template <objc::FixedString Sel, class... A>
  static UIImage from(const A&... arguments) {
    return objc::send<Sel, UIImage>(objc::class_for<UIImage>(), arguments...);
  }
};

namespace objc::abi {
extern "C" id UIImagePNGRepresentation(id image);
}

/// The bytes of a PNG file; nil for an image without pixels.
inline NSData UIImagePNGRepresentation(const UIImage& image) {
  return objc::retain<NSData>(objc::abi::UIImagePNGRepresentation(objc::borrow(image)));
}
