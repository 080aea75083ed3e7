// host/uikit/view/layout/stack_view.cpp: UIStackView: views in a row or a column.

#include "host/uikit/view/layout/stack_view.hpp"

#include <algorithm>
#include <limits>

#include "host/foundation/arrays.hpp"
#include "host/uikit/view/layout/layout_system.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

UIStackView StackView::initWithArranged(objc::Allocated<UIStackView> self, const NSArray& views) {
  UIStackView stack = std::move(self).initialize<"initWithFrame:">(Rect{});
  if (!stack) return stack;
  for (const UIView& view : objects_of<UIView>(views)) stack.addArrangedSubview(view);
  return stack;
}

layout::StackStyle StackView::style() const {
  layout::StackStyle style = style_;
  if (uses_margins_) style.margins = View::of(self()).layoutMargins();
  return style;
}

std::optional<double> StackView::spacing_after(const UIView& view) const {
  for (const auto& [spaced, spacing] : custom_spacing_) {
    if (spaced == view) return spacing;
  }
  return std::nullopt;
}

NSArray StackView::arrangedSubviews() const { return array_of(arranged_); }

void StackView::insert(const UIView& view, NSUInteger index) {
  if (!view) return;
  std::erase(arranged_, view);
  index = std::min<NSUInteger>(index, arranged_.size());
  arranged_.insert(arranged_.begin() + static_cast<std::ptrdiff_t>(index), view);
  view.setTranslatesAutoresizingMaskIntoConstraints(false);
  if (view.superview() != self()) self().addSubview(view);
  LayoutSystem::invalidate(self());
}

void StackView::remove(const UIView& view) {
  if (std::erase(arranged_, view) > 0) LayoutSystem::invalidate(self());
}

template <class T>
void StackView::set(T& slot, T value) {
  slot = value;
  LayoutSystem::invalidate(self());
}

void StackView::setAxis(UILayoutConstraintAxis axis) {
  set(style_.axis,
      axis == UILayoutConstraintAxis::Horizontal ? layout::Axis::Horizontal : layout::Axis::Vertical);
}
void StackView::setDistribution(NSInteger value) {
  set(style_.distribution, static_cast<layout::StackDistribution>(std::clamp<NSInteger>(value, 0, 4)));
}
void StackView::setAlignment(NSInteger value) {
  set(style_.alignment, static_cast<layout::StackAlignment>(std::clamp<NSInteger>(value, 0, 5)));
}

double StackView::customSpacing(const UIView& view) const {
  return spacing_after(view).value_or(static_cast<double>(std::numeric_limits<float>::max()));
}
void StackView::setCustomSpacing(double value, const UIView& view) {
  std::erase_if(custom_spacing_, [&](const auto& entry) { return entry.first == view; });
  constexpr double kUseDefault = 3.4e38;  // the platform's UIStackViewSpacingUseDefault is the largest float
  if (value < kUseDefault) custom_spacing_.emplace_back(view, value);
  LayoutSystem::invalidate(self());
}

void define_stack_view() {
  objc::Class<UIStackView>::implemented_by<StackView>()
      .initializer<"initWithArrangedSubviews:", &StackView::initWithArranged>()
      .method<"arrangedSubviews", &StackView::arrangedSubviews>()
      .method<"addArrangedSubview:", &StackView::add>()
      .method<"insertArrangedSubview:atIndex:", &StackView::insert>()
      .method<"removeArrangedSubview:", &StackView::remove>()
      .method<"willRemoveSubview:", &StackView::remove>()
      .method<"axis", &StackView::axis>()
      .method<"setAxis:", &StackView::setAxis>()
      .method<"distribution", &StackView::distribution>()
      .method<"setDistribution:", &StackView::setDistribution>()
      .method<"alignment", &StackView::alignment>()
      .method<"setAlignment:", &StackView::setAlignment>()
      .method<"spacing", &StackView::spacing>()
      .method<"setSpacing:", &StackView::setSpacing>()
      .method<"setCustomSpacing:afterView:", &StackView::setCustomSpacing>()
      .method<"customSpacingAfterView:", &StackView::customSpacing>()
      .method<"isBaselineRelativeArrangement", &StackView::baselineRelative>()
      .method<"setBaselineRelativeArrangement:", &StackView::setBaselineRelative>()
      .method<"isLayoutMarginsRelativeArrangement", &StackView::usesMargins>()
      .method<"setLayoutMarginsRelativeArrangement:", &StackView::setUsesMargins>()
      .register_class();
}

}  // namespace wispen::uikit
