// platform/UIKit/UIStackView.hpp: views in a row or a column.
#pragma once

#include "platform/UIKit/UIView.hpp"

enum class UIStackViewDistribution : NSInteger {
  Fill = 0,
  FillEqually = 1,
  FillProportionally = 2,
  EqualSpacing = 3,
  EqualCentering = 4
};

enum class UIStackViewAlignment : NSInteger {
  Fill = 0,
  Leading = 1,
  Top = 1,
  FirstBaseline = 2,
  Center = 3,
  Trailing = 4,
  Bottom = 4,
  LastBaseline = 5
};

class UIStackView : public UIView {
 public:
  using Base = UIView;
  static constexpr objc::FixedString kClass{"UIStackView"};
  using UIView::UIView;

  class Allocated : public UIViewAllocated<UIStackView> {
   public:
    using UIViewAllocated::UIViewAllocated;
    UIStackView initWithArrangedSubviews(const NSArray& views) && {
      return std::move(*this).initialize<"initWithArrangedSubviews:">(views);
    }
  };
  static Allocated alloc() { return Allocated(objc::allocate<UIStackView>()); }

  NSArray arrangedSubviews() const { return objc::send<"arrangedSubviews", NSArray>(*this); }
  void addArrangedSubview(const UIView& view) const { objc::send<"addArrangedSubview:">(*this, view); }
  void insertArrangedSubview(const UIView& view, NSUInteger index) const {
    objc::send<"insertArrangedSubview:atIndex:">(*this, view, index);
  }
  /// It stays a subview.
  void removeArrangedSubview(const UIView& view) const { objc::send<"removeArrangedSubview:">(*this, view); }
  UILayoutConstraintAxis axis() const { return objc::send<"axis", UILayoutConstraintAxis>(*this); }
  void setAxis(UILayoutConstraintAxis axis) const { objc::send<"setAxis:">(*this, axis); }
  UIStackViewDistribution distribution() const {
    return objc::send<"distribution", UIStackViewDistribution>(*this);
  }
  void setDistribution(UIStackViewDistribution distribution) const {
    objc::send<"setDistribution:">(*this, distribution);
  }
  UIStackViewAlignment alignment() const { return objc::send<"alignment", UIStackViewAlignment>(*this); }
  void setAlignment(UIStackViewAlignment alignment) const { objc::send<"setAlignment:">(*this, alignment); }
  CGFloat spacing() const { return objc::send<"spacing", CGFloat>(*this); }
  void setSpacing(CGFloat points) const { objc::send<"setSpacing:">(*this, points); }
};
