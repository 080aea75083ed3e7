// host/uikit/controls/segmented_control.hpp: UISegmentedControl: one of a few, side by side.
#pragma once

#include <optional>

#include "host/uikit/controls/control.hpp"
#include "platform/UIKit/UIImage.hpp"

namespace wispen::uikit {

struct SegmentedState;

/// The host's UISegmentedControl. A segment shows a title or an image, never both: what is set last. A user's
/// choice sends valueChanged when the finger lifts, setting it from code sends nothing.
class SegmentedControl : public objc::Authored<SegmentedControl, Control> {
 public:
  static constexpr objc::FixedString kClass{"UISegmentedControl"};
  using Authored::Authored;

  static constexpr NSInteger kNoSegment = -1;

  static void define();
  /// Of titles and images.
  static SegmentedControl make(const NSArray& items);

  NSUInteger numberOfSegments() const;
  /// kNoSegment while none is.
  NSInteger selectedSegmentIndex() const;
  void setSelectedSegmentIndex(NSInteger index) const;
  /// An index beyond the last segment adds one there; below, what is there moves on.
  void insert_title(const NSString& title, NSUInteger index, bool animated) const;
  void insert_image(const UIImage& image, NSUInteger index, bool animated) const;
  void remove(NSUInteger index, bool animated) const;
  void removeAllSegments() const;
  /// Of the last segment for an index beyond it, as on the platform.
  void setTitle(const NSString& title, NSUInteger index) const;
  NSString title(NSUInteger index) const;
  void setImage(const UIImage& image, NSUInteger index) const;
  UIImage image(NSUInteger index) const;
  void setEnabledForSegment(bool enabled, NSUInteger index) const;
  bool isEnabledForSegment(NSUInteger index) const;
  void setSelectedSegmentTintColor(const UIColor& colour) const;
  /// In the control's coordinates.
  Rect segment_rect(NSUInteger index) const;
  SegmentedState& parts() const;
};

}  // namespace wispen::uikit
