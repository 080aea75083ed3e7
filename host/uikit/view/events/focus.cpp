// host/uikit/view/events/focus.cpp: which view the keyboard is talking to, where it is not a text field.

#include "host/uikit/view/events/focus.hpp"

#include <algorithm>

#include "host/uikit/view/application.hpp"
#include "host/uikit/view/hooks.hpp"
#include "host/uikit/view/painting/focus_ring.hpp"
#include "host/uikit/view/view.hpp"
#include "host/uikit/view/window.hpp"

namespace wispen::uikit {

namespace {

struct Focus {
  objc::Weak<UIView> view;
  bool resting = false;
};

Focus& slot() {
  static Focus focused;
  return focused;
}

UIView remembered_view() {
  UIView view = slot().view.lock();
  return view && view.window() ? view : UIView();
}

void show_change(const UIView& changed) {
  if (const UIWindow window = changed.window()) {
    const Rect around = View::of(changed).bounds().inset(-kFocusRingReach, -kFocusRingReach);
    Window::of(window).add_damage(changed.convertRectToView(around, window));
  }
}

/// What of a window can be reached: a sheet or an alert covers the rest.
UIView reachable_part(const UIWindow& window) {
  const UIViewController root = window.rootViewController();
  UIViewController shown = root;
  while (shown && shown.presentedViewController()) shown = shown.presentedViewController();
  return shown != root ? shown.viewIfLoaded() : UIView(window);
}

void collect(const UIView& view, std::vector<UIView>& all) {
  const View& own = View::of(view);
  if (own.isHidden() || !own.isUserInteractionEnabled() || own.alpha() < kInvisibleAlpha) return;
  if (objc::responds_to(view, objc::selector<"canBecomeFocused">()) &&
      objc::send<"canBecomeFocused", bool>(view)) {
    all.push_back(view);
  }
  // By position, not by the order in which views were added: a reader goes from the top down.
  std::vector<UIView> inside = own.subviews();
  std::ranges::stable_sort(inside, {},
                           [](const UIView& subview) { return View::of(subview).frame().min_y(); });
  for (const UIView& subview : inside) collect(subview, all);
}

}  // namespace

UIView focused_view() {
  if (slot().resting) return UIView();
  UIView view = remembered_view();
  return view && view.isDescendantOfView(reachable_part(view.window())) ? view : UIView();
}

void rest_focus() {
  const UIView old = focused_view();
  slot().resting = true;
  if (old) show_change(old);
}

void focus(const UIView& view) {
  const UIView old = focused_view();
  if (old == view) return;
  slot().view = view;
  slot().resting = false;
  for (const UIView& changed : {old, view}) {
    if (changed) show_change(changed);
  }
  for (UIView above = view; above; above = View::of(above).superview()) {
    if (!objc::responds_to(above, objc::selector<hooks::kRevealFocusedView>())) continue;
    objc::send<hooks::kRevealFocusedView>(above, view);
    break;
  }
}

std::vector<UIView> focusable_views() {
  std::vector<UIView> all;
  const std::vector<UIWindow> windows = Application::shared().windows();
  for (auto window = windows.rbegin(); window != windows.rend() && all.empty(); ++window) {
    if (const UIView top = reachable_part(*window)) collect(top, all);
  }
  return all;
}

bool move_focus(bool forward) {
  const std::vector<UIView> all = focusable_views();
  if (all.empty()) return false;
  const auto here = std::ranges::find(all, remembered_view());
  if (here == all.end()) {
    focus(forward ? all.front() : all.back());
  } else if (forward) {
    focus(here + 1 == all.end() ? all.front() : *(here + 1));
  } else {
    focus(here == all.begin() ? all.back() : *(here - 1));
  }
  return true;
}

}  // namespace wispen::uikit
