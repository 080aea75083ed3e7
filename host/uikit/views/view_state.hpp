// host/uikit/views/view_state.hpp: what a view knows of itself.
#pragma once

#include <memory>
#include <vector>

#include "host/layout/model.hpp"
#include "host/uikit/events/gesture_recognizer.hpp"
#include "host/uikit/layout/layout_constraint.hpp"
#include "host/uikit/views/animation.hpp"
#include "host/uikit/views/paint_record.hpp"
#include "host/uikit/views/view.hpp"

namespace wispen::uikit {

class LayoutSystem;

/// Priorities along one axis.
struct ContentPriorities {
  double hugging = layout::kDefaultHugging;
  double compression = layout::kDefaultCompressionResistance;
};

struct ViewState {
  ViewState();
  ~ViewState();

  Rect bounds;
  Point center;
  AffineTransform transform;
  double alpha = 1;
  UIColor background;
  bool hidden = false;
  bool clips = false;
  bool elevated = false;  // presented over others: dark grounds are a step lighter in it
  bool opaque = true;
  bool interaction = true;
  bool autoresizes_subviews = true;
  bool needs_layout = true;
  bool subtree_needs_layout = true;
  bool laying_out = false;
  unsigned autoresizing_mask = 0;
  ContentMode content_mode = ContentMode::ScaleToFill;
  UIColor tint;
  NSInteger tag = 0;
  NSInteger semantic_attribute = 0;
  EdgeInsets layout_margins{8, 8, 8, 8};
  Layer layer;

  objc::Unowned<View> superview;  // it owns this view, and clears this when it dies
  objc::Unowned<View> window;
  objc::Unowned<Responder> controller;
  std::vector<View> subviews;
  std::vector<GestureRecognizer> recognizers;

  bool translates_mask = true;
  ContentPriorities content_priorities[2];    // by layout::Axis
  std::vector<LayoutConstraint> constraints;  // held: this is the nearest view around all that they name
  std::vector<NSObject> guides;
  std::unique_ptr<LayoutSystem> system;  // when this view's own frame is the outermost known one

  std::unique_ptr<ViewAnimations> animations;  // none while nothing moves
  PaintRecord record;

  NSString accessibility_label;
  NSString accessibility_identifier;
};

}  // namespace wispen::uikit
