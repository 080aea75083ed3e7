// host/uikit/view/layout/layout_guide.cpp: UILayoutGuide: a rectangle that takes part in layout and is not a
// view.

#include "host/uikit/view/layout/layout_guide.hpp"

#include <algorithm>

#include "host/uikit/view/layout/layout_anchor.hpp"
#include "host/uikit/view/layout/layout_system.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

UILayoutGuide LayoutGuide::guide_of(const UIView& view, GuideKind kind) {
  auto& guides = View::of(view).guides();
  for (const NSObject& guide : guides) {
    if (of(guide.as<UILayoutGuide>()).kind() == kind) return guide.as<UILayoutGuide>();
  }
  UILayoutGuide guide = objc::make<UILayoutGuide>();
  of(guide).owner_ = view;
  of(guide).kind_ = kind;
  guides.push_back(guide);
  return guide;
}

EdgeInsets LayoutGuide::insets() const {
  const UIView view = owner();
  if (!view || kind_ == GuideKind::Free) return {};
  const EdgeInsets safe = view.safeAreaInsets();
  if (kind_ == GuideKind::SafeArea) return safe;
  const EdgeInsets margins = View::of(view).layoutMargins();
  return {safe.top + margins.top, safe.left + margins.left, safe.bottom + margins.bottom,
          safe.right + margins.right};
}

Rect LayoutGuide::layoutFrame() const {
  const UIView view = owner();
  if (!view || kind_ == GuideKind::Free) return frame_;
  return View::of(view).bounds().inset(insets());
}

namespace {

void add_guide(const UIView& view, const UILayoutGuide& guide) {
  LayoutGuide::of(guide).set_owner(view);
  View::of(view).guides().push_back(guide);
}
void remove_guide(const UIView& view, const UILayoutGuide& guide) {
  std::erase(View::of(view).guides(), guide);
  LayoutSystem::invalidate(view);
}

}  // namespace

void define_layout_guide() {
  auto guide = objc::Class<UILayoutGuide>::implemented_by<LayoutGuide>();
  guide.method<"owningView", &LayoutGuide::owner>().method<"layoutFrame", &LayoutGuide::layoutFrame>();
  add_anchors(guide);
  guide.register_class();
  objc::Category<UIView>()
      .method<"addLayoutGuide:", &add_guide>()
      .method<"removeLayoutGuide:", &remove_guide>();
}

}  // namespace wispen::uikit
