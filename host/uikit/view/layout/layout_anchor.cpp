// host/uikit/view/layout/layout_anchor.cpp: NSLayoutAnchor: one attribute of a view, from which constraints
// grow.

#include "host/uikit/view/layout/layout_anchor.hpp"

#include "host/uikit/view/layout/layout_constraint.hpp"

namespace wispen::uikit {

namespace {

using layout::Attribute;
using layout::Relation;

NSLayoutConstraint related(const NSLayoutAnchor& first, Relation relation, const NSLayoutAnchor& second,
                           double multiplier, double constant) {
  const LayoutAnchor& from = LayoutAnchor::of(first);
  const LayoutAnchor& to = LayoutAnchor::of(second);
  return LayoutConstraint::make(from.item(), from.attribute(), relation, to.item(), to.attribute(),
                                multiplier, constant);
}

// Nil for a nil anchor, so that what hangs on it does nothing.
template <Relation R>
NSLayoutConstraint to_anchor(const NSLayoutAnchor& self, const NSLayoutAnchor& other) {
  return other ? related(self, R, other, 1, 0) : NSLayoutConstraint();
}
template <Relation R>
NSLayoutConstraint to_anchor_constant(const NSLayoutAnchor& self, const NSLayoutAnchor& other,
                                      double constant) {
  return other ? related(self, R, other, 1, constant) : NSLayoutConstraint();
}
template <Relation R>
NSLayoutConstraint to_anchor_multiplier(const NSLayoutAnchor& self, const NSLayoutAnchor& other,
                                        double multiplier) {
  return other ? related(self, R, other, multiplier, 0) : NSLayoutConstraint();
}
template <Relation R>
NSLayoutConstraint to_anchor_both(const NSLayoutAnchor& self, const NSLayoutAnchor& other, double multiplier,
                                  double constant) {
  return other ? related(self, R, other, multiplier, constant) : NSLayoutConstraint();
}
template <Relation R>
NSLayoutConstraint to_constant(const NSLayoutAnchor& self, double constant) {
  return LayoutConstraint::make(LayoutAnchor::of(self).item(), LayoutAnchor::of(self).attribute(), R,
                                NSObject(), Attribute::NotAnAttribute, 1, constant);
}

}  // namespace

NSLayoutAnchor LayoutAnchor::make(const NSObject& item, Attribute attribute) {
  NSLayoutAnchor anchor = layout::is_size(attribute) ? NSLayoutAnchor(objc::make<NSLayoutDimension>())
                          : layout::is_horizontal(attribute)
                              ? NSLayoutAnchor(objc::make<NSLayoutXAxisAnchor>())
                              : NSLayoutAnchor(objc::make<NSLayoutYAxisAnchor>());
  of(anchor).item_ = item;
  of(anchor).attribute_ = attribute;
  return anchor;
}

void define_layout_anchor() {
  constexpr auto kEqual = Relation::Equal;
  constexpr auto kLess = Relation::LessOrEqual;
  constexpr auto kGreater = Relation::GreaterOrEqual;
  objc::Class<NSLayoutAnchor>::implemented_by<LayoutAnchor>()

      .method<"constraintEqualToAnchor:", &to_anchor<kEqual>>()
      .method<"constraintEqualToAnchor:constant:", &to_anchor_constant<kEqual>>()
      .method<"constraintLessThanOrEqualToAnchor:", &to_anchor<kLess>>()
      .method<"constraintLessThanOrEqualToAnchor:constant:", &to_anchor_constant<kLess>>()
      .method<"constraintGreaterThanOrEqualToAnchor:", &to_anchor<kGreater>>()
      .method<"constraintGreaterThanOrEqualToAnchor:constant:", &to_anchor_constant<kGreater>>()
      .register_class();
  objc::Class<NSLayoutXAxisAnchor>().register_class();
  objc::Class<NSLayoutYAxisAnchor>().register_class();
  objc::Class<NSLayoutDimension>()
      .method<"constraintEqualToConstant:", &to_constant<kEqual>>()
      .method<"constraintLessThanOrEqualToConstant:", &to_constant<kLess>>()
      .method<"constraintGreaterThanOrEqualToConstant:", &to_constant<kGreater>>()
      .method<"constraintEqualToAnchor:multiplier:", &to_anchor_multiplier<kEqual>>()
      .method<"constraintLessThanOrEqualToAnchor:multiplier:", &to_anchor_multiplier<kLess>>()
      .method<"constraintGreaterThanOrEqualToAnchor:multiplier:", &to_anchor_multiplier<kGreater>>()
      .method<"constraintEqualToAnchor:multiplier:constant:", &to_anchor_both<kEqual>>()
      .method<"constraintLessThanOrEqualToAnchor:multiplier:constant:", &to_anchor_both<kLess>>()
      .method<"constraintGreaterThanOrEqualToAnchor:multiplier:constant:", &to_anchor_both<kGreater>>()
      .register_class();
}

}  // namespace wispen::uikit
