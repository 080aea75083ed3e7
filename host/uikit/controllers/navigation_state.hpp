// host/uikit/controllers/navigation_state.hpp: what a navigation controller keeps.
#pragma once

#include <memory>
#include <vector>

#include "host/uikit/controllers/navigation_controller.hpp"
#include "host/uikit/events/gesture_recognizer.hpp"

namespace wispen::uikit {

/// One change of the page that is seen.
struct Transition {
  ViewController from;
  ViewController to;
  bool back = false;
  View dim;
  bool finished = false;
};

struct NavigationState {
  std::vector<ViewController> stack;
  NavigationBar bar;
  View container;
  std::shared_ptr<Transition> transition;
  ScreenEdgePanGestureRecognizer edge_pan;
  std::vector<ViewController> before_way_back;  // the stack, while a finger leads back
  bool bar_hidden = false;
  objc::Weak<NSObject> delegate;
};

}  // namespace wispen::uikit
