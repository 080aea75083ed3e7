// platform/UIKit/UINavigationController.hpp: pages on a stack, and the bar above them.
#pragma once

#include "platform/UIKit/UIViewController.hpp"

class UINavigationBar : public UIView {
 public:
  using Base = UIView;
  static constexpr objc::FixedString kClass{"UINavigationBar"};
  using UIView::UIView;

  UINavigationItem topItem() const;
  bool prefersLargeTitles() const { return objc::send<"prefersLargeTitles", bool>(*this); }
  void setPrefersLargeTitles(bool prefers) const { objc::send<"setPrefersLargeTitles:">(*this, prefers); }
  UIColor barTintColor() const { return objc::send<"barTintColor", UIColor>(*this); }
  void setBarTintColor(const UIColor& color) const { objc::send<"setBarTintColor:">(*this, color); }
};

/// What the bar shows for one page.
class UINavigationItem : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"UINavigationItem"};
  using NSObject::NSObject;

  NSString title() const { return objc::send<"title", NSString>(*this); }
  void setTitle(const NSString& title) const { objc::send<"setTitle:">(*this, title); }
  /// In place of the title.
  UIView titleView() const { return objc::send<"titleView", UIView>(*this); }
  void setTitleView(const UIView& view) const { objc::send<"setTitleView:">(*this, view); }
  /// Nil while no bar shows it; outside of the public interface.
  UINavigationBar navigationBar() const { return objc::send<"navigationBar", UINavigationBar>(*this); }
};

class UINavigationController : public UIViewController {
 public:
  using Base = UIViewController;
  static constexpr objc::FixedString kClass{"UINavigationController"};
  using UIViewController::UIViewController;

  class Allocated : public objc::Allocated<UINavigationController> {
   public:
    explicit Allocated(objc::Allocated<UINavigationController>&& fresh)
        : objc::Allocated<UINavigationController>(std::move(fresh)) {}
    UINavigationController initWithRootViewController(const UIViewController& root) && {
      return std::move(*this).initialize<"initWithRootViewController:">(root);
    }
  };
  static Allocated alloc() { return Allocated(objc::allocate<UINavigationController>()); }

  UINavigationBar navigationBar() const { return objc::send<"navigationBar", UINavigationBar>(*this); }
  /// The root first.
  NSArray viewControllers() const { return objc::send<"viewControllers", NSArray>(*this); }
  UIViewController topViewController() const {
    return objc::send<"topViewController", UIViewController>(*this);
  }
  void pushViewController(const UIViewController& controller, bool animated) const {
    objc::send<"pushViewController:animated:">(*this, controller, animated);
  }
  /// The page that leaves; nil at the root.
  UIViewController popViewController(bool animated) const {
    return objc::send<"popViewControllerAnimated:", UIViewController>(*this, animated);
  }
};

inline UINavigationItem UINavigationBar::topItem() const {
  return objc::send<"topItem", UINavigationItem>(*this);
}
inline UINavigationItem UIViewController::navigationItem() const {
  return objc::send<"navigationItem", UINavigationItem>(*this);
}
inline UINavigationController UIViewController::navigationController() const {
  return objc::send<"navigationController", UINavigationController>(*this);
}
