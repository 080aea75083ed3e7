// platform/UIKit/UINavigationController.hpp: pages on a stack, and the bar above them.
#pragma once

#include "platform/UIKit/UIImage.hpp"
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

enum class UIBarButtonItemStyle : NSInteger { Plain = 0, Done = 2 };
enum class UIBarButtonSystemItem : NSInteger { Done = 0, Cancel = 1, Edit = 2, Save = 3 };

class UIBarButtonItem : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"UIBarButtonItem"};
  using NSObject::NSObject;

  NSString title() const { return objc::send<"title", NSString>(*this); }
  UIImage image() const { return objc::send<"image", UIImage>(*this); }
  UIBarButtonItemStyle style() const { return objc::send<"style", UIBarButtonItemStyle>(*this); }
  UIView customView() const { return objc::send<"customView", UIView>(*this); }
  bool isEnabled() const { return objc::send<"isEnabled", bool>(*this); }
  UIColor tintColor() const { return objc::send<"tintColor", UIColor>(*this); }
  /// Not kept alive.
  NSObject target() const { return objc::send<"target", NSObject>(*this); }
  objc::Selector action() const { return objc::send<"action", objc::Selector>(*this); }
};

enum class UINavigationItemLargeTitleDisplayMode : NSInteger { Automatic = 0, Always = 1, Never = 2 };

/// What the bar shows for one page.
class UINavigationItem : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"UINavigationItem"};
  using NSObject::NSObject;

  class Allocated : public objc::Allocated<UINavigationItem> {
   public:
    explicit Allocated(objc::Allocated<UINavigationItem>&& fresh)
        : objc::Allocated<UINavigationItem>(std::move(fresh)) {}
    UINavigationItem initWithTitle(const NSString& title) && {
      return std::move(*this).initialize<"initWithTitle:">(title);
    }
  };
  static Allocated alloc() { return Allocated(objc::allocate<UINavigationItem>()); }

  NSString title() const { return objc::send<"title", NSString>(*this); }
  void setLargeTitleDisplayMode(UINavigationItemLargeTitleDisplayMode mode) const {
    objc::send<"setLargeTitleDisplayMode:">(*this, mode);
  }
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
  void setViewControllers(const NSArray& controllers) const {
    objc::send<"setViewControllers:">(*this, controllers);
  }
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
