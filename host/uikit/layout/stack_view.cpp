// host/uikit/layout/stack_view.cpp: UIStackView: views in a row or a column.

#include "host/uikit/layout/stack_view.hpp"

#include <algorithm>
#include <map>

#include "host/uikit/layout/layout_system.hpp"
#include "host/uikit/views/view_state.hpp"

namespace wispen::uikit {

struct StackState {
  std::vector<View> arranged;
  std::vector<std::pair<View, double>> custom_spacing;
  layout::StackStyle style;
  bool uses_margins = false;
};

StackState& StackView::parts() const { return state<StackState>(); }
const std::vector<View>& StackView::arranged() const { return parts().arranged; }

layout::StackStyle StackView::style() const {
  layout::StackStyle style = parts().style;
  if (parts().uses_margins) style.margins = View::parts().layout_margins;
  return style;
}

std::optional<double> StackView::spacing_after(const View& view) const {
  for (const auto& [spaced, spacing] : parts().custom_spacing) {
    if (spaced == view) return spacing;
  }
  return std::nullopt;
}

struct StackMethods {
  static StackState& parts(const StackView& self) { return self.parts(); }

  static StackView initWithArranged(objc::Allocated<StackView> self, const NSArray& views) {
    StackView stack = std::move(self).initialize<"initWithFrame:">(Rect{});
    for (NSUInteger i = 0, count = views.count(); stack && i < count; ++i) {
      add(stack, views.objectAtIndex<View>(i));
    }
    return stack;
  }

  static void insert(const StackView& self, const View& view, NSUInteger index) {
    if (!view) return;
    auto& arranged = parts(self).arranged;
    std::erase(arranged, view);
    index = std::min<NSUInteger>(index, arranged.size());
    arranged.insert(arranged.begin() + static_cast<std::ptrdiff_t>(index), view);
    view.setTranslatesAutoresizingMask(false);
    if (view.superview() != self) self.addSubview(view);
    LayoutSystem::invalidate(self);
  }
  static void add(const StackView& self, const View& view) {
    insert(self, view, parts(self).arranged.size());
  }
  /// It stays a subview, as the platform has it.
  static void remove(const StackView& self, const View& view) {
    if (std::erase(parts(self).arranged, view) > 0) LayoutSystem::invalidate(self);
  }
  static void willRemoveSubview(const StackView& self, const View& view) { remove(self, view); }
  static NSArray arrangedSubviews(const StackView& self) {
    NSMutableArray all = NSMutableArray::array();
    for (const View& view : parts(self).arranged) all.addObject(view);
    return all;
  }

  template <class V, class T>
  static void set(const StackView& self, T& slot, V value) {
    slot = static_cast<T>(value);
    LayoutSystem::invalidate(self);
  }
  static NSInteger axis(const StackView& self) { return static_cast<NSInteger>(parts(self).style.axis); }
  static void setAxis(const StackView& self, NSInteger axis) { set(self, parts(self).style.axis, axis != 0); }
  static NSInteger distribution(const StackView& self) {
    return static_cast<NSInteger>(parts(self).style.distribution);
  }
  static void setDistribution(const StackView& self, NSInteger value) {
    set(self, parts(self).style.distribution, std::clamp<NSInteger>(value, 0, 4));
  }
  static NSInteger alignment(const StackView& self) {
    return static_cast<NSInteger>(parts(self).style.alignment);
  }
  static void setAlignment(const StackView& self, NSInteger value) {
    set(self, parts(self).style.alignment, std::clamp<NSInteger>(value, 0, 5));
  }
  static double spacing(const StackView& self) { return parts(self).style.spacing; }
  static void setSpacing(const StackView& self, double value) { set(self, parts(self).style.spacing, value); }
  static void setCustomSpacing(const StackView& self, double value, const View& view) {
    auto& custom = parts(self).custom_spacing;
    std::erase_if(custom, [&](const auto& entry) { return entry.first == view; });
    constexpr double kUseDefault =
        3.4e38;  // the platform's UIStackViewSpacingUseDefault is the largest float
    if (value < kUseDefault) custom.emplace_back(view, value);
    LayoutSystem::invalidate(self);
  }
  static double customSpacing(const StackView& self, const View& view) {
    return self.spacing_after(view).value_or(static_cast<double>(std::numeric_limits<float>::max()));
  }
  static bool baselineRelative(const StackView& self) { return parts(self).style.baseline_relative; }
  static void setBaselineRelative(const StackView& self, bool value) {
    set(self, parts(self).style.baseline_relative, value);
  }
  static bool usesMargins(const StackView& self) { return parts(self).uses_margins; }
  static void setUsesMargins(const StackView& self, bool value) {
    set(self, parts(self).uses_margins, value);
  }
};

void StackView::define() {
  using M = StackMethods;
  objc::Class<StackView>()
      .state<StackState>()
      .initializer<"initWithArrangedSubviews:", &M::initWithArranged>()
      .method<"arrangedSubviews", &M::arrangedSubviews>()
      .method<"addArrangedSubview:", &M::add>()
      .method<"insertArrangedSubview:atIndex:", &M::insert>()
      .method<"removeArrangedSubview:", &M::remove>()
      .method<"willRemoveSubview:", &M::willRemoveSubview>()
      .method<"axis", &M::axis>()
      .method<"setAxis:", &M::setAxis>()
      .method<"distribution", &M::distribution>()
      .method<"setDistribution:", &M::setDistribution>()
      .method<"alignment", &M::alignment>()
      .method<"setAlignment:", &M::setAlignment>()
      .method<"spacing", &M::spacing>()
      .method<"setSpacing:", &M::setSpacing>()
      .method<"setCustomSpacing:afterView:", &M::setCustomSpacing>()
      .method<"customSpacingAfterView:", &M::customSpacing>()
      .method<"isBaselineRelativeArrangement", &M::baselineRelative>()
      .method<"setBaselineRelativeArrangement:", &M::setBaselineRelative>()
      .method<"isLayoutMarginsRelativeArrangement", &M::usesMargins>()
      .method<"setLayoutMarginsRelativeArrangement:", &M::setUsesMargins>()
      .register_class();
}

}  // namespace wispen::uikit
