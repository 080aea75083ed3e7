// host/uikit/view/view.cpp: UIView in its hierarchy, and its look.

#include "host/uikit/view/view.hpp"

#include <algorithm>
#include <utility>

#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/view/events/gesture_recognizer.hpp"
#include "host/uikit/view/hooks.hpp"
#include "host/uikit/view/layer.hpp"
#include "host/uikit/view/layout/layout_constraint.hpp"
#include "host/uikit/view/layout/layout_system.hpp"
#include "host/uikit/view/painting/damage.hpp"
#include "host/uikit/view/window.hpp"

namespace wispen::uikit {

View::View() = default;

View::~View() {
  if (layer_) Layer::of(layer_).detach();
  if (AnimationEngine* const engine = AnimationEngine::current()) engine->forget(self());
  for (const UIGestureRecognizer& recognizer : recognizers_)
    GestureRecognizer::of(recognizer).set_view(UIView());
  for (const UIView& subview : subviews_) {
    of(subview).superview_ = objc::Unowned<UIView>();
    of(subview).set_window(UIView());
  }
  for (const NSLayoutConstraint& constraint : constraints_) LayoutConstraint::of(constraint).lose_holder();
}

UIView View::init(objc::Allocated<UIView> self) {
  return std::move(self).initialize<"initWithFrame:">(Rect{});
}

UIView View::initWithFrame(objc::Allocated<UIView> self, const Rect& frame) {
  UIView view = super_init<"init">(std::move(self));
  if (view) view.setFrame(frame);
  return view;
}

NSArray View::subviews_array() const {
  NSMutableArray all = NSMutableArray::array();
  for (const UIView& subview : subviews_) all.addObject(subview);
  return all;
}

void View::set_controller(const UIViewController& controller) {
  controller_ = objc::Unowned<UIViewController>(controller);
}

UIViewController View::view_controller_for_ancestor() const {
  for (UIView view = self(); view; view = of(view).superview()) {
    if (UIViewController controller = of(view).controller()) return controller;
  }
  return UIViewController();
}

UIResponder View::nextResponder() const {
  if (UIViewController own = controller()) return own;
  return superview();
}

bool View::becomeFirstResponder() { return window() ? super<"becomeFirstResponder", bool>() : false; }

void View::set_window(const UIView& window) {
  if (window_.refers_to(window)) return;
  objc::send<"willMoveToWindow:">(self(), window);
  window_ = objc::Unowned<UIView>(window);
  if (window) mark_for_layout();
  for (const UIView& subview : std::vector<UIView>(subviews_)) of(subview).set_window(window);
  objc::send<"didMoveToWindow">(self());
}

void View::move_to(const UIView& superview, const std::function<void()>& change) {
  const UIView kept = self();
  objc::send<"willMoveToSuperview:">(kept, superview);
  if (const UIView old = this->superview()) {
    leave_picture(kept);
    objc::send<"willRemoveSubview:">(old, kept);
    LayoutSystem::drop_crossing_constraints(kept);
    auto& siblings = of(old).subviews_;
    siblings.erase(std::ranges::find(siblings, kept));
    superview_ = objc::Unowned<UIView>();
    LayoutSystem::invalidate(old);
    if (old != superview) of(old).setNeedsLayout();
  }
  change();
  const bool is_window = objc::cast_or_nil<UIWindow>(superview) ? true : false;
  set_window(is_window ? superview : superview ? of(superview).window() : UIView());
  if (superview) {
    objc::send<"didAddSubview:">(superview, kept);
    LayoutSystem::invalidate(superview);
    of(superview).setNeedsLayout();
    // Through its own flag: a view that asked for layout while it stood alone is reached again.
    setNeedsLayout();
    geometry_changed();
    if (!tint_) tint_changed();
  }
  objc::send<"didMoveToSuperview">(kept);
}

void View::insertSubviewAtIndex(const UIView& view, NSInteger index) {
  if (!view || view == self() || isDescendantOfView(view)) return;
  const UIView kept = self();
  of(view).move_to(kept, [&] {
    const auto place = std::clamp<NSInteger>(index, 0, static_cast<NSInteger>(subviews_.size()));
    subviews_.insert(subviews_.begin() + place, view);
    of(view).superview_ = objc::Unowned<UIView>(kept);
  });
}

void View::insert_beside(const UIView& view, const UIView& sibling, NSInteger after) {
  if (view == sibling) return;
  if (view && of(view).superview() == self()) of(view).removeFromSuperview();
  const auto found = std::ranges::find(subviews_, sibling);
  if (found == subviews_.end()) return addSubview(view);
  insertSubviewAtIndex(view, found - subviews_.begin() + after);
}

void View::addSubview(const UIView& view) {
  insertSubviewAtIndex(view, static_cast<NSInteger>(subviews_.size()));
}

void View::bringToFront(const UIView& view) {
  if (View::of(view).superview() == self()) addSubview(view);
}

void View::sendToBack(const UIView& view) {
  if (View::of(view).superview() == self()) insertSubviewAtIndex(view, 0);
}

void View::removeFromSuperview() {
  if (!superview()) return;
  const UIView kept = self();
  move_to(UIView(), [] {});
}

bool View::isDescendantOfView(const UIView& other) const {
  for (UIView view = self(); view; view = of(view).superview()) {
    if (view == other) return true;
  }
  return false;
}

UIView View::viewWithTag(NSInteger tag) const {
  if (tag_ == tag) return self();
  for (const UIView& subview : subviews_) {
    if (UIView found = of(subview).viewWithTag(tag)) return found;
  }
  return UIView();
}

void View::setClipsToBounds(bool clips) {
  if (std::exchange(clips_, clips) != clips) look_changed_inside();
}

void View::setContentMode(UIViewContentMode mode) {
  if (mode < UIViewContentMode::ScaleToFill || mode > UIViewContentMode::BottomRight) return;
  const auto wanted = static_cast<ContentMode>(mode);
  if (std::exchange(content_mode_, wanted) == wanted) return;
  geometry_changed();  // what it shows may reach elsewhere out of it
  setNeedsDisplay();
}

void View::setHidden(bool hidden) {
  if (std::exchange(hidden_, hidden) == hidden) return;
  geometry_changed();
  if (const UIView above = superview()) LayoutSystem::invalidate(above);  // a stack view closes the gap
}

UIColor View::tintColor() const {
  for (UIView view = self(); view; view = of(view).superview()) {
    if (of(view).tint_) return of(view).tint_;
  }
  return UIColor::systemBlueColor();
}

void View::setTintColor(const UIColor& colour) {
  if (tint_ == colour) return;
  tint_ = colour;
  tint_changed();
}

void View::tint_changed() {
  objc::send<"tintColorDidChange">(self());
  setNeedsDisplay();
  for (const UIView& subview : std::vector<UIView>(subviews_)) {
    if (!of(subview).tint_) of(subview).tint_changed();
  }
}

CALayer View::layer() {
  if (!layer_) layer_ = Layer::made_for(self());
  return layer_;
}

UIUserInterfaceLayoutDirection View::layout_direction() const {
  using enum UISemanticContentAttribute;
  const bool turned = semantic_attribute_ == ForceRightToLeft ||
                      (semantic_attribute_ == Unspecified && display_settings().right_to_left);
  return turned ? UIUserInterfaceLayoutDirection::RightToLeft : UIUserInterfaceLayoutDirection::LeftToRight;
}

void View::setSemanticContentAttribute(UISemanticContentAttribute attribute) {
  semantic_attribute_ = attribute;
  setNeedsLayout();
  setNeedsDisplay();
}

void View::mark(bool PaintRecord::*what) {
  record_.*what = true;
  for (UIView above = superview(); above && !of(above).record_.inside; above = of(above).superview()) {
    of(above).record_.inside = true;
  }
}

void View::look_changed_inside() {
  mark(&PaintRecord::moved);
  mark(&PaintRecord::whole);
}

UIView View::hitTest(const Point& point, const NSObject& event) const {
  if (hidden_ || !interaction_ || alpha_ < 0.01) return UIView();
  if (!self().pointInside(point, event)) return UIView();
  const std::vector<UIView> inside = subviews_;
  for (std::size_t i = inside.size(); i-- > 0;) {
    if (UIView hit = inside[i].hitTest(convertPointToView(point, inside[i]), event)) return hit;
  }
  return self();
}

NSArray View::recognizers_array() const {
  NSMutableArray all = NSMutableArray::array();
  for (const UIGestureRecognizer& recognizer : recognizers_) all.addObject(recognizer);
  return all;
}

void View::addGestureRecognizer(const UIGestureRecognizer& recognizer) {
  if (!recognizer) return;
  if (const UIView old = recognizer.view()) old.removeGestureRecognizer(recognizer);
  recognizers_.push_back(recognizer);
  GestureRecognizer::of(recognizer).set_view(self());
}

void View::removeGestureRecognizer(const UIGestureRecognizer& recognizer) {
  if (std::erase(recognizers_, recognizer) > 0) GestureRecognizer::of(recognizer).set_view(UIView());
}

}  // namespace wispen::uikit
