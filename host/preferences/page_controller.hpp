// host/preferences/page_controller.hpp: PSViewController: a page of Settings, whatever it shows.
#pragma once

#include "host/preferences/specifier.hpp"
#include "host/uikit/controllers/view_controller.hpp"

namespace wispen::preferences {

struct PageControllerState {
  PSSpecifier specifier;
  objc::Weak<NSObject> parent;
  objc::Weak<NSObject> root;
};

/// The host's PSViewController: it knows the row that opened it, the page which that row is on, and the
/// default value store.
class PageController : public objc::Authored<PageController, uikit::ViewController> {
 public:
  static constexpr objc::FixedString kClass{"PSViewController"};
  using Authored::Authored;

  static void define();

  /// The row that opened the page, whose name becomes the page's title.
  PSSpecifier specifier() const { return parts().specifier; }
  void setSpecifier(const PSSpecifier& specifier) const;
  NSObject parent_page() const { return parts().parent.lock(); }
  void set_parent_page(const NSObject& page) const { parts().parent = page; }
  /// The navigation controller that shows the pages.
  NSObject root() const { return parts().root.lock(); }
  void set_root(const NSObject& root) const { parts().root = root; }

  /// Opens another page on top of this one; without a navigation controller nothing happens.
  void push(const uikit::ViewController& page, bool animated) const;

  /// The default store, for pages that bring none: the row's "key" in the file of its "defaults" below the
  /// device's own Library/Preferences, else its "default".
  NSObject readPreferenceValue(const PSSpecifier& specifier) const;
  void setPreferenceValue(const NSObject& value, const PSSpecifier& specifier) const;

 private:
  PageControllerState& parts() const { return state<PageControllerState>(); }
};

}  // namespace wispen::preferences
