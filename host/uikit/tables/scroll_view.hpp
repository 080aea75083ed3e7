// host/uikit/tables/scroll_view.hpp: UIScrollView: a window onto something larger.
#pragma once

#include "host/uikit/events/gesture_recognizer.hpp"
#include "host/uikit/views/view.hpp"

namespace wispen::uikit {

struct ScrollState;

/// The host's UIScrollView. Its content offset is its bounds' origin. It follows a finger or a wheel, goes on
/// by itself when thrown, and springs back from beyond its ends.
class ScrollView : public objc::Authored<ScrollView, View> {
 public:
  static constexpr objc::FixedString kClass{"UIScrollView"};
  using Authored::Authored;

  static void define();
  ScrollState& scroll() const;

  Point contentOffset() const { return bounds().origin; }
  void setContentOffset(const Point& offset) const;
  void set_content_offset(const Point& offset, bool animated) const;
  Size contentSize() const;
  void setContentSize(const Size& size) const;
  /// The content inset and the safe area.
  EdgeInsets adjustedContentInset() const;
  /// The nearest offset that shows no empty room beyond the content's ends.
  Point nearest_resting_offset(const Point& offset) const;
  void scrollRectToVisible(const Rect& rect, bool animated) const;
  /// A wheel's turn, in points; positive is up.
  void wheel(double points) const;
  bool is_moving() const;
  void stop() const;

 private:
  friend struct ScrollMethods;
};

/// The innermost scroll view at a place of the screen that has something to scroll; nil where there is none.
ScrollView scroll_view_at(Point place);

}  // namespace wispen::uikit
