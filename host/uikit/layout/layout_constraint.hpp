// host/uikit/layout/layout_constraint.hpp: NSLayoutConstraint: a relation between two views' attributes.
#pragma once

#include "host/layout/constraint.hpp"
#include "platform/Foundation.hpp"

namespace wispen::uikit {

class View;

struct ConstraintState;

/// The host's NSLayoutConstraint. While it is active it is held by the nearest view around both of its items.
class LayoutConstraint : public objc::Authored<LayoutConstraint, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"NSLayoutConstraint"};
  using Authored::Authored;

  static void define();
  static LayoutConstraint make(const NSObject& first, layout::Attribute first_attribute,
                               layout::Relation relation, const NSObject& second,
                               layout::Attribute second_attribute, double multiplier, double constant);

  bool isActive() const;
  /// Raises the platform's exception where the items have no view around both, or cannot be related.
  void setActive(bool active) const;
  static void activate(const NSArray& constraints, bool active);
  double constant() const;
  void setConstant(double constant) const;
  float priority() const;
  void setPriority(float priority) const;

  /// Views or layout guides; the second may be nil.
  NSObject first_item() const;
  NSObject second_item() const;
  /// With kNoItem in place of the items.
  layout::ConstraintSpec spec() const;
  /// The holder is going away.
  void lose_holder() const;
  View holder() const;
  /// "UILabel.leading == UIView.leading + 15", after the identifier where there is one.
  NSString description() const;

 private:
  friend struct ConstraintMethods;
  ConstraintState& parts() const;
};

}  // namespace wispen::uikit
