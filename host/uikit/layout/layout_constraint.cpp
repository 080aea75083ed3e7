// host/uikit/layout/layout_constraint.cpp: NSLayoutConstraint: a relation between two views' attributes.

#include "host/uikit/layout/layout_constraint.hpp"

#include <algorithm>
#include <cstdio>

#include "host/foundation/problems.hpp"
#include "host/uikit/layout/layout_guide.hpp"
#include "host/uikit/layout/layout_system.hpp"
#include "host/uikit/views/view.hpp"
#include "host/uikit/views/view_state.hpp"

namespace wispen::uikit {

struct ConstraintState {
  // The hierarchy owns the items; a constraint outlives them harmlessly.
  objc::Weak<NSObject> first;
  objc::Weak<NSObject> second;
  layout::ConstraintSpec spec;
  bool active = false;
  objc::Unowned<View> holder;  // it clears this when it dies
  NSString identifier;
};

ConstraintState& LayoutConstraint::parts() const { return state<ConstraintState>(); }

LayoutConstraint LayoutConstraint::make(const NSObject& first, layout::Attribute first_attribute,
                                        layout::Relation relation, const NSObject& second,
                                        layout::Attribute second_attribute, double multiplier,
                                        double constant) {
  LayoutConstraint constraint = objc::make<LayoutConstraint>();
  ConstraintState& state = constraint.parts();
  state.first = first;
  state.second = second;
  state.spec.first_attribute = first_attribute;
  state.spec.relation = relation;
  state.spec.second_attribute = second_attribute;
  state.spec.multiplier = multiplier;
  state.spec.constant = constant;
  return constraint;
}

namespace {

View view_of(const NSObject& item) {
  if (const auto view = objc::cast_or_nil<View>(item)) return view;
  if (const auto guide = objc::cast_or_nil<LayoutGuide>(item)) return guide.owner();
  return View();
}

View common_ancestor(const View& one, const View& other) {
  if (!other) return one;
  for (View view = one; view; view = view.superview()) {
    if (other.isDescendantOfView(view)) return view;
  }
  return View();
}

std::string name_of(const NSObject& item) {
  const auto view = objc::cast_or_nil<View>(item);
  const NSString identifier = view ? view.parts().accessibility_identifier : NSString();
  return identifier ? identifier.utf8() : item ? objc::class_of(item).name() : "nil";
}

}  // namespace

NSObject LayoutConstraint::first_item() const { return parts().first.lock(); }
NSObject LayoutConstraint::second_item() const { return parts().second.lock(); }
layout::ConstraintSpec LayoutConstraint::spec() const { return parts().spec; }
View LayoutConstraint::holder() const { return parts().holder.get(); }
bool LayoutConstraint::isActive() const { return parts().active; }

void LayoutConstraint::setActive(bool active) const {
  ConstraintState& state = parts();
  if (state.active == active) return;
  if (!active) {
    const View holder = state.holder.get();
    state.active = false;
    state.holder = objc::Unowned<View>();
    if (!holder) return;
    const LayoutConstraint kept = *this;
    std::erase(holder.parts().constraints, kept);
    LayoutSystem::invalidate(holder);
    return;
  }
  const View first = view_of(first_item());
  const View second = view_of(second_item());
  View holder = common_ancestor(first, second);
  // A size alone belongs to its own view, everything else is seen from outside.
  if (!holder) {
    const std::string reason = "Unable to activate constraint with anchors " + description().utf8() +
                               " because they have no common ancestor";
    NSException::raise("NSGenericException"_ns, NSString(reason.c_str()));
  }
  state.active = true;
  state.holder = objc::Unowned<View>(holder);
  holder.parts().constraints.push_back(*this);
  LayoutSystem::invalidate(holder);
}

void LayoutConstraint::lose_holder() const {
  parts().active = false;
  parts().holder = objc::Unowned<View>();
}

void LayoutConstraint::activate(const NSArray& constraints, bool active) {
  for (NSUInteger i = 0, count = constraints.count(); i < count; ++i) {
    constraints.objectAtIndex<LayoutConstraint>(i).setActive(active);
  }
}

double LayoutConstraint::constant() const { return parts().spec.constant; }
void LayoutConstraint::setConstant(double constant) const {
  if (parts().spec.constant == constant) return;
  parts().spec.constant = constant;
  if (const View holder = this->holder()) LayoutSystem::constant_changed(holder, *this);
}

float LayoutConstraint::priority() const { return static_cast<float>(parts().spec.priority); }
void LayoutConstraint::setPriority(float priority) const {
  parts().spec.priority = priority;
  if (const View holder = this->holder()) LayoutSystem::invalidate(holder);
}

NSString LayoutConstraint::description() const {
  const layout::ConstraintSpec& spec = parts().spec;
  std::string text;
  if (parts().identifier) text = parts().identifier.utf8() + ": ";
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

LayoutConstraint constraint_with_item(objc::ClassRef, const NSObject& first, NSInteger first_attribute,
                                      NSInteger relation, const NSObject& second, NSInteger second_attribute,
                                      double multiplier, double constant) {
  return LayoutConstraint::make(first, static_cast<layout::Attribute>(first_attribute),
                                static_cast<layout::Relation>(relation), second,
                                static_cast<layout::Attribute>(second_attribute), multiplier, constant);
}
void activate_all(objc::ClassRef, const NSArray& constraints) {
  LayoutConstraint::activate(constraints, true);
}
void deactivate_all(objc::ClassRef, const NSArray& constraints) {
  LayoutConstraint::activate(constraints, false);
}

}  // namespace

struct ConstraintMethods {
  static NSString identifier(const LayoutConstraint& self) { return self.parts().identifier; }
  static void setIdentifier(const LayoutConstraint& self, const NSString& text) {
    self.parts().identifier = text;
  }
  static NSInteger firstAttribute(const LayoutConstraint& self) {
    return static_cast<NSInteger>(self.parts().spec.first_attribute);
  }
  static NSInteger secondAttribute(const LayoutConstraint& self) {
    return static_cast<NSInteger>(self.parts().spec.second_attribute);
  }
  static NSInteger relation(const LayoutConstraint& self) {
    return static_cast<NSInteger>(self.parts().spec.relation);
  }
  static double multiplier(const LayoutConstraint& self) { return self.parts().spec.multiplier; }
};

void LayoutConstraint::define() {
  using Methods = ConstraintMethods;
  objc::Class<LayoutConstraint>()
      .state<ConstraintState>()
      .class_method<"constraintWithItem:attribute:relatedBy:toItem:attribute:multiplier:constant:",
                    &constraint_with_item>()
      .class_method<"activateConstraints:", &activate_all>()
      .class_method<"deactivateConstraints:", &deactivate_all>()
      .method<"isActive", &LayoutConstraint::isActive>()
      .method<"setActive:", &LayoutConstraint::setActive>()
      .method<"constant", &LayoutConstraint::constant>()
      .method<"setConstant:", &LayoutConstraint::setConstant>()
      .method<"priority", &LayoutConstraint::priority>()
      .method<"setPriority:", &LayoutConstraint::setPriority>()
      .method<"firstItem", &LayoutConstraint::first_item>()
      .method<"secondItem", &LayoutConstraint::second_item>()
      .method<"firstAttribute", &Methods::firstAttribute>()
      .method<"secondAttribute", &Methods::secondAttribute>()
      .method<"relation", &Methods::relation>()
      .method<"multiplier", &Methods::multiplier>()
      .method<"identifier", &Methods::identifier>()
      .method<"setIdentifier:", &Methods::setIdentifier>()
      .method<"description", &LayoutConstraint::description>()
      .register_class();
}

}  // namespace wispen::uikit
