// host/uikit/views/view.hpp: UIView: a rectangle with a place, a look, and views inside it.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "host/geometry/content_mode.hpp"
#include "host/layout/constraint.hpp"
#include "host/uikit/views/geometry.hpp"
#include "host/uikit/views/layer.hpp"
#include "host/uikit/views/responder.hpp"
#include "platform/UIKit/UIColor.hpp"

namespace wispen::uikit {

struct PaintRecord;
struct ViewState;
class GestureRecognizer;
class LayoutConstraint;
class Window;

/// The host's UIView. Its frame is its bounds' size about its centre, turned by its transform. Setting what
/// can be animated inside an animation block changes the value at once, and what is painted over time.
///
/// C++ callers use these functions where nobody overrides them, and send messages where somebody might:
/// layoutSubviews, sizeThatFits:, intrinsicContentSize, hitTest:withEvent: and the didMove family.
class View : public objc::Authored<View, Responder> {
 public:
  static constexpr objc::FixedString kClass{"UIView"};
  using Authored::Authored;

  static void define();
  /// A plain view of this frame.
  static View make(const Rect& frame = {});
  ViewState& parts() const;

  static View initWithFrame(objc::Allocated<View> self, const Rect& frame);

  // Place.
  Rect frame() const;
  void setFrame(const Rect& frame) const;
  Rect bounds() const;
  void setBounds(const Rect& bounds) const;
  Point center() const;
  void setCenter(const Point& center) const;
  AffineTransform transform() const;
  void setTransform(const AffineTransform& transform) const;
  /// From this view's coordinates to another's, or to the window's for nil; as the views stand, not as they
  /// are animated.
  Point convertPointToView(const Point& point, const View& other) const;
  Rect convertRectToView(const Rect& rect, const View& other) const;
  Size sizeThatFits(const Size& size) const { return objc::send<"sizeThatFits:", Size>(*this, size); }
  void sizeToFit() const;
  Size intrinsicContentSize() const { return objc::send<"intrinsicContentSize", Size>(*this); }
  EdgeInsets safeAreaInsets() const;

  // Hierarchy.
  View superview() const;
  /// A copy: a view may leave while they are walked.
  std::vector<View> subviews() const;
  Window window() const;
  void addSubview(const View& view) const;
  void insertSubviewAtIndex(const View& view, NSInteger index) const;
  void removeFromSuperview() const;
  bool isDescendantOfView(const View& other) const;
  View viewWithTag(NSInteger tag) const;
  /// The controller whose view this is, if any.
  Responder controller() const;
  void set_controller(const Responder& controller) const;

  // Look.
  double alpha() const;
  void setAlpha(double alpha) const;
  bool isHidden() const;
  void setHidden(bool hidden) const;
  UIColor backgroundColor() const;
  void setBackgroundColor(const UIColor& colour) const;
  bool clipsToBounds() const;
  void setClipsToBounds(bool clips) const;
  ContentMode contentMode() const;
  void setContentMode(NSInteger mode) const;
  /// The nearest tint of its own or of an ancestor; the system's blue where none has one.
  UIColor tintColor() const;
  void setTintColor(const UIColor& colour) const;
  Layer layer() const;
  bool isUserInteractionEnabled() const;
  void setUserInteractionEnabled(bool enabled) const;
  bool is_right_to_left() const;

  // Layout.
  void setNeedsLayout() const;
  void layoutIfNeeded() const;
  void setAutoresizingMask(NSUInteger mask) const;
  bool translatesAutoresizingMask() const;
  void setTranslatesAutoresizingMask(bool translates) const;
  void invalidateIntrinsicContentSize() const;
  Size systemLayoutSizeFittingSize(const Size& target) const;
  Size systemLayoutSizeFitting(const Size& target, float across, float down) const;

  // Painting.
  /// What is shown at this moment of a running animation.
  Rect presented_bounds() const;
  Point presented_center() const;
  double presented_alpha() const;
  AffineTransform presented_transform() const;
  UIColor presented_background() const;
  /// What it paints itself is to be painted again.
  void setNeedsDisplay() const;
  /// Its place, its opacity or its clip has changed: all in it is seen elsewhere, or otherwise.
  void place_changed() const;
  /// Everything in it is to be painted again, where it is.
  void look_changed_inside() const;

  // Touches.
  View hitTest(const Point& point) const;
  void addGestureRecognizer(const GestureRecognizer& recognizer) const;
  void removeGestureRecognizer(const GestureRecognizer& recognizer) const;

 private:
  friend struct ViewMethods;
  void farewell();
  void set_place(const Rect& bounds, const Point& center) const;
  void resize_subviews(Size old_size) const;
  void move_to(const View& superview, const std::function<void()>& change) const;
  void set_window(const View& window) const;
  void tint_changed() const;
  void mark(bool PaintRecord::*what) const;
};

inline constexpr double kNoIntrinsicMetric = -1;

}  // namespace wispen::uikit
