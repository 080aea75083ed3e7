// platform/UIKit/UISegmentedControl.hpp: one of a few, side by side.
#pragma once

#include "platform/UIKit/UIControl.hpp"
#include "platform/UIKit/UIImage.hpp"

inline constexpr NSInteger UISegmentedControlNoSegment = -1;

/// A segment shows a title or an image: what is set last. An index beyond the last segment means the last.
class UISegmentedControl : public UIControl {
 public:
  using Base = UIControl;
  static constexpr objc::FixedString kClass{"UISegmentedControl"};
  using UIControl::UIControl;

  class Allocated : public UIViewAllocated<UISegmentedControl> {
   public:
    using UIViewAllocated::UIViewAllocated;
    /// Strings and images.
    UISegmentedControl initWithItems(const NSArray& items) && {
      return std::move(*this).initialize<"initWithItems:">(items);
    }
  };
  static Allocated alloc() { return Allocated(objc::allocate<UISegmentedControl>()); }

  NSUInteger numberOfSegments() const { return objc::send<"numberOfSegments", NSUInteger>(*this); }
  void removeAllSegments() const { objc::send<"removeAllSegments">(*this); }
  void removeSegment(NSUInteger index, bool animated) const {
    objc::send<"removeSegmentAtIndex:animated:">(*this, index, animated);
  }
  /// Behind the last one where the index is beyond it.
  void insertSegment(const NSString& title, NSUInteger index, bool animated) const {
    objc::send<"insertSegmentWithTitle:atIndex:animated:">(*this, title, index, animated);
  }
  NSInteger selectedSegmentIndex() const { return objc::send<"selectedSegmentIndex", NSInteger>(*this); }
  void setSelectedSegmentIndex(NSInteger index) const {
    objc::send<"setSelectedSegmentIndex:">(*this, index);
  }
  NSString titleForSegmentAtIndex(NSUInteger index) const {
    return objc::send<"titleForSegmentAtIndex:", NSString>(*this, index);
  }
  void setTitle(const NSString& title, NSUInteger index) const {
    objc::send<"setTitle:forSegmentAtIndex:">(*this, title, index);
  }
  UIImage imageForSegmentAtIndex(NSUInteger index) const {
    return objc::send<"imageForSegmentAtIndex:", UIImage>(*this, index);
  }
  void setImage(const UIImage& image, NSUInteger index) const {
    objc::send<"setImage:forSegmentAtIndex:">(*this, image, index);
  }
  bool isEnabledForSegmentAtIndex(NSUInteger index) const {
    return objc::send<"isEnabledForSegmentAtIndex:", bool>(*this, index);
  }
  void setEnabledForSegment(bool enabled, NSUInteger index) const {
    objc::send<"setEnabled:forSegmentAtIndex:">(*this, enabled, index);
  }
  void setSelectedSegmentTintColor(const UIColor& color) const {
    objc::send<"setSelectedSegmentTintColor:">(*this, color);
  }
};
