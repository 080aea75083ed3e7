// host/uikit/controls/segmented_control.hpp: UISegmentedControl: one of a few, side by side.
#pragma once

#include <functional>
#include <map>
#include <vector>

#include "host/geometry/geometry.hpp"
#include "host/graphics/canvas.hpp"
#include "host/uikit/controls/controls.hpp"
#include "host/uikit/view/events/key.hpp"
#include "host/uikit/view/geometry.hpp"
#include "platform/UIKit.hpp"

namespace wispen::uikit {

struct Segment {
  NSString title;
  UIImage image;
  bool enabled = true;
  double width = 0;  // 0: as the others
  UILabel label;
  UIImageView picture;
};

/// The host's UISegmentedControl. A segment shows a title or an image, never both: what is set last. A user's
/// choice sends valueChanged when the finger lifts, setting it from code sends nothing.
class SegmentedControl : public objc::Implementation<SegmentedControl, UISegmentedControl> {
 public:
  static UISegmentedControl initWithFrame(objc::Allocated<UISegmentedControl> self, const Rect& frame);
  static UISegmentedControl initWithItems(objc::Allocated<UISegmentedControl> self, const NSArray& items);
  NSInteger segment_under(const UITouch& touch);
  bool can_choose(NSInteger index);
  void choose(NSInteger index, const NSObject& event);
  bool beginTracking(const UITouch& touch, const UIEvent&);
  bool continueTracking(const UITouch& touch, const UIEvent&);
  void endTracking(const UITouch&, const UIEvent& event);
  void cancelTracking(const UIEvent&);
  /// Arrows go to the next segment that can be chosen.
  bool handleKey(const UIKey& key);
  void layoutSubviews();
  Size intrinsicContentSize() { return sizeThatFits({}); }
  void stateChanged() { show(); }
  void setMomentary(bool momentary);
  void setByContent(bool by_content);
  double width(NSUInteger index);
  void setWidth(double width, NSUInteger index);
  NSDictionary titleAttributes(UIControlState state);
  void setTitleAttributes(const NSDictionary& attributes, UIControlState state);
  /// Null while there are no segments.
  Segment* segment_at(NSUInteger index);
  void content_changed();
  /// The segment that is shown as chosen now, which a finger may not have settled yet.
  NSInteger shown();
  Size content_size(const Segment& segment);
  std::vector<Rect> rects();
  Size sizeThatFits(const Size&);
  Segment make_segment();
  /// Gives every part its look by the state, and its place.
  void show();
  void slide();
  void paint(graphics::Canvas& canvas, const Rect& bounds);
  NSUInteger numberOfSegments() { return segments_.size(); }
  /// An index beyond the last segment adds one there; below, what is there moves on.
  void insert_title(const NSString& title, NSUInteger index, bool animated);
  void insert_image(const UIImage& image, NSUInteger index, bool animated);
  void remove(NSUInteger index, bool animated);
  void removeAllSegments();
  void setSelectedSegmentIndex(NSInteger index);
  /// Of the last segment for an index beyond it, as on the platform.
  void setTitle(const NSString& title, NSUInteger index);
  void setImage(const UIImage& image, NSUInteger index);
  NSString title(NSUInteger index);
  UIImage image(NSUInteger index);
  void setEnabledForSegment(bool enabled, NSUInteger index);
  bool isEnabledForSegment(NSUInteger index);
  void setSelectedSegmentTintColor(const UIColor& colour);
  /// In the control's coordinates.
  Rect segment_rect(NSUInteger index);

 private:
  friend void define_segmented_control();

  void insert(NSUInteger index, bool animated, const std::function<void(Segment&)>& set_content);
  NSDictionary attributes_for(UIControlState state) const;

  std::vector<Segment> segments_;
  NSInteger selected_ = UISegmentedControlNoSegment;
  bool momentary_ = false;
  bool by_content_ = false;  // widths in proportion to what the segments show
  UIColor selected_tint_;
  std::map<UIControlState, NSDictionary> attributes_;  // of titles, by control state
  UIView pill_;                                        // behind the selected segment's content
  NSInteger pressed_ = UISegmentedControlNoSegment;
  bool drags_pill_ = false;
};

}  // namespace wispen::uikit
