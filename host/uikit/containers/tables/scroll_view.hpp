// host/uikit/containers/tables/scroll_view.hpp: UIScrollView: a window onto something larger.
#pragma once

#include "host/core/main_loop.hpp"
#include "host/geometry/geometry.hpp"
#include "host/graphics/canvas.hpp"
#include "host/uikit/containers/tables/scroll_motion.hpp"
#include "host/uikit/view/events/key.hpp"
#include "host/uikit/view/geometry.hpp"
#include "platform/UIKit.hpp"

namespace wispen::uikit {

/// The host's UIScrollView. Its content offset is its bounds' origin. It follows a finger or a wheel, goes on
/// by itself when thrown, and springs back from beyond its ends.
class ScrollView : public objc::Implementation<ScrollView, UIScrollView> {
 public:
  static UIScrollView initWithFrame(objc::Allocated<UIScrollView> self, const Rect& frame);
  template <objc::FixedString Sel, class... Args>
  void tell(const Args&... more) {
    const NSObject delegate = delegate_.lock();
    if (objc::responds_to(delegate, objc::selector<Sel>())) objc::send<Sel>(delegate, self(), more...);
  }
  void offset_changed();
  /// A page's outermost scroll view tells its navigation bar how far the content is under it.
  void tell_bar();
  void panned(const UIPanGestureRecognizer& pan);
  ScrollRange range();
  bool can_bounce();
  void start_moving(double velocity);
  void step();
  void finish();
  void layoutSubviews();
  /// When the room around the content changes, the content stays where it was seen.
  void keep_place();
  void paint_indicator(graphics::Canvas& canvas, const Rect& bounds);
  void setContentInset(const EdgeInsets& inset);
  template <auto Member, class V>
  void set(V value) {
    this->*Member = value;
    self().setNeedsLayout();
  }
  NSObject delegate() { return delegate_.lock(); }
  void setDelegate(const NSObject& delegate) { delegate_ = delegate; }
  bool is_at_top();
  /// Pulled down from its top, a sheet goes with the finger, and what it holds stays.
  bool is_on_a_sheet();
  bool shouldBegin(const UIGestureRecognizer& recognizer);
  void revealFocused(const UIView& view);
  bool handleKey(const UIKey& key);
  Size contentSize() { return content_size_; }
  bool is_moving() const { return moving_ || dragging_; }
  void stop();
  void setContentOffset(const Point& offset);
  void set_content_offset(const Point& offset, bool animated);
  void setContentSize(const Size& size);
  /// The content inset and the safe area.
  EdgeInsets adjustedContentInset();
  /// The nearest offset that shows no empty room beyond the content's ends.
  Point nearest_resting_offset(const Point& offset);
  void scrollRectToVisible(const Rect& rect, bool animated);
  /// A wheel's turn, in points; positive is up.
  void wheel(double points);
  Point contentOffset() { return self().bounds().origin; }

 private:
  friend void define_scroll_view();

  Size content_size_;
  EdgeInsets content_inset_;
  UIScrollViewContentInsetAdjustmentBehavior adjustment_ =
      UIScrollViewContentInsetAdjustmentBehavior::Automatic;
  bool scroll_enabled_ = true;
  bool bounces_ = true;
  bool always_bounces_vertical_ = false;
  bool shows_indicator_ = true;
  NSInteger keyboard_dismiss_ = 0;
  objc::Weak<NSObject> delegate_;
  UIPanGestureRecognizer pan_;
  Point drag_start_;
  bool dragging_ = false;
  ScrollMotion motion_;
  TimerId timer_{};
  bool moving_ = false;  // by itself
  EdgeInsets last_inset_;
  bool placed_ = false;
};

void define_scroll_view();

/// The innermost scroll view at a point of the screen that has something to scroll; nil where there is none.
UIScrollView scroll_view_at(Point point);

}  // namespace wispen::uikit
