// host/uikit/layout/layout_guide.cpp: UILayoutGuide: a rectangle that takes part in layout and is no view.

#include "host/uikit/layout/layout_guide.hpp"

#include <algorithm>

#include "host/uikit/layout/layout_anchor.hpp"
#include "host/uikit/layout/layout_system.hpp"
#include "host/uikit/views/view.hpp"
#include "host/uikit/views/view_state.hpp"

namespace wispen::uikit {

struct LayoutGuide::State {
  objc::Weak<View> owner;
  GuideKind kind = GuideKind::Free;
  Rect frame;
};

LayoutGuide::State& LayoutGuide::parts() const { return state<State>(); }
View LayoutGuide::owner() const { return parts().owner.lock(); }
void LayoutGuide::set_owner(const View& view) const { parts().owner = view; }
GuideKind LayoutGuide::kind() const { return parts().kind; }
void LayoutGuide::set_layout_frame(const Rect& frame) const { parts().frame = frame; }

LayoutGuide LayoutGuide::of(const View& view, GuideKind kind) {
  auto& guides = view.parts().guides;
  for (const NSObject& guide : guides) {
    if (guide.as<LayoutGuide>().kind() == kind) return guide.as<LayoutGuide>();
  }
  LayoutGuide guide = objc::make<LayoutGuide>();
  guide.parts().owner = view;
  guide.parts().kind = kind;
  guides.push_back(guide);
  return guide;
}

EdgeInsets LayoutGuide::insets() const {
  const View view = owner();
  if (!view || kind() == GuideKind::Free) return {};
  const EdgeInsets safe = view.safeAreaInsets();
  if (kind() == GuideKind::SafeArea) return safe;
  const EdgeInsets& margins = view.parts().layout_margins;
  return {safe.top + margins.top, safe.left + margins.left, safe.bottom + margins.bottom,
          safe.right + margins.right};
}

Rect LayoutGuide::layoutFrame() const {
  const View view = owner();
  if (!view || kind() == GuideKind::Free) return parts().frame;
  return view.bounds().inset(insets());
}

namespace {

void add_guide(const View& view, const LayoutGuide& guide) {
  guide.set_owner(view);
  view.parts().guides.push_back(guide);
}
void remove_guide(const View& view, const LayoutGuide& guide) {
  std::erase(view.parts().guides, guide);
  LayoutSystem::invalidate(view);
}

}  // namespace

void LayoutGuide::define() {
  objc::Class<LayoutGuide> guide;
  guide.state<State>()
      .method<"owningView", &LayoutGuide::owner>()
      .method<"layoutFrame", &LayoutGuide::layoutFrame>();
  add_anchors(guide);
  guide.register_class();
  objc::Category<View>()
      .method<"addLayoutGuide:", &add_guide>()
      .method<"removeLayoutGuide:", &remove_guide>();
}

}  // namespace wispen::uikit
