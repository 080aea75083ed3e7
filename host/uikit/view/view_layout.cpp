// host/uikit/view/view_layout.cpp: when views are laid out, and how large they want to be.

#include "host/uikit/view/layout/layout_constraint.hpp"
#include "host/uikit/view/layout/layout_system.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

namespace {

// A view that asks for layout again from inside its own layout gets it, but not for ever.
constexpr int kMostPasses = 8;

layout::Axis axis_of(UILayoutConstraintAxis axis) {
  return axis == UILayoutConstraintAxis::Horizontal ? layout::Axis::Horizontal : layout::Axis::Vertical;
}

}  // namespace

void View::lay_out() {
  if (!needs_layout_ && !subtree_needs_layout_) return;
  const UIView kept = self();
  for (int pass = 0; needs_layout_ && pass < kMostPasses; ++pass) {
    needs_layout_ = false;
    const UIViewController own = controller();
    objc::send<"viewWillLayoutSubviews">(own);
    objc::send<"layoutSubviews">(kept);
    objc::send<"viewDidLayoutSubviews">(own);
  }
  subtree_needs_layout_ = false;
  for (const UIView& subview : std::vector<UIView>(subviews_)) of(subview).lay_out();
}

void View::setNeedsLayout() {
  needs_layout_ = true;
  for (UIView above = superview(); above && !of(above).subtree_needs_layout_; above = of(above).superview()) {
    of(above).subtree_needs_layout_ = true;
  }
}

void View::layoutIfNeeded() {
  const UIView kept = self();
  // Constraints that reach in from outside decide this view's own size, so they are solved first.
  const UIView root = LayoutSystem::root_of(kept);
  if (root != kept && of(root).needs_layout_) of(root).lay_out();
  lay_out();
}

void View::layoutSubviews() { LayoutSystem::lay_out(self()); }

void View::setTranslatesAutoresizingMask(bool translates) {
  if (translates_mask_ == translates) return;
  LayoutSystem::invalidate(self());
  translates_mask_ = translates;
  LayoutSystem::invalidate(self());
}

void View::invalidateIntrinsicContentSize() { LayoutSystem::content_changed(self()); }

void View::setLayoutMargins(const EdgeInsets& margins) {
  layout_margins_ = margins;
  LayoutSystem::invalidate(self());
  setNeedsLayout();
}

float View::hugging(UILayoutConstraintAxis axis) const {
  return static_cast<float>(priorities(axis_of(axis)).hugging);
}
void View::setHugging(const float& value, UILayoutConstraintAxis axis) {
  content_priorities_[static_cast<int>(axis_of(axis))].hugging = value;
  LayoutSystem::invalidate(self());
}
float View::compression(UILayoutConstraintAxis axis) const {
  return static_cast<float>(priorities(axis_of(axis)).compression);
}
void View::setCompression(const float& value, UILayoutConstraintAxis axis) {
  content_priorities_[static_cast<int>(axis_of(axis))].compression = value;
  LayoutSystem::invalidate(self());
}

NSArray View::constraints_array() const {
  NSMutableArray all = NSMutableArray::array();
  for (const NSLayoutConstraint& constraint : constraints_) all.addObject(constraint);
  return all;
}
void View::activate(const UIView&, const NSLayoutConstraint& constraint) { constraint.setActive(true); }
void View::deactivate(const UIView&, const NSLayoutConstraint& constraint) { constraint.setActive(false); }
void View::activate_all(const UIView&, const NSArray& constraints) {
  NSLayoutConstraint::activateConstraints(constraints);
}
void View::deactivate_all(const UIView&, const NSArray& constraints) {
  NSLayoutConstraint::deactivateConstraints(constraints);
}

Size View::systemLayoutSizeFittingSize(const Size& target) const {
  constexpr float kFittingSizeLevel = 50;
  return systemLayoutSizeFitting(target, kFittingSizeLevel, kFittingSizeLevel);
}

Size View::systemLayoutSizeFitting(const Size& target, const float& across, const float& down) const {
  return LayoutSystem::fitting_size(self(), target, across, down);
}

}  // namespace wispen::uikit
