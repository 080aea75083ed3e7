// host/uikit/events/focus.cpp: which view the keyboard is talking to, where it is not a text field.

#include "host/uikit/events/focus.hpp"

#include <algorithm>

#include "host/uikit/controllers/view_controller.hpp"
#include "host/uikit/painting/focus_ring.hpp"
#include "host/uikit/views/application.hpp"
#include "host/uikit/views/view_state.hpp"

namespace wispen::uikit {

namespace {

struct Focus {
  objc::Weak<View> place;
  bool resting = false;
};

Focus& slot() {
  static Focus focused;
  return focused;
}

View remembered_view() {
  View view = slot().place.lock();
  return view && view.window() ? view : View();
}

void show_change(const View& changed) {
  if (const Window window = changed.window()) {
    window.add_damage(
        changed.convertRectToView(changed.bounds().inset(-kFocusRingReach, -kFocusRingReach), window));
  }
}

void collect(const View& view, std::vector<View>& all) {
  const ViewState& state = view.parts();
  if (state.hidden || !state.interaction || state.alpha < 0.01) return;
  if (objc::responds_to(view, objc::selector<"canBecomeFocused">()) &&
      objc::send<"canBecomeFocused", bool>(view)) {
    all.push_back(view);
  }
  // By place, not by the order in which views were added: a reader goes from the top down.
  std::vector<View> inside = view.subviews();
  std::ranges::stable_sort(inside, {}, [](const View& subview) { return subview.frame().min_y(); });
  for (const View& subview : inside) collect(subview, all);
}

}  // namespace

View focused_view() { return slot().resting ? View() : remembered_view(); }

void rest_focus() {
  const View old = focused_view();
  slot().resting = true;
  if (old) show_change(old);
}

void focus(const View& view) {
  const View old = focused_view();
  if (old == view) return;
  slot().place = view;
  slot().resting = false;
  for (const View& changed : {old, view}) {
    if (changed) show_change(changed);
  }
  for (View above = view; above; above = above.superview()) {
    if (!objc::responds_to(above, objc::selector<"_revealFocusedView:">())) continue;
    objc::send<"_revealFocusedView:">(above, view);
    break;
  }
}

std::vector<View> focusable_views() {
  std::vector<View> all;
  const std::vector<Window> windows = Application::shared().windows();
  for (auto window = windows.rbegin(); window != windows.rend() && all.empty(); ++window) {
    // What a sheet or an alert covers cannot be reached.
    View top = *window;
    const ViewController root = window->rootViewController();
    ViewController shown = root;
    while (shown && shown.presented()) shown = shown.presented();
    if (shown != root) top = shown.view_if_loaded();
    if (top) collect(top, all);
  }
  return all;
}

bool move_focus(bool forward) {
  const std::vector<View> all = focusable_views();
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
