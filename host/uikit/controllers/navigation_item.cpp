// host/uikit/controllers/navigation_item.cpp: UINavigationItem and UIBarButtonItem: what a page puts in the
// bar.

#include "host/uikit/controllers/navigation_item.hpp"

#include "host/uikit/controllers/navigation_bar.hpp"

namespace wispen::uikit {

struct BarButtonItemMethods {
  using Self = BarButtonItem;
  static Self with(objc::Allocated<Self> self, NSInteger style, const NSObject& target,
                   objc::Selector action) {
    Self item = std::move(self).initialize_super<"init">();
    if (!item) return item;
    item.parts().style = style;
    item.parts().target = target;
    item.parts().action = action;
    return item;
  }
  static Self initWithTitle(objc::Allocated<Self> self, const NSString& title, NSInteger style,
                            const NSObject& target, objc::Selector action) {
    Self item = with(std::move(self), style, target, action);
    if (item) item.parts().title = title;
    return item;
  }
  static Self initWithImage(objc::Allocated<Self> self, const UIImage& image, NSInteger style,
                            const NSObject& target, objc::Selector action) {
    Self item = with(std::move(self), style, target, action);
    if (item) item.parts().image = image;
    return item;
  }
  static Self initWithCustomView(objc::Allocated<Self> self, const View& view) {
    Self item = with(std::move(self), 0, NSObject(), objc::Selector());
    if (item) item.parts().custom_view = view;
    return item;
  }
  static Self initWithSystemItem(objc::Allocated<Self> self, NSInteger system, const NSObject& target,
                                 objc::Selector action) {
    // The platform's first items are words: done, cancel, edit, save; others are shown by their number.
    static constexpr const char* kWords[] = {"Done", "Cancel", "Edit", "Save"};
    Self item = with(std::move(self), system == 0 ? 2 : 0, target, action);
    if (item && system >= 0 && system < 4) item.parts().title = NSString(kWords[system]);
    return item;
  }
  static NSString title(const Self& self) { return self.parts().title; }
  static void setTitle(const Self& self, const NSString& title) { self.parts().title = title; }
  static UIImage image(const Self& self) { return self.parts().image; }
  static void setImage(const Self& self, const UIImage& image) { self.parts().image = image; }
  static View customView(const Self& self) { return self.parts().custom_view; }
  static bool isEnabled(const Self& self) { return self.parts().enabled; }
  static void setEnabled(const Self& self, bool enabled) { self.parts().enabled = enabled; }
  static UIColor tintColor(const Self& self) { return self.parts().tint; }
  static void setTintColor(const Self& self, const UIColor& tint) { self.parts().tint = tint; }
  static NSObject target(const Self& self) { return self.parts().target.lock(); }
  static objc::Selector action(const Self& self) { return self.parts().action; }
};

void BarButtonItem::define() {
  using M = BarButtonItemMethods;
  objc::Class<BarButtonItem>()
      .state<BarButtonItemState>()
      .initializer<"initWithTitle:style:target:action:", &M::initWithTitle>()
      .initializer<"initWithImage:style:target:action:", &M::initWithImage>()
      .initializer<"initWithCustomView:", &M::initWithCustomView>()
      .initializer<"initWithBarButtonSystemItem:target:action:", &M::initWithSystemItem>()
      .method<"title", &M::title>()
      .method<"setTitle:", &M::setTitle>()
      .method<"image", &M::image>()
      .method<"setImage:", &M::setImage>()
      .method<"customView", &M::customView>()
      .method<"isEnabled", &M::isEnabled>()
      .method<"setEnabled:", &M::setEnabled>()
      .method<"tintColor", &M::tintColor>()
      .method<"setTintColor:", &M::setTintColor>()
      .method<"target", &M::target>()
      .method<"action", &M::action>()
      .register_class();
}

NavigationItem NavigationItem::make(const NSString& title) {
  return alloc().initialize<"initWithTitle:">(title);
}

void NavigationItem::set_bar(const View& bar) const { parts().bar = objc::Unowned<View>(bar); }
NavigationBar NavigationItem::bar() const { return parts().bar.get().as<NavigationBar>(); }

struct NavigationItemMethods {
  using Self = NavigationItem;
  static Self initWithTitle(objc::Allocated<Self> self, const NSString& title) {
    Self item = std::move(self).initialize_super<"init">();
    if (item) item.parts().title = title;
    return item;
  }
  static void changed(const Self& self) {
    if (const NavigationBar bar = self.bar()) bar.item_changed(self);
  }
  static NSString title(const Self& self) { return self.parts().title; }
  static void setTitle(const Self& self, const NSString& title) {
    self.parts().title = title;
    changed(self);
  }
  static View titleView(const Self& self) { return self.parts().title_view; }
  static void setTitleView(const Self& self, const View& view) {
    if (self.parts().title_view == view) return;
    const View old = std::exchange(self.parts().title_view, view);
    old ? old.removeFromSuperview() : void();
    changed(self);
  }
  static NSString backButtonTitle(const Self& self) { return self.parts().back_title; }
  static void setBackButtonTitle(const Self& self, const NSString& title) {
    self.parts().back_title = title;
    changed(self);
  }
  static bool hidesBackButton(const Self& self) { return self.parts().hides_back_button; }
  static void setHidesBackButton(const Self& self, bool hides) {
    self.parts().hides_back_button = hides;
    changed(self);
  }
  static void setHidesBackButtonAnimated(const Self& self, bool hides, bool) {
    setHidesBackButton(self, hides);
  }
  static NSInteger largeTitleMode(const Self& self) { return self.parts().large_title_mode; }
  static void setLargeTitleMode(const Self& self, NSInteger mode) {
    self.parts().large_title_mode = mode;
    changed(self);
  }

  template <auto Member>
  static BarButtonItem one(const Self& self) {
    const auto& items = self.parts().*Member;
    return items.empty() ? BarButtonItem() : items.front();
  }
  template <auto Member>
  static void setOne(const Self& self, const BarButtonItem& item) {
    auto& items = self.parts().*Member;
    items.clear();
    if (item) items.push_back(item);
    changed(self);
  }
  template <auto Member>
  static void setOneAnimated(const Self& self, const BarButtonItem& item, bool) {
    setOne<Member>(self, item);
  }
  template <auto Member>
  static NSArray all(const Self& self) {
    NSMutableArray items = NSMutableArray::array();
    for (const BarButtonItem& item : self.parts().*Member) items.addObject(item);
    return items;
  }
  template <auto Member>
  static void setAll(const Self& self, const NSArray& items) {
    auto& own = self.parts().*Member;
    own.clear();
    for (NSUInteger i = 0, count = items.count(); i < count; ++i) {
      own.push_back(items.objectAtIndex<BarButtonItem>(i));
    }
    changed(self);
  }
};

void NavigationItem::define() {
  using M = NavigationItemMethods;
  constexpr auto kLeft = &NavigationItemState::left;
  constexpr auto kRight = &NavigationItemState::right;
  objc::Class<NavigationItem>()
      .state<NavigationItemState>()
      .initializer<"initWithTitle:", &M::initWithTitle>()
      .method<"title", &M::title>()
      .method<"setTitle:", &M::setTitle>()
      .method<"titleView", &M::titleView>()
      .method<"setTitleView:", &M::setTitleView>()
      .method<"backButtonTitle", &M::backButtonTitle>()
      .method<"setBackButtonTitle:", &M::setBackButtonTitle>()
      .method<"hidesBackButton", &M::hidesBackButton>()
      .method<"setHidesBackButton:", &M::setHidesBackButton>()
      .method<"setHidesBackButton:animated:", &M::setHidesBackButtonAnimated>()
      .method<"largeTitleDisplayMode", &M::largeTitleMode>()
      .method<"setLargeTitleDisplayMode:", &M::setLargeTitleMode>()
      .method<"leftBarButtonItem", &M::one<kLeft>>()
      .method<"setLeftBarButtonItem:", &M::setOne<kLeft>>()
      .method<"setLeftBarButtonItem:animated:", &M::setOneAnimated<kLeft>>()
      .method<"leftBarButtonItems", &M::all<kLeft>>()
      .method<"setLeftBarButtonItems:", &M::setAll<kLeft>>()
      .method<"rightBarButtonItem", &M::one<kRight>>()
      .method<"setRightBarButtonItem:", &M::setOne<kRight>>()
      .method<"setRightBarButtonItem:animated:", &M::setOneAnimated<kRight>>()
      .method<"rightBarButtonItems", &M::all<kRight>>()
      .method<"setRightBarButtonItems:", &M::setAll<kRight>>()
      .method<"navigationBar", &NavigationItem::bar>()
      .register_class();
}

}  // namespace wispen::uikit
