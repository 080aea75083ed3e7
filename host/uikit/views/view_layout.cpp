// host/uikit/views/view_layout.cpp: when views are laid out, and how large they want to be.

#include "host/uikit/layout/layout_system.hpp"
#include "host/uikit/views/view.hpp"
#include "host/uikit/views/view_state.hpp"

namespace wispen::uikit {

namespace {

// A view that asks for layout again from inside its own layout gets it, but not for ever.
constexpr int kMostPasses = 8;

void lay_out(const View& view) {
  ViewState& state = view.parts();
  if (!state.needs_layout && !state.subtree_needs_layout) return;
  for (int pass = 0; state.needs_layout && pass < kMostPasses; ++pass) {
    state.needs_layout = false;
    const Responder controller = view.controller();
    objc::send<"viewWillLayoutSubviews">(controller);
    objc::send<"layoutSubviews">(view);
    objc::send<"viewDidLayoutSubviews">(controller);
  }
  state.subtree_needs_layout = false;
  for (const View& subview : view.subviews()) lay_out(subview);
}

}  // namespace

void View::setNeedsLayout() const {
  parts().needs_layout = true;
  for (View above = superview(); above && !above.parts().subtree_needs_layout; above = above.superview()) {
    above.parts().subtree_needs_layout = true;
  }
}

void View::layoutIfNeeded() const {
  const View kept = *this;
  // Constraints that reach in from outside decide this view's own size, so they are solved first.
  const View root = LayoutSystem::root_of(kept);
  if (root != kept && root.parts().needs_layout) lay_out(root);
  lay_out(kept);
}

void View::setAutoresizingMask(NSUInteger mask) const {
  parts().autoresizing_mask = static_cast<unsigned>(mask & 63);
}

bool View::translatesAutoresizingMask() const { return parts().translates_mask; }

void View::setTranslatesAutoresizingMask(bool translates) const {
  if (parts().translates_mask == translates) return;
  LayoutSystem::invalidate(*this);
  parts().translates_mask = translates;
  LayoutSystem::invalidate(*this);
}

void View::invalidateIntrinsicContentSize() const { LayoutSystem::content_changed(*this); }

Size View::systemLayoutSizeFittingSize(const Size& target) const {
  constexpr float kFittingSizeLevel = 50;
  return systemLayoutSizeFitting(target, kFittingSizeLevel, kFittingSizeLevel);
}

Size View::systemLayoutSizeFitting(const Size& target, float across, float down) const {
  return LayoutSystem::fitting_size(*this, target, across, down);
}

}  // namespace wispen::uikit
