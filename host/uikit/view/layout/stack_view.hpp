// host/uikit/view/layout/stack_view.hpp: UIStackView: views in a row or a column.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "host/layout/stack.hpp"
#include "platform/UIKit.hpp"

namespace wispen::uikit {

/// The host's UIStackView. The arranged views are subviews too; their order is the stack's own.
class StackView : public objc::Implementation<StackView, UIStackView> {
 public:
  static UIStackView initWithArranged(objc::Allocated<UIStackView> self, const NSArray& views);

  const std::vector<UIView>& arranged() const { return arranged_; }
  /// With the margins that it keeps.
  layout::StackStyle style() const;
  std::optional<double> spacing_after(const UIView& view) const;

  NSArray arrangedSubviews() const;
  void add(const UIView& view) { insert(view, arranged_.size()); }
  void insert(const UIView& view, NSUInteger index);
  /// It stays a subview, as the platform has it.
  void remove(const UIView& view);
  UILayoutConstraintAxis axis() const { return static_cast<UILayoutConstraintAxis>(style_.axis); }
  void setAxis(UILayoutConstraintAxis axis);
  UIStackViewDistribution distribution() const {
    return static_cast<UIStackViewDistribution>(style_.distribution);
  }
  void setDistribution(NSInteger value);
  UIStackViewAlignment alignment() const { return static_cast<UIStackViewAlignment>(style_.alignment); }
  void setAlignment(NSInteger value);
  double spacing() const { return style_.spacing; }
  void setSpacing(double value) { set(style_.spacing, value); }
  double customSpacing(const UIView& view) const;
  void setCustomSpacing(double value, const UIView& view);
  bool baselineRelative() const { return style_.baseline_relative; }
  void setBaselineRelative(bool value) { set(style_.baseline_relative, value); }
  bool usesMargins() const { return uses_margins_; }
  void setUsesMargins(bool value) { set(uses_margins_, value); }

 private:
  template <class T>
  void set(T& slot, T value);

  std::vector<UIView> arranged_;
  std::vector<std::pair<UIView, double>> custom_spacing_;
  layout::StackStyle style_;
  bool uses_margins_ = false;
};

void define_stack_view();

}  // namespace wispen::uikit
