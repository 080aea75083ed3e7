// platform/UIKit/CALayer.hpp: the corners, border and shadow of a view.
#pragma once

#include "platform/CoreGraphics/CGColor.hpp"
#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/Foundation.hpp"

using CACornerMask = NSUInteger;
inline constexpr CACornerMask kCALayerMinXMinYCorner = 1;
inline constexpr CACornerMask kCALayerMaxXMinYCorner = 2;
inline constexpr CACornerMask kCALayerMinXMaxYCorner = 4;
inline constexpr CACornerMask kCALayerMaxXMaxYCorner = 8;

/// Lengths are points.
class CALayer : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"CALayer"};
  using NSObject::NSObject;

  CGFloat cornerRadius() const { return objc::send<"cornerRadius", CGFloat>(*this); }
  void setCornerRadius(CGFloat radius) const { objc::send<"setCornerRadius:">(*this, radius); }
  CACornerMask maskedCorners() const { return objc::send<"maskedCorners", CACornerMask>(*this); }
  void setMaskedCorners(CACornerMask corners) const { objc::send<"setMaskedCorners:">(*this, corners); }
  bool masksToBounds() const { return objc::send<"masksToBounds", bool>(*this); }
  void setMasksToBounds(bool masks) const { objc::send<"setMasksToBounds:">(*this, masks); }
  CGFloat borderWidth() const { return objc::send<"borderWidth", CGFloat>(*this); }
  void setBorderWidth(CGFloat width) const { objc::send<"setBorderWidth:">(*this, width); }
  void setBorderColor(CGColorRef color) const { objc::send<"setBorderColor:">(*this, color); }
  void setShadowColor(CGColorRef color) const { objc::send<"setShadowColor:">(*this, color); }
  float shadowOpacity() const { return objc::send<"shadowOpacity", float>(*this); }
  void setShadowOpacity(float opacity) const { objc::send<"setShadowOpacity:">(*this, opacity); }
  CGFloat shadowRadius() const { return objc::send<"shadowRadius", CGFloat>(*this); }
  void setShadowRadius(CGFloat radius) const { objc::send<"setShadowRadius:">(*this, radius); }
  void setShadowOffset(CGSize offset) const { objc::send<"setShadowOffset:">(*this, offset); }
};
