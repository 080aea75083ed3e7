// platform/UIKit/UIView.hpp: a rectangle with a position, a look, and views inside it.
#pragma once

#include "platform/CoreGraphics/CGAffineTransform.hpp"
#include "platform/UIKit/CALayer.hpp"
#include "platform/UIKit/NSLayoutConstraint.hpp"
#include "platform/UIKit/UIColor.hpp"
#include "platform/UIKit/UIGeometry.hpp"
#include "platform/UIKit/UIResponder.hpp"

using UIViewAutoresizing = NSUInteger;
inline constexpr UIViewAutoresizing UIViewAutoresizingNone = 0;
inline constexpr UIViewAutoresizing UIViewAutoresizingFlexibleLeftMargin = 1;
inline constexpr UIViewAutoresizing UIViewAutoresizingFlexibleWidth = 2;
inline constexpr UIViewAutoresizing UIViewAutoresizingFlexibleRightMargin = 4;
inline constexpr UIViewAutoresizing UIViewAutoresizingFlexibleTopMargin = 8;
inline constexpr UIViewAutoresizing UIViewAutoresizingFlexibleHeight = 16;
inline constexpr UIViewAutoresizing UIViewAutoresizingFlexibleBottomMargin = 32;

enum class UIViewContentMode : NSInteger {
  ScaleToFill = 0,
  ScaleAspectFit = 1,
  ScaleAspectFill = 2,
  Redraw = 3,
  Center = 4,
  Top = 5,
  Bottom = 6,
  Left = 7,
  Right = 8,
  TopLeft = 9,
  TopRight = 10,
  BottomLeft = 11,
  BottomRight = 12
};

enum class UISemanticContentAttribute : NSInteger {
  Unspecified = 0,
  Playback = 1,
  Spatial = 2,
  ForceLeftToRight = 3,
  ForceRightToLeft = 4
};
enum class UIUserInterfaceLayoutDirection : NSInteger { LeftToRight = 0, RightToLeft = 1 };

using UIViewAnimationOptions = NSUInteger;
inline constexpr UIViewAnimationOptions UIViewAnimationOptionAllowUserInteraction = 1 << 1;
inline constexpr UIViewAnimationOptions UIViewAnimationOptionBeginFromCurrentState = 1 << 2;
inline constexpr UIViewAnimationOptions UIViewAnimationOptionCurveEaseIn = 1 << 16;
inline constexpr UIViewAnimationOptions UIViewAnimationOptionCurveEaseOut = 2 << 16;
inline constexpr UIViewAnimationOptions UIViewAnimationOptionCurveLinear = 3 << 16;

enum class UILayoutConstraintAxis : NSInteger { Horizontal = 0, Vertical = 1 };

class UIGestureRecognizer;
class UIViewController;
class UIWindow;

/// What alloc of a view class gives.
template <class T>
class UIViewAllocated : public objc::Allocated<T> {
 public:
  explicit UIViewAllocated(objc::Allocated<T>&& fresh) : objc::Allocated<T>(std::move(fresh)) {}
  T initWithFrame(CGRect frame) && { return std::move(*this).template initialize<"initWithFrame:">(frame); }
};

/// A length that a view does not have of its own.
inline constexpr CGFloat UIViewNoIntrinsicMetric = -1;

/// Positions are points in the superview's coordinates, whose y axis goes down.
class UIView : public UIResponder {
 public:
  using Base = UIResponder;
  static constexpr objc::FixedString kClass{"UIView"};
  using UIResponder::UIResponder;
  static UIViewAllocated<UIView> alloc() { return UIViewAllocated<UIView>(objc::allocate<UIView>()); }

  CGRect frame() const { return objc::send<"frame", CGRect>(*this); }
  void setFrame(CGRect frame) const { objc::send<"setFrame:">(*this, frame); }
  CGRect bounds() const { return objc::send<"bounds", CGRect>(*this); }
  void setBounds(CGRect bounds) const { objc::send<"setBounds:">(*this, bounds); }
  CGPoint center() const { return objc::send<"center", CGPoint>(*this); }
  void setCenter(CGPoint center) const { objc::send<"setCenter:">(*this, center); }
  CGAffineTransform transform() const { return objc::send<"transform", CGAffineTransform>(*this); }
  void setTransform(const CGAffineTransform& transform) const {
    objc::send<"setTransform:">(*this, transform);
  }
  /// From this view's coordinates to another's, to the window's for nil.
  CGPoint convertPointToView(CGPoint point, const UIView& other) const {
    return objc::send<"convertPoint:toView:", CGPoint>(*this, point, other);
  }
  CGRect convertRectToView(CGRect rect, const UIView& other) const {
    return objc::send<"convertRect:toView:", CGRect>(*this, rect, other);
  }

  UIView superview() const { return objc::send<"superview", UIView>(*this); }
  NSArray subviews() const { return objc::send<"subviews", NSArray>(*this); }
  UIWindow window() const;
  void addSubview(const UIView& view) const { objc::send<"addSubview:">(*this, view); }
  void insertSubview(const UIView& view, NSInteger index) const {
    objc::send<"insertSubview:atIndex:">(*this, view, index);
  }
  void bringSubviewToFront(const UIView& view) const { objc::send<"bringSubviewToFront:">(*this, view); }
  void sendSubviewToBack(const UIView& view) const { objc::send<"sendSubviewToBack:">(*this, view); }
  void removeFromSuperview() const { objc::send<"removeFromSuperview">(*this); }
  bool isDescendantOfView(const UIView& other) const {
    return objc::send<"isDescendantOfView:", bool>(*this, other);
  }
  NSInteger tag() const { return objc::send<"tag", NSInteger>(*this); }
  void setTag(NSInteger tag) const { objc::send<"setTag:">(*this, tag); }
  UIView viewWithTag(NSInteger tag) const { return objc::send<"viewWithTag:", UIView>(*this, tag); }
  /// The nearest controller around it; outside of the public interface.
  UIViewController viewControllerForAncestor() const;

  CGFloat alpha() const { return objc::send<"alpha", CGFloat>(*this); }
  void setAlpha(CGFloat alpha) const { objc::send<"setAlpha:">(*this, alpha); }
  bool isHidden() const { return objc::send<"isHidden", bool>(*this); }
  void setHidden(bool hidden) const { objc::send<"setHidden:">(*this, hidden); }
  UIColor backgroundColor() const { return objc::send<"backgroundColor", UIColor>(*this); }
  void setBackgroundColor(const UIColor& color) const { objc::send<"setBackgroundColor:">(*this, color); }
  /// Its own, or the nearest ancestor's.
  UIColor tintColor() const { return objc::send<"tintColor", UIColor>(*this); }
  void setTintColor(const UIColor& color) const { objc::send<"setTintColor:">(*this, color); }
  bool clipsToBounds() const { return objc::send<"clipsToBounds", bool>(*this); }
  void setClipsToBounds(bool clips) const { objc::send<"setClipsToBounds:">(*this, clips); }
  UIViewContentMode contentMode() const { return objc::send<"contentMode", UIViewContentMode>(*this); }
  void setContentMode(UIViewContentMode mode) const { objc::send<"setContentMode:">(*this, mode); }
  CALayer layer() const { return objc::send<"layer", CALayer>(*this); }
  bool isUserInteractionEnabled() const { return objc::send<"isUserInteractionEnabled", bool>(*this); }
  void setUserInteractionEnabled(bool enabled) const {
    objc::send<"setUserInteractionEnabled:">(*this, enabled);
  }
  void setSemanticContentAttribute(UISemanticContentAttribute attribute) const {
    objc::send<"setSemanticContentAttribute:">(*this, attribute);
  }
  UIUserInterfaceLayoutDirection effectiveUserInterfaceLayoutDirection() const {
    return objc::send<"effectiveUserInterfaceLayoutDirection", UIUserInterfaceLayoutDirection>(*this);
  }
  NSString accessibilityLabel() const { return objc::send<"accessibilityLabel", NSString>(*this); }
  void setAccessibilityLabel(const NSString& label) const {
    objc::send<"setAccessibilityLabel:">(*this, label);
  }
  NSString accessibilityIdentifier() const { return objc::send<"accessibilityIdentifier", NSString>(*this); }
  void setAccessibilityIdentifier(const NSString& identifier) const {
    objc::send<"setAccessibilityIdentifier:">(*this, identifier);
  }
  void setNeedsDisplay() const { objc::send<"setNeedsDisplay">(*this); }

  void setNeedsLayout() const { objc::send<"setNeedsLayout">(*this); }
  void layoutIfNeeded() const { objc::send<"layoutIfNeeded">(*this); }
  CGSize sizeThatFits(CGSize size) const { return objc::send<"sizeThatFits:", CGSize>(*this, size); }
  void sizeToFit() const { objc::send<"sizeToFit">(*this); }
  void invalidateIntrinsicContentSize() const { objc::send<"invalidateIntrinsicContentSize">(*this); }
  /// The smallest size that its constraints allow.
  CGSize systemLayoutSizeFittingSize(CGSize target) const {
    return objc::send<"systemLayoutSizeFittingSize:", CGSize>(*this, target);
  }
  CGSize systemLayoutSizeFittingSize(CGSize target, UILayoutPriority horizontal,
                                     UILayoutPriority vertical) const {
    return objc::send<"systemLayoutSizeFittingSize:withHorizontalFittingPriority:verticalFittingPriority:",
                      CGSize>(*this, target, horizontal, vertical);
  }
  /// UIViewNoIntrinsicMetric where it has none.
  CGSize intrinsicContentSize() const { return objc::send<"intrinsicContentSize", CGSize>(*this); }
  UIEdgeInsets safeAreaInsets() const { return objc::send<"safeAreaInsets", UIEdgeInsets>(*this); }
  UIViewAutoresizing autoresizingMask() const {
    return objc::send<"autoresizingMask", UIViewAutoresizing>(*this);
  }
  void setAutoresizingMask(UIViewAutoresizing mask) const { objc::send<"setAutoresizingMask:">(*this, mask); }
  bool translatesAutoresizingMaskIntoConstraints() const {
    return objc::send<"translatesAutoresizingMaskIntoConstraints", bool>(*this);
  }
  void setTranslatesAutoresizingMaskIntoConstraints(bool translates) const {
    objc::send<"setTranslatesAutoresizingMaskIntoConstraints:">(*this, translates);
  }
  void setContentHuggingPriority(UILayoutPriority priority, UILayoutConstraintAxis axis) const {
    objc::send<"setContentHuggingPriority:forAxis:">(*this, priority, axis);
  }
  void setContentCompressionResistancePriority(UILayoutPriority priority, UILayoutConstraintAxis axis) const {
    objc::send<"setContentCompressionResistancePriority:forAxis:">(*this, priority, axis);
  }

  NSLayoutXAxisAnchor leadingAnchor() const { return x_anchor<"leadingAnchor">(); }
  NSLayoutXAxisAnchor trailingAnchor() const { return x_anchor<"trailingAnchor">(); }
  NSLayoutXAxisAnchor leftAnchor() const { return x_anchor<"leftAnchor">(); }
  NSLayoutXAxisAnchor rightAnchor() const { return x_anchor<"rightAnchor">(); }
  NSLayoutXAxisAnchor centerXAnchor() const { return x_anchor<"centerXAnchor">(); }
  NSLayoutYAxisAnchor topAnchor() const { return y_anchor<"topAnchor">(); }
  NSLayoutYAxisAnchor bottomAnchor() const { return y_anchor<"bottomAnchor">(); }
  NSLayoutYAxisAnchor centerYAnchor() const { return y_anchor<"centerYAnchor">(); }
  NSLayoutDimension widthAnchor() const { return objc::send<"widthAnchor", NSLayoutDimension>(*this); }
  NSLayoutDimension heightAnchor() const { return objc::send<"heightAnchor", NSLayoutDimension>(*this); }

  /// The view that takes a touch at this point of this view's coordinates; nil where it is outside.
  UIView hitTest(CGPoint point, const objc::Object& event) const {
    return objc::send<"hitTest:withEvent:", UIView>(*this, point, event);
  }
  bool pointInside(CGPoint point, const objc::Object& event) const {
    return objc::send<"pointInside:withEvent:", bool>(*this, point, event);
  }
  void addGestureRecognizer(const UIGestureRecognizer& recognizer) const;
  void removeGestureRecognizer(const UIGestureRecognizer& recognizer) const;

  /// Runs `changes` at once; what it sets is seen to change over these seconds.
  static void animateWithDuration(NSTimeInterval seconds, const objc::Block<void()>& changes) {
    objc::send<"animateWithDuration:animations:">(objc::class_for<UIView>(), seconds, changes);
  }
  /// `completion` is told whether nothing took the animation over.
  static void animateWithDuration(NSTimeInterval seconds, const objc::Block<void()>& changes,
                                  const objc::Block<void(bool)>& completion) {
    objc::send<"animateWithDuration:animations:completion:">(objc::class_for<UIView>(), seconds, changes,
                                                             completion);
  }
  static void performWithoutAnimation(const objc::Block<void()>& changes) {
    objc::send<"performWithoutAnimation:">(objc::class_for<UIView>(), changes);
  }

 private:
  template <objc::FixedString Sel>
  NSLayoutXAxisAnchor x_anchor() const {
    return objc::send<Sel, NSLayoutXAxisAnchor>(*this);
  }
  template <objc::FixedString Sel>
  NSLayoutYAxisAnchor y_anchor() const {
    return objc::send<Sel, NSLayoutYAxisAnchor>(*this);
  }
};
