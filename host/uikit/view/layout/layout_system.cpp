// host/uikit/view/layout/layout_system.cpp: the constraints below one view, solved together.

#include "host/uikit/view/layout/layout_system.hpp"

#include <algorithm>
#include <cmath>

#include "host/foundation/problems.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/view/hooks.hpp"
#include "host/uikit/view/layout/layout_constraint.hpp"
#include "host/uikit/view/layout/layout_guide.hpp"
#include "host/uikit/view/layout/stack_view.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

using layout::Axis;
using layout::ItemId;
using layout::kNoItem;

UIView LayoutSystem::root_of(const UIView& view) {
  UIView root = view;
  while (!View::of(root).translatesAutoresizingMask()) {
    const UIView above = View::of(root).superview();
    if (!above) break;
    root = above;
  }
  return root;
}

LayoutSystem* LayoutSystem::of(const UIView& root) {
  auto& system = View::of(root).system();
  if (!system) system = std::make_unique<LayoutSystem>(root);
  return system.get();
}

LayoutSystem::LayoutSystem(const UIView& root) : root_(root) {
  gather(root);
  if (gathered_.empty() && stacks_.empty()) return;
  model_.set_direction(is_right_to_left(root) ? layout::Direction::RightToLeft
                                              : layout::Direction::LeftToRight);
  item_of(root);
  // What constraints name may lie behind views that keep their own frames: these come in on the way, with
  // the constraints that they hold.
  for (std::size_t i = 0; i < gathered_.size(); ++i) {  // NOLINT(modernize-loop-convert): it grows
    const NSLayoutConstraint constraint = gathered_[i];
    item_of(LayoutConstraint::of(constraint).first_item());
    if (const NSObject second = LayoutConstraint::of(constraint).second_item()) item_of(second);
  }
  for (auto& [owner, stack] : stacks_) {
    const UIView view = owner.get();
    const ItemId item = item_of(view);
    for (const UIView& arranged : StackView::of(view.as<UIStackView>()).arranged()) item_of(arranged);
    stack = std::make_unique<layout::Stack>(model_, item);
  }
  for (const NSLayoutConstraint& constraint : gathered_) enter_constraint(constraint);
  arrange_stacks();
}

void LayoutSystem::gather(const UIView& view) {
  if (!visited_.emplace(objc::borrow(view), true).second) return;
  View& own = View::of(view);
  for (const NSLayoutConstraint& constraint : own.constraints()) gathered_.push_back(constraint);
  if (objc::cast_or_nil<UIStackView>(view)) stacks_.emplace_back(objc::Unowned<UIView>(view), nullptr);
  for (const UIView& subview : own.subviews()) {
    if (!View::of(subview).translatesAutoresizingMask()) gather(subview);
  }
}

ItemId LayoutSystem::item_of(const NSObject& object) {
  if (!object) return kNoItem;
  const auto found = items_.find(objc::borrow(object));
  if (found != items_.end()) return found->second;
  if (const auto guide = objc::cast_or_nil<UILayoutGuide>(object)) return add_guide(guide);
  return add_view(object.as<UIView>());
}

ItemId LayoutSystem::add_view(const UIView& view) {
  const bool is_root = view == root();
  const UIView above = is_root ? UIView() : View::of(view).superview();
  if (!is_root && !above) return kNoItem;
  const ItemId parent = is_root ? kNoItem : item_of(above);
  const NSString identifier = View::of(view).accessibilityIdentifier();
  const ItemId item = model_.add_item(identifier ? identifier.utf8() : objc::class_of(view).name(), parent);
  items_.emplace(objc::borrow(view), item);
  // Not the root: it owns this, and would own itself.
  if (!is_root) members_.push_back({view, item});
  gather(view);
  View& own = View::of(view);
  if (is_root) {
    (void)model_.set_frame(item, {{0, 0}, own.bounds().size});
  } else if (own.translatesAutoresizingMask()) {
    (void)model_.set_frame(item, view.frame(), own.layout_mask(), above.bounds().size);
  } else {
    enter_content(view, item);
  }
  return item;
}

ItemId LayoutSystem::add_guide(const UILayoutGuide& guide) {
  const UIView owner = LayoutGuide::of(guide).owner();
  if (!owner) return kNoItem;
  const ItemId parent = item_of(owner);
  const ItemId item = model_.add_item("UILayoutGuide", parent);
  items_.emplace(objc::borrow(guide), item);
  members_.push_back({guide, item});
  if (LayoutGuide::of(guide).kind() == GuideKind::Free) return item;
  const EdgeInsets insets = LayoutGuide::of(guide).insets();
  using layout::Attribute;
  const auto pin = [&](Attribute edge, double distance) {
    (void)model_.add_constraint({.first = item,
                                 .first_attribute = edge,
                                 .second = parent,
                                 .second_attribute = edge,
                                 .constant = distance,
                                 .identifier = "guide"});
  };
  pin(Attribute::Top, insets.top);
  pin(Attribute::Left, insets.left);
  pin(Attribute::Bottom, -insets.bottom);
  pin(Attribute::Right, -insets.right);
  return item;
}

void LayoutSystem::enter_content(const UIView& view, ItemId item) {
  const Size size = view.intrinsicContentSize();
  const auto length = [](double value) { return value >= 0 ? std::optional<double>(value) : std::nullopt; };
  model_.set_intrinsic_size(item, length(size.width), length(size.height));
  for (const Axis axis : {Axis::Horizontal, Axis::Vertical}) {
    const ContentPriorities& priorities = View::of(view).priorities(axis);
    (void)model_.set_hugging(item, axis, priorities.hugging);
    (void)model_.set_compression_resistance(item, axis, priorities.compression);
  }
  const auto first = objc::send<hooks::kFirstBaseline, double>(view);
  const auto last = objc::send<hooks::kLastBaseline, double>(view);
  model_.set_baselines(item, first, last);
}

void LayoutSystem::enter_constraint(const NSLayoutConstraint& constraint) {
  layout::ConstraintSpec spec = LayoutConstraint::of(constraint).spec();
  spec.first = item_of(LayoutConstraint::of(constraint).first_item());
  spec.second = item_of(LayoutConstraint::of(constraint).second_item());
  if (spec.first == kNoItem) return;
  if (spec.second == kNoItem && spec.second_attribute != layout::Attribute::NotAnAttribute) return;
  const auto id = model_.add_constraint(spec);
  if (!id) {
    report_problem("the constraint " + constraint.description().utf8() +
                   " is not used: " + id.error().message);
    return;
  }
  constraints_.emplace_back(constraint, *id);
}

void LayoutSystem::arrange_stacks() {
  // Innermost first: a stack's share may depend on how large the stacks in it want to be.
  for (std::size_t i = stacks_.size(); i-- > 0;) {
    const StackView& stack = StackView::of(stacks_[i].first.get().as<UIStackView>());
    std::vector<layout::ArrangedItem> items;
    for (const UIView& arranged : stack.arranged()) {
      items.push_back({item_of(arranged), arranged.isHidden(), stack.spacing_after(arranged)});
    }
    stacks_[i].second->arrange(stack.style(), std::move(items));
  }
}

void LayoutSystem::report(const layout::LayoutReport& report) const {
  for (const layout::ConflictReport& conflict : report.conflicts) {
    report_problem("Unable to simultaneously satisfy constraints. " + conflict.message());
  }
}

bool LayoutSystem::fit_heights_to_widths() {
  bool changed = false;
  for (const Member& member : members_) {
    if (!objc::cast_or_nil<UIView>(member.object)) continue;
    if (!objc::send<hooks::kHeightDependsOnWidth, bool>(member.object)) continue;
    const double width = model_.frame(member.item).width();
    if (width <= 0) continue;
    const double height = member.object.as<UIView>().sizeThatFits(Size{width, 0}).height;
    const auto known = model_.intrinsic_length(member.item, Axis::Vertical);
    if (known && std::abs(*known - height) < 0.01) continue;
    model_.set_intrinsic_size(member.item, model_.intrinsic_length(member.item, Axis::Horizontal), height);
    changed = true;
  }
  return changed;
}

void LayoutSystem::solve() {
  report(model_.solve());
  // Once: a width that depends on a height that depends on the width has no end.
  if (fit_heights_to_widths()) report(model_.solve());
}

void LayoutSystem::apply() {
  for (const Member& member : members_) {
    const Rect frame = model_.frame(member.item, display_settings().scale);
    if (const auto guide = objc::cast_or_nil<UILayoutGuide>(member.object)) {
      LayoutGuide::of(guide).set_layout_frame(frame);
      continue;
    }
    const UIView view = member.object.as<UIView>();
    if (view == root() || View::of(view).translatesAutoresizingMask()) continue;
    Rect bounds = view.bounds();
    bounds.size = frame.size;
    view.setBounds(bounds);
    view.setCenter(Point{frame.mid_x(), frame.mid_y()});
  }
}

void LayoutSystem::lay_out(const UIView& view) {
  const UIView root = root_of(view);
  // Inside of a system the root has placed everything already.
  if (root != view && View::of(root).system() && !View::of(root).system()->empty()) return;
  LayoutSystem* const system = of(view);
  if (system->empty()) return;
  (void)system->model_.set_frame(system->item_of(view), {{0, 0}, view.bounds().size});
  for (const Member& member : system->members_) {
    const auto inner = objc::cast_or_nil<UIView>(member.object);
    if (!inner || inner == view || !View::of(inner).translatesAutoresizingMask()) continue;
    (void)system->model_.set_frame(member.item, inner.frame(), View::of(inner).layout_mask(),
                                   View::of(inner).superview().bounds().size);
  }
  system->solve();
  system->apply();
}

void LayoutSystem::invalidate(const UIView& view) {
  // Every view on the way may be the root of a system that reaches down to this one.
  bool first = true;
  for (UIView above = view; above; above = View::of(above).superview()) {
    if (View::of(above).system() || first || !View::of(above).constraints().empty()) {
      View::of(above).system().reset();
      above.setNeedsLayout();
    }
    first = false;
  }
  const UIView root = root_of(view);
  View::of(root).system().reset();
  root.setNeedsLayout();
}

void LayoutSystem::content_changed(const UIView& view) {
  const UIView root = root_of(view);
  LayoutSystem* const system = View::of(root).system().get();
  if (system != nullptr) {
    const auto found = system->items_.find(objc::borrow(view));
    if (found != system->items_.end()) {
      if (!View::of(view).translatesAutoresizingMask()) system->enter_content(view, found->second);
      const bool proportional = std::ranges::any_of(system->stacks_, [](const auto& stack) {
        return StackView::of(stack.first.get().template as<UIStackView>()).style().distribution ==
               layout::StackDistribution::FillProportionally;
      });
      if (proportional) View::of(root).system().reset();
    }
  }
  root.setNeedsLayout();
  // A self-sizing row above wants to know too.
  if (const UIView above = View::of(root).superview()) above.setNeedsLayout();
}

void LayoutSystem::constant_changed(const UIView& holder, const NSLayoutConstraint& constraint) {
  bool entered = false;
  for (UIView above = holder; above; above = View::of(above).superview()) {
    LayoutSystem* const system = View::of(above).system().get();
    if (system == nullptr) continue;
    for (const auto& [held, id] : system->constraints_) {
      if (held != constraint) continue;
      (void)system->model_.set_constant(id, constraint.constant());
      above.setNeedsLayout();
      entered = true;
    }
  }
  if (!entered) invalidate(holder);
}

void LayoutSystem::drop_crossing_constraints(const UIView& view) {
  const auto inside = [&](const NSObject& item) {
    auto owner = objc::cast_or_nil<UIView>(item);
    if (const auto guide = objc::cast_or_nil<UILayoutGuide>(item)) owner = LayoutGuide::of(guide).owner();
    return owner && owner.isDescendantOfView(view);
  };
  for (UIView above = View::of(view).superview(); above; above = View::of(above).superview()) {
    const std::vector<NSLayoutConstraint> held = View::of(above).constraints();
    for (const NSLayoutConstraint& constraint : held) {
      if (inside(LayoutConstraint::of(constraint).first_item()) ||
          inside(LayoutConstraint::of(constraint).second_item()))
        constraint.setActive(false);
    }
  }
}

Size LayoutSystem::fitting_size(const UIView& view, const Size& target, double across, double down) {
  const UIView root = root_of(view);
  LayoutSystem* const system = of(root);
  const auto found = system->items_.find(objc::borrow(view));
  if (system->empty() || found == system->items_.end()) {
    const Size content = view.intrinsicContentSize();
    const Size now = view.bounds().size;
    return {across >= layout::kRequired ? target.width
            : content.width >= 0        ? content.width
                                        : now.width,
            down >= layout::kRequired ? target.height
            : content.height >= 0     ? content.height
                                      : now.height};
  }
  if (across >= layout::kRequired && view == root) {
    // Heights that follow from widths are found at the width that is asked about.
    (void)system->model_.set_frame(found->second, {{0, 0}, {target.width, root.bounds().size.height}});
  }
  system->model_.solve();
  if (system->fit_heights_to_widths()) system->model_.solve();
  return system->model_.fitting_size(found->second, target, across, down);
}

}  // namespace wispen::uikit
