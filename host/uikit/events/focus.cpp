// host/uikit/events/focus.cpp: which view the keyboard is talking to, where it is not a text field.

#include "host/uikit/events/focus.hpp"

#include <algorithm>

#include "host/uikit/controllers/view_controller.hpp"
#include "host/uikit/views/application.hpp"
#include "host/uikit/views/view_state.hpp"

namespace wispen::uikit {

namespace {

objc::Weak<View>& slot() {
  static objc::Weak<View> focused;
  return focused;
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

View focused_view() {
  View view = slot().lock();
  return view && view.window() ? view : View();
}

void focus(const View& view) {
  const View old = focused_view();
  if (old == view) return;
  slot() = view;
  for (const View& changed : {old, view}) {
    if (const Window window = changed.window()) {
      constexpr double kRing = 6;
      window.add_damage(changed.convertRectToView(changed.bounds().inset(-kRing, -kRing), window));
    }
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
  const auto here = std::ranges::find(all, focused_view());
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
