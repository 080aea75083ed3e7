// host/uikit/controls/segmented_state.hpp: what a segmented control knows of itself.
#pragma once

#include <map>
#include <vector>

#include "host/uikit/controls/image_view.hpp"
#include "host/uikit/controls/label.hpp"
#include "host/uikit/controls/segmented_control.hpp"

namespace wispen::uikit {

struct Segment {
  NSString title;
  UIImage image;
  bool enabled = true;
  double width = 0;  // 0: as the others
  Label label;
  ImageView picture;
};

struct SegmentedState {
  std::vector<Segment> segments;
  NSInteger selected = SegmentedControl::kNoSegment;
  bool momentary = false;
  bool by_content = false;  // widths in proportion to what the segments show
  UIColor selected_tint;
  std::map<NSUInteger, NSDictionary> attributes;  // of titles, by control state
  View pill;                                      // behind the selected segment's content
  NSInteger pressed = SegmentedControl::kNoSegment;
  bool drags_pill = false;
};

struct SegmentedMethods {
  using Self = SegmentedControl;

  /// The segment that is shown as chosen now, which a finger may not have settled yet.
  static NSInteger shown(const Self& self);
  static std::vector<Rect> rects(const Self& self);
  static Size content_size(const Self& self, const Segment& segment);
  /// Gives every part its look by the state, and its place.
  static void show(const Self& self);
  static void slide(const Self& self);
  static void paint(const View& view, graphics::Canvas& canvas, const Rect& bounds);
  static Size sizeThatFits(const Self& self, const Size& size);
  static Segment make_segment(const Self& self);
  /// Null while there are no segments.
  static Segment* segment_at(const Self& self, NSUInteger index);
  static void content_changed(const Self& self);
};

}  // namespace wispen::uikit
