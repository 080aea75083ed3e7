// platform/UIKit/UIActivityIndicatorView.hpp: something is under way.
#pragma once

#include "platform/UIKit/UIView.hpp"

/// The first three are those of old systems.
enum class UIActivityIndicatorViewStyle : NSInteger {
  WhiteLarge = 0,
  White = 1,
  Gray = 2,
  Medium = 100,
  Large = 101
};

class UIActivityIndicatorView : public UIView {
 public:
  using Base = UIView;
  static constexpr objc::FixedString kClass{"UIActivityIndicatorView"};
  using UIView::UIView;

  class Allocated : public UIViewAllocated<UIActivityIndicatorView> {
   public:
    using UIViewAllocated::UIViewAllocated;
    UIActivityIndicatorView initWithActivityIndicatorStyle(UIActivityIndicatorViewStyle style) && {
      return std::move(*this).initialize<"initWithActivityIndicatorStyle:">(style);
    }
  };
  static Allocated alloc() { return Allocated(objc::allocate<UIActivityIndicatorView>()); }

  void setHidesWhenStopped(bool hides) const { objc::send<"setHidesWhenStopped:">(*this, hides); }
  void startAnimating() const { objc::send<"startAnimating">(*this); }
  void stopAnimating() const { objc::send<"stopAnimating">(*this); }
  bool isAnimating() const { return objc::send<"isAnimating", bool>(*this); }
};
