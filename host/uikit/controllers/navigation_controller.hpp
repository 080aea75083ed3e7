// host/uikit/controllers/navigation_controller.hpp: UINavigationController: a stack of pages, one of them
// seen.
#pragma once

#include <vector>

#include "host/uikit/controllers/navigation_bar.hpp"
#include "host/uikit/controllers/view_controller.hpp"

namespace wispen::uikit {

struct NavigationState;

class NavigationController : public objc::Authored<NavigationController, ViewController> {
 public:
  static constexpr objc::FixedString kClass{"UINavigationController"};
  using Authored::Authored;

  static void define();
  NavigationState& navigation() const;
  static NavigationController with_root(const ViewController& root);

  NavigationBar bar() const;
  const std::vector<ViewController>& stack() const;
  ViewController top() const;
  void push(const ViewController& controller, bool animated) const;
  /// Nil where only the root is left.
  ViewController pop(bool animated) const;
  NSArray pop_to(const ViewController& controller, bool animated) const;
  void set_stack(std::vector<ViewController> controllers, bool animated) const;
};

}  // namespace wispen::uikit
