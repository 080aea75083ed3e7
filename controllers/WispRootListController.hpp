// controllers/WispRootListController.hpp: the page that the bundle opens on.
#pragma once

#include "controllers/WispBaseController.hpp"

namespace wispen {

class WispRootListController : public objc::Authored<WispRootListController, WispBaseController> {
 public:
  static constexpr objc::FixedString kClass{"WispRootListController"};
  using Authored::Authored;

  static void define();

  /// The list "Root", filtered; built once, then kept until the framework drops it.
  NSMutableArray specifiers() const;
  void loadView() const;
  /// Leaving for the list of Settings gives the bar a fixed colour; opening a page below does not.
  void viewWillDisappear(bool animated) const;
};

}  // namespace wispen
