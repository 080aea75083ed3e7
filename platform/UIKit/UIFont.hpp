// platform/UIKit/UIFont.hpp: fonts.
#pragma once

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/Foundation.hpp"

using UIFontWeight = CGFloat;
using UIFontTextStyle = NSString;

extern "C" {
extern const UIFontWeight UIFontWeightUltraLight;
extern const UIFontWeight UIFontWeightThin;
extern const UIFontWeight UIFontWeightLight;
extern const UIFontWeight UIFontWeightRegular;
extern const UIFontWeight UIFontWeightMedium;
extern const UIFontWeight UIFontWeightSemibold;
extern const UIFontWeight UIFontWeightBold;
extern const UIFontWeight UIFontWeightHeavy;
extern const UIFontWeight UIFontWeightBlack;

// String objects, as in NSAttributedString.hpp.
extern const UIFontTextStyle UIFontTextStyleLargeTitle;
extern const UIFontTextStyle UIFontTextStyleTitle1;
extern const UIFontTextStyle UIFontTextStyleTitle2;
extern const UIFontTextStyle UIFontTextStyleTitle3;
extern const UIFontTextStyle UIFontTextStyleHeadline;
extern const UIFontTextStyle UIFontTextStyleBody;
extern const UIFontTextStyle UIFontTextStyleCallout;
extern const UIFontTextStyle UIFontTextStyleSubheadline;
extern const UIFontTextStyle UIFontTextStyleFootnote;
extern const UIFontTextStyle UIFontTextStyleCaption1;
extern const UIFontTextStyle UIFontTextStyleCaption2;
}

class UIFont : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"UIFont"};
  using NSObject::NSObject;

  /// Sizes are points; one that is not above 0 means the system's own.
  static UIFont systemFontOfSize(CGFloat size) { return of_size<"systemFontOfSize:">(size); }
  static UIFont systemFontOfSize(CGFloat size, UIFontWeight weight) {
    return of_size<"systemFontOfSize:weight:">(size, weight);
  }
  static UIFont boldSystemFontOfSize(CGFloat size) { return of_size<"boldSystemFontOfSize:">(size); }
  static UIFont italicSystemFontOfSize(CGFloat size) { return of_size<"italicSystemFontOfSize:">(size); }
  static UIFont monospacedDigitSystemFontOfSize(CGFloat size, UIFontWeight weight) {
    return of_size<"monospacedDigitSystemFontOfSize:weight:">(size, weight);
  }
  /// Nil for a name that there is no font for.
  static UIFont fontWithName(const NSString& name, CGFloat size) {
    return objc::send<"fontWithName:size:", UIFont>(objc::class_for<UIFont>(), name, size);
  }
  /// At the user's text size.
  static UIFont preferredFontForTextStyle(const UIFontTextStyle& style) {
    return objc::send<"preferredFontForTextStyle:", UIFont>(objc::class_for<UIFont>(), style);
  }

  UIFont fontWithSize(CGFloat size) const { return objc::send<"fontWithSize:", UIFont>(*this, size); }
  NSString fontName() const { return objc::send<"fontName", NSString>(*this); }
  NSString familyName() const { return objc::send<"familyName", NSString>(*this); }
  CGFloat pointSize() const { return objc::send<"pointSize", CGFloat>(*this); }
  CGFloat ascender() const { return objc::send<"ascender", CGFloat>(*this); }
  /// Negative: below the baseline.
  CGFloat descender() const { return objc::send<"descender", CGFloat>(*this); }
  CGFloat lineHeight() const { return objc::send<"lineHeight", CGFloat>(*this); }
  CGFloat capHeight() const { return objc::send<"capHeight", CGFloat>(*this); }
  CGFloat xHeight() const { return objc::send<"xHeight", CGFloat>(*this); }
  CGFloat leading() const { return objc::send<"leading", CGFloat>(*this); }

 private:
  template <objc::FixedString Sel, class... Rest>
  static UIFont of_size(CGFloat size, Rest... rest) {
    return objc::send<Sel, UIFont>(objc::class_for<UIFont>(), size, rest...);
  }
};
