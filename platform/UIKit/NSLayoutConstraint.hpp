// platform/UIKit/NSLayoutConstraint.hpp: constraints between the edges, sizes and centres of views.
#pragma once

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/Foundation.hpp"

/// 1 to 1000, which must be met.
using UILayoutPriority = float;
inline constexpr UILayoutPriority UILayoutPriorityRequired = 1000;
inline constexpr UILayoutPriority UILayoutPriorityDefaultHigh = 750;
inline constexpr UILayoutPriority UILayoutPriorityDefaultLow = 250;

class NSLayoutConstraint : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"NSLayoutConstraint"};
  using NSObject::NSObject;

  /// All at once, in the array's order.
  static void activateConstraints(const NSArray& constraints) {
    objc::send<"activateConstraints:">(objc::class_for<NSLayoutConstraint>(), constraints);
  }
  static void deactivateConstraints(const NSArray& constraints) {
    objc::send<"deactivateConstraints:">(objc::class_for<NSLayoutConstraint>(), constraints);
  }

  bool isActive() const { return objc::send<"isActive", bool>(*this); }
  /// Active, it is held by the nearest view around both of its own; there must be one.
  void setActive(bool active) const { objc::send<"setActive:">(*this, active); }
  CGFloat constant() const { return objc::send<"constant", CGFloat>(*this); }
  void setConstant(CGFloat constant) const { objc::send<"setConstant:">(*this, constant); }
  CGFloat multiplier() const { return objc::send<"multiplier", CGFloat>(*this); }
  UILayoutPriority priority() const { return objc::send<"priority", UILayoutPriority>(*this); }
  void setPriority(UILayoutPriority priority) const { objc::send<"setPriority:">(*this, priority); }
  NSObject firstItem() const { return objc::send<"firstItem", NSObject>(*this); }
  NSObject secondItem() const { return objc::send<"secondItem", NSObject>(*this); }
};

/// One edge, centre line or size of a view.
class NSLayoutAnchor : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"NSLayoutAnchor"};
  using NSObject::NSObject;

  // Each is made inactive.

  NSLayoutConstraint constraintEqualToAnchor(const NSLayoutAnchor& other) const {
    return make<"constraintEqualToAnchor:">(other);
  }
  NSLayoutConstraint constraintEqualToAnchor(const NSLayoutAnchor& other, CGFloat constant) const {
    return make<"constraintEqualToAnchor:constant:">(other, constant);
  }
  NSLayoutConstraint constraintLessThanOrEqualToAnchor(const NSLayoutAnchor& other, CGFloat constant) const {
    return make<"constraintLessThanOrEqualToAnchor:constant:">(other, constant);
  }
  NSLayoutConstraint constraintGreaterThanOrEqualToAnchor(const NSLayoutAnchor& other,
                                                          CGFloat constant) const {
    return make<"constraintGreaterThanOrEqualToAnchor:constant:">(other, constant);
  }

 protected:
  template <objc::FixedString Sel, class... Args>
  NSLayoutConstraint make(const Args&... arguments) const {
    return objc::send<Sel, NSLayoutConstraint>(*this, arguments...);
  }
};

class NSLayoutXAxisAnchor : public NSLayoutAnchor {
 public:
  using Base = NSLayoutAnchor;
  static constexpr objc::FixedString kClass{"NSLayoutXAxisAnchor"};
  using NSLayoutAnchor::NSLayoutAnchor;
};

class NSLayoutYAxisAnchor : public NSLayoutAnchor {
 public:
  using Base = NSLayoutAnchor;
  static constexpr objc::FixedString kClass{"NSLayoutYAxisAnchor"};
  using NSLayoutAnchor::NSLayoutAnchor;
};

class NSLayoutDimension : public NSLayoutAnchor {
 public:
  using Base = NSLayoutAnchor;
  static constexpr objc::FixedString kClass{"NSLayoutDimension"};
  using NSLayoutAnchor::NSLayoutAnchor;

  NSLayoutConstraint constraintEqualToConstant(CGFloat constant) const {
    return make<"constraintEqualToConstant:">(constant);
  }
  NSLayoutConstraint constraintLessThanOrEqualToConstant(CGFloat constant) const {
    return make<"constraintLessThanOrEqualToConstant:">(constant);
  }
  NSLayoutConstraint constraintGreaterThanOrEqualToConstant(CGFloat constant) const {
    return make<"constraintGreaterThanOrEqualToConstant:">(constant);
  }
  NSLayoutConstraint constraintEqualToAnchorMultiplier(const NSLayoutDimension& other,
                                                       CGFloat multiplier) const {
    return make<"constraintEqualToAnchor:multiplier:">(other, multiplier);
  }
};
