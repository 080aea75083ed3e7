// host/uikit/view/layout/layout_constraint.hpp: NSLayoutConstraint: a relation between two views' attributes.
#pragma once

#include "host/layout/constraint.hpp"
#include "platform/UIKit.hpp"

namespace wispen::uikit {

/// The host's NSLayoutConstraint. While it is active it is held by the nearest view around both of its items.
class LayoutConstraint : public objc::Implementation<LayoutConstraint, NSLayoutConstraint> {
 public:
  static NSLayoutConstraint make(const NSObject& first, layout::Attribute first_attribute,
                                 layout::Relation relation, const NSObject& second,
                                 layout::Attribute second_attribute, double multiplier, double constant);

  bool isActive() const { return active_; }
  /// Raises the platform's exception where the items have no view around both, or cannot be related.
  void setActive(bool active);
  double constant() const { return spec_.constant; }
  void setConstant(double constant);
  double multiplier() const { return spec_.multiplier; }
  float priority() const { return static_cast<float>(spec_.priority); }
  void setPriority(const float& priority);
  /// Views or layout guides; the second may be nil.
  NSObject first_item() const { return first_.lock(); }
  NSObject second_item() const { return second_.lock(); }
  layout::Attribute first_attribute() const { return spec_.first_attribute; }
  layout::Attribute second_attribute() const { return spec_.second_attribute; }
  layout::Relation relation() const { return spec_.relation; }
  /// With kNoItem in place of the items.
  const layout::ConstraintSpec& spec() const { return spec_; }
  /// The holder is going away.
  void lose_holder();
  /// "UILabel.leading == UIView.leading + 15", after the identifier where there is one.
  NSString description() const;

 private:
  friend void define_layout_constraint();

  // The hierarchy owns the items; a constraint outlives them harmlessly.
  objc::Weak<NSObject> first_;
  objc::Weak<NSObject> second_;
  layout::ConstraintSpec spec_;
  bool active_ = false;
  objc::Unowned<UIView> holder_;  // it clears this when it dies
  NSString identifier_;
};

void define_layout_constraint();

}  // namespace wispen::uikit
