// host/uikit/controllers/navigation_item.hpp: UINavigationItem and UIBarButtonItem: what a page puts in the
// bar.
#pragma once

#include <vector>

#include "host/uikit/views/view.hpp"
#include "platform/UIKit/UIImage.hpp"

namespace wispen::uikit {

class NavigationBar;

struct BarButtonItemState {
  NSString title;
  UIImage image;
  View custom_view;
  objc::Weak<NSObject> target;
  objc::Selector action;
  NSInteger style = 0;  // 2 is done
  bool enabled = true;
  UIColor tint;
};

class BarButtonItem : public objc::Authored<BarButtonItem, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"UIBarButtonItem"};
  using Authored::Authored;
  static void define();
  BarButtonItemState& parts() const { return state<BarButtonItemState>(); }
};

struct NavigationItemState {
  NSString title;
  View title_view;
  NSString back_title;
  std::vector<BarButtonItem> left;  // outermost first
  std::vector<BarButtonItem> right;
  bool hides_back_button = false;
  NSInteger large_title_mode = 0;  // 0 automatic, 1 always, 2 never
  objc::Unowned<View> bar;         // while the item is in one
};

class NavigationItem : public objc::Authored<NavigationItem, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"UINavigationItem"};
  using Authored::Authored;

  static void define();
  static NavigationItem make(const NSString& title);
  NavigationItemState& parts() const { return state<NavigationItemState>(); }
  void set_bar(const View& bar) const;
  NavigationBar bar() const;

 private:
  friend struct NavigationItemMethods;
};

}  // namespace wispen::uikit
