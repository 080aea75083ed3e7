// platform/UIKit/UIImageView.hpp: a picture.
#pragma once

#include "platform/UIKit/UIImage.hpp"
#include "platform/UIKit/UIView.hpp"

class UIImageView : public UIView {
 public:
  using Base = UIView;
  static constexpr objc::FixedString kClass{"UIImageView"};
  using UIView::UIView;

  class Allocated : public UIViewAllocated<UIImageView> {
   public:
    using UIViewAllocated::UIViewAllocated;
    /// As large as the image.
    UIImageView initWithImage(const UIImage& image) && {
      return std::move(*this).initialize<"initWithImage:">(image);
    }
  };
  static Allocated alloc() { return Allocated(objc::allocate<UIImageView>()); }

  UIImage image() const { return objc::send<"image", UIImage>(*this); }
  void setImage(const UIImage& image) const { objc::send<"setImage:">(*this, image); }
};
