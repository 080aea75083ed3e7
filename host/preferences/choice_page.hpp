// host/preferences/choice_page.hpp: PSListItemsController: the page on which one of a row's values is chosen.
#pragma once

#include "host/preferences/list_controller.hpp"

namespace wispen::preferences {

/// The host's PSListItemsController. It lists the values of the row that opened it, ticks the one that the
/// row has, and gives a chosen one to the row's setter.
class ChoicePage : public objc::Authored<ChoicePage, ListController> {
 public:
  static constexpr objc::FixedString kClass{"PSListItemsController"};
  using Authored::Authored;
  static void define();
};

}  // namespace wispen::preferences
