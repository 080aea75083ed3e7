// host/uikit/view/layout/layout_constraint.cpp: NSLayoutConstraint: a relation between two views' attributes.

#include "host/uikit/view/layout/layout_constraint.hpp"

#include <algorithm>
#include <cstdio>

#include "host/foundation/arrays.hpp"
#include "host/foundation/problems.hpp"
#include "host/uikit/view/layout/layout_guide.hpp"
#include "host/uikit/view/layout/layout_system.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

NSLayoutConstraint LayoutConstraint::make(const NSObject& first, layout::Attribute first_attribute,
                                          layout::Relation relation, const NSObject& second,
                                          layout::Attribute second_attribute, double multiplier,
                                          double constant) {
  NSLayoutConstraint constraint = objc::make<NSLayoutConstraint>();
  LayoutConstraint& made = of(constraint);
  made.first_ = first;
  made.second_ = second;
  made.spec_.first_attribute = first_attribute;
  made.spec_.relation = relation;
  made.spec_.second_attribute = second_attribute;
  made.spec_.multiplier = multiplier;
  made.spec_.constant = constant;
  return constraint;
}

namespace {

UIView view_of(const NSObject& item) {
  if (const auto view = objc::cast_or_nil<UIView>(item)) return view;
  if (const auto guide = objc::cast_or_nil<UILayoutGuide>(item)) return LayoutGuide::of(guide).owner();
  return UIView();
}

UIView common_ancestor(const UIView& one, const UIView& other) {
  if (!other) return one;
  for (UIView view = one; view; view = View::of(view).superview()) {
    if (View::of(other).isDescendantOfView(view)) return view;
  }
  return UIView();
}

std::string name_of(const NSObject& item) {
  const auto view = objc::cast_or_nil<UIView>(item);
  const NSString identifier = view ? View::of(view).accessibilityIdentifier() : NSString();
  return identifier ? identifier.utf8() : item ? objc::class_of(item).name() : "nil";
}

}  // namespace

void LayoutConstraint::setActive(bool active) {
  if (active_ == active) return;
  const NSLayoutConstraint kept = self();
  if (!active) {
    const UIView holder = holder_.get();
    lose_holder();
    if (!holder) return;
    std::erase(View::of(holder).constraints(), kept);
    LayoutSystem::invalidate(holder);
    return;
  }
  const UIView holder = common_ancestor(view_of(first_item()), view_of(second_item()));
  // A size alone belongs to its own view, everything else is seen from outside.
  if (!holder) {
    const std::string reason = "Unable to activate constraint with anchors " + description().utf8() +
                               " because they have no common ancestor";
    NSException::raise("NSGenericException"_ns, NSString(reason.c_str()));
  }
  active_ = true;
  holder_ = objc::Unowned<UIView>(holder);
  View::of(holder).constraints().push_back(kept);
  LayoutSystem::invalidate(holder);
}

void LayoutConstraint::lose_holder() {
  active_ = false;
  holder_ = objc::Unowned<UIView>();
}

void LayoutConstraint::setConstant(double constant) {
  if (spec_.constant == constant) return;
  spec_.constant = constant;
  if (const UIView holder = holder_.get()) LayoutSystem::constant_changed(holder, self());
}

void LayoutConstraint::setPriority(const float& priority) {
  spec_.priority = priority;
  if (const UIView holder = holder_.get()) LayoutSystem::invalidate(holder);
}

NSString LayoutConstraint::description() const {
  const layout::ConstraintSpec& spec = spec_;
  std::string text;
  if (identifier_) text = identifier_.utf8() + ": ";
  text += name_of(first_item()) + "." + layout::name_of(spec.first_attribute);
  text += spec.relation == layout::Relation::Equal         ? " == "
          : spec.relation == layout::Relation::LessOrEqual ? " <= "
                                                           : " >= ";
  std::array<char, 64> number{};
  if (spec.second_attribute == layout::Attribute::NotAnAttribute) {
    std::snprintf(number.data(), number.size(), "%g", spec.constant);
    return NSString((text + number.data()).c_str());
  }
  if (spec.multiplier != 1) {
    std::snprintf(number.data(), number.size(), "%g * ", spec.multiplier);
    text += number.data();
  }
  text += name_of(second_item()) + "." + layout::name_of(spec.second_attribute);
  if (spec.constant != 0) {
    std::snprintf(number.data(), number.size(), " %c %g", spec.constant < 0 ? '-' : '+',
                  std::abs(spec.constant));
    text += number.data();
  }
  return NSString(text.c_str());
}

namespace {

NSLayoutConstraint constraint_with_item(objc::ClassRef, const NSObject& first, NSInteger first_attribute,
                                        NSInteger relation, const NSObject& second,
                                        NSInteger second_attribute, double multiplier, double constant) {
  return LayoutConstraint::make(first, static_cast<layout::Attribute>(first_attribute),
                                static_cast<layout::Relation>(relation), second,
                                static_cast<layout::Attribute>(second_attribute), multiplier, constant);
}
template <bool Active>
void set_all_active(objc::ClassRef, const NSArray& constraints) {
  for (const auto& constraint : objects_of<NSLayoutConstraint>(constraints)) constraint.setActive(Active);
}

}  // namespace

void define_layout_constraint() {
  objc::Class<NSLayoutConstraint>::implemented_by<LayoutConstraint>()
      .class_method<"constraintWithItem:attribute:relatedBy:toItem:attribute:multiplier:constant:",
                    &constraint_with_item>()
      .class_method<"activateConstraints:", &set_all_active<true>>()
      .class_method<"deactivateConstraints:", &set_all_active<false>>()
      .method<"isActive", &LayoutConstraint::isActive>()
      .method<"setActive:", &LayoutConstraint::setActive>()
      .method<"constant", &LayoutConstraint::constant>()
      .method<"setConstant:", &LayoutConstraint::setConstant>()
      .method<"multiplier", &LayoutConstraint::multiplier>()
      .method<"priority", &LayoutConstraint::priority>()
      .method<"setPriority:", &LayoutConstraint::setPriority>()
      .method<"firstItem", &LayoutConstraint::first_item>()
      .method<"secondItem", &LayoutConstraint::second_item>()
      .method<"firstAttribute", &LayoutConstraint::first_attribute>()
      .method<"secondAttribute", &LayoutConstraint::second_attribute>()
      .method<"relation", &LayoutConstraint::relation>()
      .property<"identifier", "setIdentifier:", &LayoutConstraint::identifier_>()
      .method<"description", &LayoutConstraint::description>()
      .register_class();
}

}  // namespace wispen::uikit
