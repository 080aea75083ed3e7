// host/uikit/controllers/navigation_bar.hpp: UINavigationBar: title, way back and buttons at the top of a
// page.
#pragma once

#include <vector>

#include "host/uikit/controllers/navigation_item.hpp"
#include "host/uikit/views/view.hpp"

namespace wispen::uikit {

struct NavigationBarState;

/// The host's UINavigationBar. It shows the last of its items, with the way back to the one before.
class NavigationBar : public objc::Authored<NavigationBar, View> {
 public:
  static constexpr objc::FixedString kClass{"UINavigationBar"};
  using Authored::Authored;

  static void define();
  NavigationBarState& bar() const;

  /// Points, without the status bar and without a large title.
  static double row_height();
  /// What a large title adds.
  static constexpr double kLargeTitleHeight = 52;
  bool shows_large_title() const;

  void set_items(std::vector<NavigationItem> items, bool animated) const;
  void item_changed(const NavigationItem& item) const;
  /// Who is told of a tap on the way back: it answers `_goBack`.
  void set_back_target(const NSObject& target) const;
  /// How far the content has gone up under the bar: 0 at the top. A large title gives way, and then the
  /// bar's background comes in.
  void set_content_scrolled(double distance) const;

 private:
  friend struct NavigationBarMethods;
};

}  // namespace wispen::uikit
