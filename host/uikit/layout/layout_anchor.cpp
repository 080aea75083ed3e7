// host/uikit/layout/layout_anchor.cpp: NSLayoutAnchor: one attribute of a view, from which constraints grow.

#include "host/uikit/layout/layout_anchor.hpp"

#include "host/uikit/layout/layout_constraint.hpp"

namespace wispen::uikit {

namespace {

using layout::Attribute;
using layout::Relation;

class XAxisAnchor : public objc::Authored<XAxisAnchor, LayoutAnchor> {
 public:
  static constexpr objc::FixedString kClass{"NSLayoutXAxisAnchor"};
  using Authored::Authored;
};
class YAxisAnchor : public objc::Authored<YAxisAnchor, LayoutAnchor> {
 public:
  static constexpr objc::FixedString kClass{"NSLayoutYAxisAnchor"};
  using Authored::Authored;
};
class Dimension : public objc::Authored<Dimension, LayoutAnchor> {
 public:
  static constexpr objc::FixedString kClass{"NSLayoutDimension"};
  using Authored::Authored;
};

LayoutConstraint related(const LayoutAnchor& first, Relation relation, const LayoutAnchor& second,
                         double multiplier, double constant) {
  const AnchorState& to = second.parts();
  return LayoutConstraint::make(first.parts().item, first.parts().attribute, relation, to.item, to.attribute,
                                multiplier, constant);
}

// Nil for a nil anchor, so that what hangs on it does nothing.
template <Relation R>
LayoutConstraint to_anchor(const LayoutAnchor& self, const LayoutAnchor& other) {
  return other ? related(self, R, other, 1, 0) : LayoutConstraint();
}
template <Relation R>
LayoutConstraint to_anchor_constant(const LayoutAnchor& self, const LayoutAnchor& other, double constant) {
  return other ? related(self, R, other, 1, constant) : LayoutConstraint();
}
template <Relation R>
LayoutConstraint to_anchor_multiplier(const LayoutAnchor& self, const LayoutAnchor& other,
                                      double multiplier) {
  return other ? related(self, R, other, multiplier, 0) : LayoutConstraint();
}
template <Relation R>
LayoutConstraint to_anchor_both(const LayoutAnchor& self, const LayoutAnchor& other, double multiplier,
                                double constant) {
  return other ? related(self, R, other, multiplier, constant) : LayoutConstraint();
}
template <Relation R>
LayoutConstraint to_constant(const LayoutAnchor& self, double constant) {
  return LayoutConstraint::make(self.parts().item, self.parts().attribute, R, NSObject(),
                                Attribute::NotAnAttribute, 1, constant);
}

}  // namespace

LayoutAnchor LayoutAnchor::make(const NSObject& item, Attribute attribute) {
  LayoutAnchor anchor = layout::is_size(attribute)         ? LayoutAnchor(objc::make<Dimension>())
                        : layout::is_horizontal(attribute) ? LayoutAnchor(objc::make<XAxisAnchor>())
                                                           : LayoutAnchor(objc::make<YAxisAnchor>());
  AnchorState& state = anchor.state<AnchorState>();
  state.item = item;
  state.attribute = attribute;
  return anchor;
}

void LayoutAnchor::define() {
  constexpr auto kEqual = Relation::Equal;
  constexpr auto kLess = Relation::LessOrEqual;
  constexpr auto kGreater = Relation::GreaterOrEqual;
  objc::Class<LayoutAnchor>()
      .state<AnchorState>()
      .method<"constraintEqualToAnchor:", &to_anchor<kEqual>>()
      .method<"constraintEqualToAnchor:constant:", &to_anchor_constant<kEqual>>()
      .method<"constraintLessThanOrEqualToAnchor:", &to_anchor<kLess>>()
      .method<"constraintLessThanOrEqualToAnchor:constant:", &to_anchor_constant<kLess>>()
      .method<"constraintGreaterThanOrEqualToAnchor:", &to_anchor<kGreater>>()
      .method<"constraintGreaterThanOrEqualToAnchor:constant:", &to_anchor_constant<kGreater>>()
      .register_class();
  objc::Class<XAxisAnchor>().register_class();
  objc::Class<YAxisAnchor>().register_class();
  objc::Class<Dimension>()
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
