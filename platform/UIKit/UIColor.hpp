// platform/UIKit/UIColor.hpp: colours, fixed or different by appearance.
#pragma once

#include "platform/CoreGraphics/CGColor.hpp"
#include "platform/Foundation.hpp"

class UIColor : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"UIColor"};
  using NSObject::NSObject;

  /// Components are kept as they are given, also outside 0...1.
  static UIColor colorWithRed(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
    return objc::send<"colorWithRed:green:blue:alpha:", UIColor>(objc::class_for<UIColor>(), red, green, blue,
                                                                 alpha);
  }
  static UIColor colorWithWhite(CGFloat white, CGFloat alpha) {
    return objc::send<"colorWithWhite:alpha:", UIColor>(objc::class_for<UIColor>(), white, alpha);
  }
  static UIColor colorWithHue(CGFloat hue, CGFloat saturation, CGFloat brightness, CGFloat alpha) {
    return objc::send<"colorWithHue:saturation:brightness:alpha:", UIColor>(objc::class_for<UIColor>(), hue,
                                                                            saturation, brightness, alpha);
  }
  static UIColor colorWithCGColor(CGColorRef color) {
    return objc::send<"colorWithCGColor:", UIColor>(objc::class_for<UIColor>(), color);
  }
  /// The provider answers for each appearance. Traits is a handle of trait collections.
  template <objc::Handle Traits>
  static UIColor colorWithDynamicProvider(const objc::Block<UIColor(Traits)>& provider) {
    return objc::send<"colorWithDynamicProvider:", UIColor>(objc::class_for<UIColor>(), provider);
  }

  UIColor colorWithAlphaComponent(CGFloat alpha) const {
    return objc::send<"colorWithAlphaComponent:", UIColor>(*this, alpha);
  }
  UIColor resolvedColorWithTraitCollection(const objc::Object& traits) const {
    return objc::send<"resolvedColorWithTraitCollection:", UIColor>(*this, traits);
  }

  /// Null pointers are allowed; false where the colour has no such components.
  bool getRed(CGFloat* red, CGFloat* green, CGFloat* blue, CGFloat* alpha) const {
    return objc::send<"getRed:green:blue:alpha:", bool>(*this, red, green, blue, alpha);
  }
  bool getHue(CGFloat* hue, CGFloat* saturation, CGFloat* brightness, CGFloat* alpha) const {
    return objc::send<"getHue:saturation:brightness:alpha:", bool>(*this, hue, saturation, brightness, alpha);
  }
  bool getWhite(CGFloat* white, CGFloat* alpha) const {
    return objc::send<"getWhite:alpha:", bool>(*this, white, alpha);
  }
  /// The colour in the current appearance; it lives as long as this object.
  CGColorRef CGColor() const { return objc::send<"CGColor", CGColorRef>(*this); }

  static UIColor redColor() { return named<"redColor">(); }
  static UIColor greenColor() { return named<"greenColor">(); }
  static UIColor blueColor() { return named<"blueColor">(); }
  static UIColor cyanColor() { return named<"cyanColor">(); }
  static UIColor yellowColor() { return named<"yellowColor">(); }
  static UIColor magentaColor() { return named<"magentaColor">(); }
  static UIColor orangeColor() { return named<"orangeColor">(); }
  static UIColor purpleColor() { return named<"purpleColor">(); }
  static UIColor brownColor() { return named<"brownColor">(); }
  static UIColor blackColor() { return named<"blackColor">(); }
  static UIColor darkGrayColor() { return named<"darkGrayColor">(); }
  static UIColor grayColor() { return named<"grayColor">(); }
  static UIColor lightGrayColor() { return named<"lightGrayColor">(); }
  static UIColor whiteColor() { return named<"whiteColor">(); }
  static UIColor clearColor() { return named<"clearColor">(); }

  // By appearance.
  static UIColor labelColor() { return named<"labelColor">(); }
  static UIColor secondaryLabelColor() { return named<"secondaryLabelColor">(); }
  static UIColor tertiaryLabelColor() { return named<"tertiaryLabelColor">(); }
  static UIColor quaternaryLabelColor() { return named<"quaternaryLabelColor">(); }
  static UIColor placeholderTextColor() { return named<"placeholderTextColor">(); }
  static UIColor linkColor() { return named<"linkColor">(); }
  static UIColor separatorColor() { return named<"separatorColor">(); }
  static UIColor opaqueSeparatorColor() { return named<"opaqueSeparatorColor">(); }
  static UIColor systemBackgroundColor() { return named<"systemBackgroundColor">(); }
  static UIColor secondarySystemBackgroundColor() { return named<"secondarySystemBackgroundColor">(); }
  static UIColor tertiarySystemBackgroundColor() { return named<"tertiarySystemBackgroundColor">(); }
  static UIColor systemGroupedBackgroundColor() { return named<"systemGroupedBackgroundColor">(); }
  static UIColor secondarySystemGroupedBackgroundColor() {
    return named<"secondarySystemGroupedBackgroundColor">();
  }
  static UIColor tertiarySystemGroupedBackgroundColor() {
    return named<"tertiarySystemGroupedBackgroundColor">();
  }
  static UIColor systemFillColor() { return named<"systemFillColor">(); }
  static UIColor secondarySystemFillColor() { return named<"secondarySystemFillColor">(); }
  static UIColor tertiarySystemFillColor() { return named<"tertiarySystemFillColor">(); }
  static UIColor quaternarySystemFillColor() { return named<"quaternarySystemFillColor">(); }
  static UIColor lightTextColor() { return named<"lightTextColor">(); }
  static UIColor darkTextColor() { return named<"darkTextColor">(); }
  static UIColor systemRedColor() { return named<"systemRedColor">(); }
  static UIColor systemOrangeColor() { return named<"systemOrangeColor">(); }
  static UIColor systemYellowColor() { return named<"systemYellowColor">(); }
  static UIColor systemGreenColor() { return named<"systemGreenColor">(); }
  static UIColor systemTealColor() { return named<"systemTealColor">(); }
  static UIColor systemBlueColor() { return named<"systemBlueColor">(); }
  static UIColor systemIndigoColor() { return named<"systemIndigoColor">(); }
  static UIColor systemPurpleColor() { return named<"systemPurpleColor">(); }
  static UIColor systemPinkColor() { return named<"systemPinkColor">(); }
  static UIColor systemBrownColor() { return named<"systemBrownColor">(); }
  static UIColor systemGrayColor() { return named<"systemGrayColor">(); }
  static UIColor systemGray2Color() { return named<"systemGray2Color">(); }
  static UIColor systemGray3Color() { return named<"systemGray3Color">(); }
  static UIColor systemGray4Color() { return named<"systemGray4Color">(); }
  static UIColor systemGray5Color() { return named<"systemGray5Color">(); }
  static UIColor systemGray6Color() { return named<"systemGray6Color">(); }
  static UIColor systemMintColor() { return named<"systemMintColor">(); }
  static UIColor systemCyanColor() { return named<"systemCyanColor">(); }
  static UIColor tintColor() { return named<"tintColor">(); }

 private:
  template <objc::FixedString Sel>
  static UIColor named() {
    return objc::send<Sel, UIColor>(objc::class_for<UIColor>());
  }
};
