// host/uikit/containers/controllers/navigation_item.hpp: what a bar shows for one page, and its buttons.
#pragma once

#include <vector>

#include "platform/UIKit.hpp"

namespace wispen::uikit {

class NavigationItem : public objc::Implementation<NavigationItem, UINavigationItem> {
 public:
  using Items = std::vector<UIBarButtonItem>;

  static UINavigationItem initWithTitle(objc::Allocated<UINavigationItem> self, const NSString& title);

  UINavigationBar bar() const { return bar_.get(); }
  void set_bar(const UINavigationBar& bar) { bar_ = objc::Unowned<UINavigationBar>(bar); }

  const NSString& title() const { return title_; }
  const UIView& titleView() const { return title_view_; }
  const NSString& backButtonTitle() const { return back_title_; }
  bool hidesBackButton() const { return hides_back_button_; }
  UINavigationItemLargeTitleDisplayMode large_title_mode() const { return large_title_mode_; }
  /// Outermost first.
  const Items& left() const { return left_; }
  const Items& right() const { return right_; }

 private:
  friend void define_navigation_item();

  void changed();
  template <auto Member, class V>
  void set(const V& value);
  void setTitleView(const UIView& view);
  void setHidesBackButton(bool hides, bool animated);
  template <Items NavigationItem::*Member>
  UIBarButtonItem first() const;
  template <Items NavigationItem::*Member>
  void setFirst(const UIBarButtonItem& item);
  template <Items NavigationItem::*Member>
  void setFirstAnimated(const UIBarButtonItem& item, bool animated);
  template <Items NavigationItem::*Member>
  NSArray all() const;
  template <Items NavigationItem::*Member>
  void setAll(const NSArray& items);

  NSString title_;
  UIView title_view_;
  NSString back_title_;
  Items left_;
  Items right_;
  bool hides_back_button_ = false;
  UINavigationItemLargeTitleDisplayMode large_title_mode_ = UINavigationItemLargeTitleDisplayMode::Automatic;
  objc::Unowned<UINavigationBar> bar_;  // while the item is in one
};

/// UIBarButtonItem and UINavigationItem.
void define_navigation_item();

}  // namespace wispen::uikit
