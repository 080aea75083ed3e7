// platform/UIKit/UIApplication.hpp: the things there is one of: application, screen and device, and windows.
#pragma once

#include "platform/UIKit/UIViewController.hpp"

class UIWindow : public UIView {
 public:
  using Base = UIView;
  static constexpr objc::FixedString kClass{"UIWindow"};
  using UIView::UIView;
  static UIViewAllocated<UIWindow> alloc() { return UIViewAllocated<UIWindow>(objc::allocate<UIWindow>()); }

  UIViewController rootViewController() const {
    return objc::send<"rootViewController", UIViewController>(*this);
  }
  void setRootViewController(const UIViewController& controller) const {
    objc::send<"setRootViewController:">(*this, controller);
  }
  /// Those of a higher level lie above.
  CGFloat windowLevel() const { return objc::send<"windowLevel", CGFloat>(*this); }
  void setWindowLevel(CGFloat level) const { objc::send<"setWindowLevel:">(*this, level); }
  bool isKeyWindow() const { return objc::send<"isKeyWindow", bool>(*this); }
  void makeKeyAndVisible() const { objc::send<"makeKeyAndVisible">(*this); }
};

inline UIWindow UIView::window() const { return objc::send<"window", UIWindow>(*this); }

class UIApplication : public UIResponder {
 public:
  using Base = UIResponder;
  static constexpr objc::FixedString kClass{"UIApplication"};
  using UIResponder::UIResponder;

  static UIApplication sharedApplication() {
    return objc::send<"sharedApplication", UIApplication>(objc::class_for<UIApplication>());
  }
  /// The lowest first.
  NSArray windows() const { return objc::send<"windows", NSArray>(*this); }
  UIWindow keyWindow() const { return objc::send<"keyWindow", UIWindow>(*this); }
};

class UIScreen : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"UIScreen"};
  using NSObject::NSObject;

  static UIScreen mainScreen() { return objc::send<"mainScreen", UIScreen>(objc::class_for<UIScreen>()); }
  /// Points.
  CGRect bounds() const { return objc::send<"bounds", CGRect>(*this); }
  /// Pixels a point.
  CGFloat scale() const { return objc::send<"scale", CGFloat>(*this); }
};

enum class UIUserInterfaceIdiom : NSInteger { Unspecified = -1, Phone = 0, Pad = 1 };

class UIDevice : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"UIDevice"};
  using NSObject::NSObject;

  static UIDevice currentDevice() {
    return objc::send<"currentDevice", UIDevice>(objc::class_for<UIDevice>());
  }
  UIUserInterfaceIdiom userInterfaceIdiom() const {
    return objc::send<"userInterfaceIdiom", UIUserInterfaceIdiom>(*this);
  }
  NSString systemVersion() const { return objc::send<"systemVersion", NSString>(*this); }
};
