// platform/UIKit/UIViewController.hpp: a screenful of views, and when it is seen.
#pragma once

#include "platform/UIKit/UIView.hpp"

enum class UIModalPresentationStyle : NSInteger {
  FullScreen = 0,
  PageSheet = 1,
  FormSheet = 2,
  OverFullScreen = 5,
  OverCurrentContext = 6,
  Popover = 7,
  Automatic = -2
};

class UINavigationController;
class UINavigationItem;

class UIViewController : public UIResponder {
 public:
  using Base = UIResponder;
  static constexpr objc::FixedString kClass{"UIViewController"};
  using UIResponder::UIResponder;

  /// Loaded at the first call.
  UIView view() const { return objc::send<"view", UIView>(*this); }
  UIView viewIfLoaded() const { return objc::send<"viewIfLoaded", UIView>(*this); }
  void setView(const UIView& view) const { objc::send<"setView:">(*this, view); }
  NSString title() const { return objc::send<"title", NSString>(*this); }
  void setTitle(const NSString& title) const { objc::send<"setTitle:">(*this, title); }
  UINavigationItem navigationItem() const;
  UINavigationController navigationController() const;
  UIViewController parentViewController() const {
    return objc::send<"parentViewController", UIViewController>(*this);
  }
  UIViewController presentedViewController() const {
    return objc::send<"presentedViewController", UIViewController>(*this);
  }
  UIViewController presentingViewController() const {
    return objc::send<"presentingViewController", UIViewController>(*this);
  }
  /// By whoever puts its view on the screen, or takes it off: it is told that it will, and at the end that it
  /// did.
  void beginAppearanceTransition(bool appearing, bool animated) const {
    objc::send<"beginAppearanceTransition:animated:">(*this, appearing, animated);
  }
  void endAppearanceTransition() const { objc::send<"endAppearanceTransition">(*this); }
  bool isMovingFromParentViewController() const {
    return objc::send<"isMovingFromParentViewController", bool>(*this);
  }
  UIModalPresentationStyle modalPresentationStyle() const {
    return objc::send<"modalPresentationStyle", UIModalPresentationStyle>(*this);
  }
  void setModalPresentationStyle(UIModalPresentationStyle style) const {
    objc::send<"setModalPresentationStyle:">(*this, style);
  }
  /// It does not go by a gesture or a tap beside it.
  bool isModalInPresentation() const { return objc::send<"isModalInPresentation", bool>(*this); }
  void setModalInPresentation(bool modal) const { objc::send<"setModalInPresentation:">(*this, modal); }
  UIEdgeInsets additionalSafeAreaInsets() const {
    return objc::send<"additionalSafeAreaInsets", UIEdgeInsets>(*this);
  }
  CGSize preferredContentSize() const { return objc::send<"preferredContentSize", CGSize>(*this); }
  void presentViewController(const UIViewController& controller, bool animated,
                             const objc::Block<void()>& completion = nullptr) const {
    objc::send<"presentViewController:animated:completion:">(*this, controller, animated, completion);
  }
  void dismissViewController(bool animated, const objc::Block<void()>& completion = nullptr) const {
    objc::send<"dismissViewControllerAnimated:completion:">(*this, animated, completion);
  }
};

inline UIViewController UIView::viewControllerForAncestor() const {
  return objc::send<"_viewControllerForAncestor", UIViewController>(*this);
}
