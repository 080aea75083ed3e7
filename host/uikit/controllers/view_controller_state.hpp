// host/uikit/controllers/view_controller_state.hpp: what a view controller knows of itself.
#pragma once

#include <memory>
#include <vector>

#include "host/uikit/controllers/navigation_item.hpp"
#include "host/uikit/controllers/view_controller.hpp"

namespace wispen::uikit {

enum class Appearing { Disappeared, Appearing, Appeared, Disappearing };

struct ViewControllerState {
  ViewControllerState();
  ~ViewControllerState();

  View view;
  bool loading = false;
  NSString title;
  NavigationItem navigation_item;
  objc::Unowned<ViewController> parent;  // it owns this one, and clears this when it lets go
  std::vector<ViewController> children;
  Appearing appearing = Appearing::Disappeared;
  bool moving_to_parent = false;
  bool moving_from_parent = false;
  EdgeInsets additional_safe_area;
  Size preferred_content_size;
  NSInteger modal_style = modal_style::kAutomatic;
  NSInteger modal_transition = 0;
  bool modal_in_presentation = false;

  ViewController presented;                    // owned while it is shown
  objc::Unowned<ViewController> presenting;    // it owns this one
  std::unique_ptr<Presentation> presentation;  // of `presented`
  bool being_presented = false;
  bool being_dismissed = false;
};

}  // namespace wispen::uikit
