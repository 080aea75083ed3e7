// host/uikit/containers/controllers/navigation_bar.hpp: UINavigationBar: title, way back and buttons of the
// page on top.
#pragma once

#include <vector>

#include "host/geometry/geometry.hpp"
#include "host/graphics/canvas.hpp"
#include "host/uikit/view/geometry.hpp"
#include "platform/UIKit.hpp"

namespace wispen::uikit {

/// The host's UINavigationBar. It shows the last of its items, with the way back to the one before.
class NavigationBar : public objc::Implementation<NavigationBar, UINavigationBar> {
 public:
  static constexpr double kLargeTitleHeight = 52;
  static UINavigationBar initWithFrame(objc::Allocated<UINavigationBar> self, const Rect& frame);
  void build(bool animated);
  void fill(const UIView& content);
  UIView add_button(const UIView& content, const UIBarButtonItem& item);
  void layoutSubviews();
  void place_row(const EdgeInsets& safe, double row);
  bool shows_item_view() const;
  static Size size_of(const UIView& view, double row);
  double extra();
  double title_alpha();
  double background_alpha();
  void paint(graphics::Canvas& canvas, const Rect& bounds);
  void didMoveToWindow();
  void backTapped();
  UINavigationItem topItem();
  UINavigationItem backItem();
  NSArray items();
  void setPrefersLargeTitles(bool prefers);
  void setBarTintColor(const UIColor& colour);
  bool pointInside(const Point& point, const NSObject&);
  /// Points, without the status bar and without a large title.
  static double row_height();
  bool shows_large_title();
  void set_items(std::vector<UINavigationItem> items, bool animated);
  void item_changed(const UINavigationItem& item);
  /// Who is told of a tap on the way back: it answers `_goBack`.
  void set_back_target(const NSObject& target) { back_target_ = target; }
  /// How far the content has gone up under the bar: 0 at the top. A large title gives way, and then the
  /// bar's background comes in.
  void set_content_scrolled(double distance);

 private:
  friend void define_navigation_bar();

  std::vector<UINavigationItem> items_;
  UIView content_;     // all that belongs to the top item
  UIView large_area_;  // the large title slides out of it, under the row
  UILabel large_title_;
  UIView title_;  // a label, or the item's own view
  UIButton back_;
  std::vector<UIView> left_;
  std::vector<UIView> right_;
  std::vector<UIView> placed_custom_;
  objc::Weak<NSObject> back_target_;
  bool prefers_large_titles_ = false;
  bool translucent_ = true;
  UIColor bar_tint_;
  NSDictionary title_attributes_;
  double scrolled_ = 0;
};

void define_navigation_bar();

}  // namespace wispen::uikit
