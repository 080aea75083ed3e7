// host/uikit/view/view.hpp: UIView: a rectangle with a position, a look, and views inside it.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "host/geometry/content_mode.hpp"
#include "host/geometry/geometry.hpp"
#include "host/layout/constraint.hpp"
#include "host/layout/model.hpp"
#include "host/uikit/view/animation.hpp"
#include "host/uikit/view/geometry.hpp"
#include "host/uikit/view/paint_record.hpp"
#include "platform/UIKit.hpp"

namespace wispen::uikit {

class LayoutSystem;

/// Priorities along one axis.
struct ContentPriorities {
  double hugging = layout::kDefaultHugging;
  double compression = layout::kDefaultCompressionResistance;
};

/// The host's UIView. Its frame is its bounds' size about its centre, turned by its transform. Setting what
/// can be animated inside an animation block changes the value at once, and what is painted over time.
///
/// Everybody sends messages. Layout, painting and touches, which visit every view of a page, go straight to
/// View::of(view), and only for what no subclass overrides.
class View : public objc::Implementation<View, UIView> {
 public:
  View();
  ~View();

  static UIView init(objc::Allocated<UIView> self);
  static UIView initWithFrame(objc::Allocated<UIView> self, const Rect& frame);

  // Position.
  Rect frame() const;
  void setFrame(const Rect& frame);
  const Rect& bounds() const { return bounds_; }
  void setBounds(const Rect& bounds) { set_geometry(bounds, center_); }
  const Point& center() const { return center_; }
  void setCenter(const Point& center) { set_geometry(bounds_, center); }
  const AffineTransform& transform() const { return transform_; }
  void setTransform(const AffineTransform& transform);
  /// From this view's coordinates to another's, or to the window's for nil; as the views stand, not as they
  /// are animated.
  Point convertPointToView(const Point& point, const UIView& other) const;
  Rect convertRectToView(const Rect& rect, const UIView& other) const;
  Point convertPointFromView(const Point& point, const UIView& other) const;
  Rect convertRectFromView(const Rect& rect, const UIView& other) const;
  Size sizeThatFits(const Size&) const { return bounds_.size; }
  void sizeToFit();
  Size intrinsicContentSize() const { return {kNoIntrinsicMetric, kNoIntrinsicMetric}; }
  EdgeInsets safeAreaInsets() const;

  // Hierarchy.
  UIView superview() const { return superview_.get(); }
  UIView window() const { return window_.get(); }
  /// Copy it where a view may leave while they are walked.
  const std::vector<UIView>& subviews() const { return subviews_; }
  NSArray subviews_array() const;
  void addSubview(const UIView& view);
  void insertSubviewAtIndex(const UIView& view, NSInteger index);
  void insertBelow(const UIView& view, const UIView& sibling) { insert_beside(view, sibling, 0); }
  void insertAbove(const UIView& view, const UIView& sibling) { insert_beside(view, sibling, 1); }
  void bringToFront(const UIView& view);
  void sendToBack(const UIView& view);
  void removeFromSuperview();
  bool isDescendantOfView(const UIView& other) const;
  UIView viewWithTag(NSInteger tag) const;
  /// The controller whose view this is, if any.
  UIViewController controller() const { return controller_.get(); }
  void set_controller(const UIViewController& controller);
  UIViewController view_controller_for_ancestor() const;
  UIResponder nextResponder() const;
  bool becomeFirstResponder();

  // Look.
  double alpha() const { return alpha_; }
  void setAlpha(double alpha);
  bool isHidden() const { return hidden_; }
  void setHidden(bool hidden);
  /// For a window, which is hidden until it is made visible.
  void begin_hidden() { hidden_ = true; }
  const UIColor& backgroundColor() const { return background_; }
  void setBackgroundColor(const UIColor& colour);
  bool clipsToBounds() const { return clips_; }
  void setClipsToBounds(bool clips);
  ContentMode contentMode() const { return content_mode_; }
  UIViewContentMode content_mode_value() const { return static_cast<UIViewContentMode>(content_mode_); }
  void setContentMode(UIViewContentMode mode);
  /// The nearest tint of its own or of an ancestor; the system's blue where none has one.
  UIColor tintColor() const;
  void setTintColor(const UIColor& colour);
  CALayer layer();
  /// Nil where nobody has asked for it.
  const CALayer& layer_if_made() const { return layer_; }
  bool isUserInteractionEnabled() const { return interaction_; }
  UIUserInterfaceLayoutDirection layout_direction() const;
  void setSemanticContentAttribute(UISemanticContentAttribute attribute);
  /// Presented over others: dark grounds are a step lighter in it.
  bool is_elevated() const { return elevated_; }
  void set_elevated(bool elevated) { elevated_ = elevated; }

  // Layout.
  void setNeedsLayout();
  void layoutIfNeeded();
  void layoutSubviews();
  bool needs_layout() const { return needs_layout_; }
  /// It or something in it.
  bool awaits_layout() const { return needs_layout_ || subtree_needs_layout_; }
  /// It itself is laid out with the next pass, without a word to those above it.
  void mark_for_layout() { needs_layout_ = subtree_needs_layout_ = true; }
  NSUInteger autoresizingMask() const { return autoresizing_mask_; }
  unsigned layout_mask() const { return autoresizing_mask_; }
  void setAutoresizingMask(NSUInteger mask) { autoresizing_mask_ = static_cast<unsigned>(mask & 63); }
  bool translatesAutoresizingMask() const { return translates_mask_; }
  void setTranslatesAutoresizingMask(bool translates);
  void invalidateIntrinsicContentSize();
  Size systemLayoutSizeFittingSize(const Size& target) const;
  Size systemLayoutSizeFitting(const Size& target, const float& across, const float& down) const;
  const EdgeInsets& layoutMargins() const { return layout_margins_; }
  void setLayoutMargins(const EdgeInsets& margins);
  const ContentPriorities& priorities(layout::Axis axis) const {
    return content_priorities_[static_cast<int>(axis)];
  }
  float hugging(UILayoutConstraintAxis axis) const;
  void setHugging(const float& value, UILayoutConstraintAxis axis);
  float compression(UILayoutConstraintAxis axis) const;
  void setCompression(const float& value, UILayoutConstraintAxis axis);
  /// Held: this is the nearest view around all that they name.
  std::vector<NSLayoutConstraint>& constraints() { return constraints_; }
  NSArray constraints_array() const;
  static void activate(const UIView&, const NSLayoutConstraint& constraint);
  static void deactivate(const UIView&, const NSLayoutConstraint& constraint);
  static void activate_all(const UIView&, const NSArray& constraints);
  static void deactivate_all(const UIView&, const NSArray& constraints);
  std::vector<NSObject>& guides() { return guides_; }
  /// The solved constraints, where this view's own frame is the outermost known one.
  std::unique_ptr<LayoutSystem>& system() { return system_; }
  const NSString& accessibilityIdentifier() const { return accessibility_identifier_; }

  // Painting.
  /// What is shown at this moment of a running animation.
  Rect presented_bounds();
  Point presented_center();
  double presented_alpha();
  AffineTransform presented_transform();
  UIColor presented_background();
  /// None while nothing moves.
  std::unique_ptr<ViewAnimations>& animations() { return animations_; }
  PaintRecord& record() { return record_; }
  const PaintRecord& record() const { return record_; }
  /// What it paints itself is to be painted again.
  void setNeedsDisplay() { mark(&PaintRecord::look); }
  /// Call after a change of position, opacity or clipping.
  void geometry_changed() { mark(&PaintRecord::moved); }
  /// Everything in it is to be painted again, where it is.
  void look_changed_inside();

  // Touches.
  UIView hitTest(const Point& point, const NSObject& event) const;
  bool pointInside(const Point& point, const NSObject&) const { return bounds_.contains(point); }
  const std::vector<UIGestureRecognizer>& recognizers() const { return recognizers_; }
  NSArray recognizers_array() const;
  void addGestureRecognizer(const UIGestureRecognizer& recognizer);
  void removeGestureRecognizer(const UIGestureRecognizer& recognizer);

  static constexpr double kNoIntrinsicMetric = -1;

 private:
  friend void define_view();

  void set_geometry(const Rect& bounds, const Point& center);
  void resize_subviews(Size old_size);
  void move_to(const UIView& superview, const std::function<void()>& change);
  void set_window(const UIView& window);
  void insert_beside(const UIView& view, const UIView& sibling, NSInteger after);
  void tint_changed();
  void mark(bool PaintRecord::*what);
  void lay_out();

  Rect bounds_;
  Point center_;
  AffineTransform transform_;
  double alpha_ = 1;
  UIColor background_;
  bool hidden_ = false;
  bool clips_ = false;
  bool elevated_ = false;
  bool opaque_ = true;
  bool interaction_ = true;
  bool autoresizes_subviews_ = true;
  bool needs_layout_ = true;
  bool subtree_needs_layout_ = true;
  unsigned autoresizing_mask_ = 0;
  ContentMode content_mode_ = ContentMode::ScaleToFill;
  UIColor tint_;
  NSInteger tag_ = 0;
  UISemanticContentAttribute semantic_attribute_ = UISemanticContentAttribute::Unspecified;
  EdgeInsets layout_margins_{8, 8, 8, 8};
  CALayer layer_;

  objc::Unowned<UIView> superview_;  // it owns this view, and clears this when it dies
  objc::Unowned<UIView> window_;
  objc::Unowned<UIViewController> controller_;
  std::vector<UIView> subviews_;
  std::vector<UIGestureRecognizer> recognizers_;

  bool translates_mask_ = true;
  ContentPriorities content_priorities_[2];  // by layout::Axis
  std::vector<NSLayoutConstraint> constraints_;
  std::vector<NSObject> guides_;
  std::unique_ptr<LayoutSystem> system_;

  std::unique_ptr<ViewAnimations> animations_;
  PaintRecord record_;

  NSString accessibility_label_;
  NSString accessibility_identifier_;
};

inline bool is_right_to_left(const UIView& view) {
  return view.effectiveUserInterfaceLayoutDirection() == UIUserInterfaceLayoutDirection::RightToLeft;
}

}  // namespace wispen::uikit
