// platform/OnBoardingKit.hpp: sheets that tell of what is new.
#pragma once

#include "platform/UIKit.hpp"

/// A sheet with an icon, a title, a line of text, and a list of items.
class OBWelcomeController : public UIViewController {
 public:
  using Base = UIViewController;
  static constexpr objc::FixedString kClass{"OBWelcomeController"};
  using UIViewController::UIViewController;

  class Allocated : public objc::Allocated<OBWelcomeController> {
   public:
    explicit Allocated(objc::Allocated<OBWelcomeController>&& fresh)
        : objc::Allocated<OBWelcomeController>(std::move(fresh)) {}
    OBWelcomeController initWithTitle(const NSString& title, const NSString& detail, const UIImage& icon) && {
      return std::move(*this).initialize<"initWithTitle:detailText:icon:">(title, detail, icon);
    }
  };
  static Allocated alloc() { return Allocated(objc::allocate<OBWelcomeController>()); }

  void addBulletedListItem(const NSString& title, const NSString& description, const UIImage& image) const {
    objc::send<"addBulletedListItemWithTitle:description:image:">(*this, title, description, image);
  }
};
