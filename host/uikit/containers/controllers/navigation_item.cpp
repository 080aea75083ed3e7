// host/uikit/containers/controllers/navigation_item.cpp: what a bar shows for one page, and its buttons.

#include "host/uikit/containers/controllers/navigation_item.hpp"

#include <iterator>
#include <utility>

#include "host/foundation/arrays.hpp"
#include "host/uikit/containers/controllers/navigation_bar.hpp"

namespace wispen::uikit {

namespace {

class BarButtonItem : public objc::Implementation<BarButtonItem, UIBarButtonItem> {
 public:
  static UIBarButtonItem with(objc::Allocated<UIBarButtonItem> self, UIBarButtonItemStyle style,
                              const NSObject& target, objc::Selector action) {
    UIBarButtonItem item = super_init<"init">(std::move(self));
    if (!item) return item;
    of(item).style_ = style;
    of(item).target_ = target;
    of(item).action_ = action;
    return item;
  }
  static UIBarButtonItem initWithTitle(objc::Allocated<UIBarButtonItem> self, const NSString& title,
                                       UIBarButtonItemStyle style, const NSObject& target,
                                       objc::Selector action) {
    UIBarButtonItem item = with(std::move(self), style, target, action);
    if (item) of(item).title_ = title;
    return item;
  }
  static UIBarButtonItem initWithImage(objc::Allocated<UIBarButtonItem> self, const UIImage& image,
                                       UIBarButtonItemStyle style, const NSObject& target,
                                       objc::Selector action) {
    UIBarButtonItem item = with(std::move(self), style, target, action);
    if (item) of(item).image_ = image;
    return item;
  }
  static UIBarButtonItem initWithCustomView(objc::Allocated<UIBarButtonItem> self, const UIView& view) {
    UIBarButtonItem item = with(std::move(self), UIBarButtonItemStyle::Plain, NSObject(), objc::Selector());
    if (item) of(item).custom_view_ = view;
    return item;
  }
  static UIBarButtonItem initWithSystemItem(objc::Allocated<UIBarButtonItem> self,
                                            UIBarButtonSystemItem system, const NSObject& target,
                                            objc::Selector action) {
    // The platform's first items are words: done, cancel, edit, save; others are shown by their number.
    static constexpr const char* kWords[] = {"Done", "Cancel", "Edit", "Save"};
    const bool done = system == UIBarButtonSystemItem::Done;
    UIBarButtonItem item = with(
        std::move(self), done ? UIBarButtonItemStyle::Done : UIBarButtonItemStyle::Plain, target, action);
    const auto number = static_cast<std::size_t>(system);
    if (item && number < std::size(kWords)) of(item).title_ = NSString(kWords[number]);
    return item;
  }
  NSObject target() { return target_.lock(); }

 private:
  friend void wispen::uikit::define_navigation_item();

  NSString title_;
  UIImage image_;
  UIView custom_view_;
  objc::Weak<NSObject> target_;
  objc::Selector action_;
  UIBarButtonItemStyle style_ = UIBarButtonItemStyle::Plain;
  bool enabled_ = true;
  UIColor tint_;
};

}  // namespace

UINavigationItem NavigationItem::initWithTitle(objc::Allocated<UINavigationItem> self,
                                               const NSString& title) {
  UINavigationItem item = super_init<"init">(std::move(self));
  if (item) of(item).title_ = title;
  return item;
}

void NavigationItem::changed() {
  if (const UINavigationBar shown_in = bar()) NavigationBar::of(shown_in).item_changed(self());
}

template <auto Member, class V>
void NavigationItem::set(const V& value) {
  this->*Member = value;
  changed();
}

void NavigationItem::setTitleView(const UIView& view) {
  if (title_view_ == view) return;
  const UIView old = std::exchange(title_view_, view);
  old.removeFromSuperview();
  changed();
}

void NavigationItem::setHidesBackButton(bool hides, bool) { set<&NavigationItem::hides_back_button_>(hides); }

template <NavigationItem::Items NavigationItem::*Member>
UIBarButtonItem NavigationItem::first() const {
  const Items& items = this->*Member;
  return items.empty() ? UIBarButtonItem() : items.front();
}
template <NavigationItem::Items NavigationItem::*Member>
void NavigationItem::setFirst(const UIBarButtonItem& item) {
  set<Member>(item ? Items{item} : Items());
}
template <NavigationItem::Items NavigationItem::*Member>
void NavigationItem::setFirstAnimated(const UIBarButtonItem& item, bool) {
  setFirst<Member>(item);
}
template <NavigationItem::Items NavigationItem::*Member>
NSArray NavigationItem::all() const {
  return array_of(this->*Member);
}
template <NavigationItem::Items NavigationItem::*Member>
void NavigationItem::setAll(const NSArray& items) {
  set<Member>(objects_of<UIBarButtonItem>(items));
}

void define_navigation_item() {
  objc::Class<UIBarButtonItem>::implemented_by<BarButtonItem>()
      .initializer<"initWithTitle:style:target:action:", &BarButtonItem::initWithTitle>()
      .initializer<"initWithImage:style:target:action:", &BarButtonItem::initWithImage>()
      .initializer<"initWithCustomView:", &BarButtonItem::initWithCustomView>()
      .initializer<"initWithBarButtonSystemItem:target:action:", &BarButtonItem::initWithSystemItem>()
      .property<"title", "setTitle:", &BarButtonItem::title_>()
      .property<"image", "setImage:", &BarButtonItem::image_>()
      .getter<"style", &BarButtonItem::style_>()
      .getter<"customView", &BarButtonItem::custom_view_>()
      .property<"isEnabled", "setEnabled:", &BarButtonItem::enabled_>()
      .property<"tintColor", "setTintColor:", &BarButtonItem::tint_>()
      .method<"target", &BarButtonItem::target>()
      .getter<"action", &BarButtonItem::action_>()
      .register_class();
  using N = NavigationItem;
  constexpr auto kLeft = &N::left_;
  constexpr auto kRight = &N::right_;
  objc::Class<UINavigationItem>::implemented_by<N>()
      .initializer<"initWithTitle:", &N::initWithTitle>()
      .method<"title", &N::title>()
      .method<"setTitle:", &N::set<&N::title_, NSString>>()
      .method<"titleView", &N::titleView>()
      .method<"setTitleView:", &N::setTitleView>()
      .method<"backButtonTitle", &N::backButtonTitle>()
      .method<"setBackButtonTitle:", &N::set<&N::back_title_, NSString>>()
      .method<"hidesBackButton", &N::hidesBackButton>()
      .method<"setHidesBackButton:", &N::set<&N::hides_back_button_, bool>>()
      .method<"setHidesBackButton:animated:", &N::setHidesBackButton>()
      .method<"largeTitleDisplayMode", &N::large_title_mode>()
      .method<"setLargeTitleDisplayMode:",
              &N::set<&N::large_title_mode_, UINavigationItemLargeTitleDisplayMode>>()
      .method<"leftBarButtonItem", &N::first<kLeft>>()
      .method<"setLeftBarButtonItem:", &N::setFirst<kLeft>>()
      .method<"setLeftBarButtonItem:animated:", &N::setFirstAnimated<kLeft>>()
      .method<"leftBarButtonItems", &N::all<kLeft>>()
      .method<"setLeftBarButtonItems:", &N::setAll<kLeft>>()
      .method<"rightBarButtonItem", &N::first<kRight>>()
      .method<"setRightBarButtonItem:", &N::setFirst<kRight>>()
      .method<"setRightBarButtonItem:animated:", &N::setFirstAnimated<kRight>>()
      .method<"rightBarButtonItems", &N::all<kRight>>()
      .method<"setRightBarButtonItems:", &N::setAll<kRight>>()
      .method<"navigationBar", &N::bar>()
      .register_class();
}

}  // namespace wispen::uikit
