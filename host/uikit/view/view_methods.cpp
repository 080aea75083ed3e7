// host/uikit/view/view_methods.cpp: UIView's table.

#include <utility>

#include "host/uikit/view/hooks.hpp"
#include "host/uikit/view/layout/layout_anchor.hpp"
#include "host/uikit/view/trait_collection.hpp"
#include "host/uikit/view/view.hpp"
#include "host/uikit/view/views.hpp"

namespace wispen::uikit {

namespace {

void nothing(const UIView&) {}
void nothing_with(const UIView&, const NSObject&) {}
// A view without text stands on its own edges, and is as high as it is at any width.
double no_baseline_offset(const UIView&) { return 0; }
bool height_is_independent(const UIView&) { return false; }
UITraitCollection current_traits(const UIView&) { return current_trait_collection(); }

/// Animations of the class, by duration, curve or spring.
struct Animations {
  static void plain(objc::ClassRef, double duration, const objc::Block<void()>& changes) {
    run({.duration = duration}, changes, {});
  }
  static void with_completion(objc::ClassRef, double duration, const objc::Block<void()>& changes,
                              const objc::Block<void(bool)>& completion) {
    run({.duration = duration}, changes, completion);
  }
  static void with_options(objc::ClassRef, double duration, double delay, NSUInteger options,
                           const objc::Block<void()>& changes, const objc::Block<void(bool)>& completion) {
    constexpr int kCurveShift = 16;
    const auto curve = static_cast<animation::NamedCurve>((options >> kCurveShift) & 3);
    run({.duration = duration, .delay = delay, .curve = animation::TimingCurve(curve)}, changes, completion);
  }
  static void by_spring(objc::ClassRef, double duration, double delay, double damping, double velocity,
                        NSUInteger, const objc::Block<void()>& changes,
                        const objc::Block<void(bool)>& completion) {
    run({.duration = duration,
         .delay = delay,
         .spring = animation::Spring::lasting(duration, damping, velocity)},
        changes, completion);
  }
  static void without(objc::ClassRef, const objc::Block<void()>& changes) {
    if (AnimationEngine* const engine = AnimationEngine::current()) {
      engine->without_animation([&] { changes(); });
    } else {
      changes();
    }
  }
  static bool are_enabled(objc::ClassRef) {
    const AnimationEngine* const engine = AnimationEngine::current();
    return engine != nullptr && engine->enabled();
  }
  static void set_enabled(objc::ClassRef, bool enabled) {
    if (AnimationEngine* const engine = AnimationEngine::current()) engine->set_enabled(enabled);
  }

 private:
  static void run(const AnimationTiming& timing, const objc::Block<void()>& changes,
                  const objc::Block<void(bool)>& completion) {
    AnimationEngine* const engine = AnimationEngine::current();
    if (engine == nullptr) {
      changes();
      return completion(true);
    }
    std::function<void(bool)> after;
    if (completion) after = [completion](bool finished) { completion(finished); };
    engine->animate(
        timing, [&] { changes(); }, std::move(after));
  }
};

}  // namespace

void define_view() {
  auto view = objc::Class<UIView>::implemented_by<View>();
  view.initializer<"init", &View::init>().initializer<"initWithFrame:", &View::initWithFrame>();
  view.method<"frame", &View::frame>()
      .method<"setFrame:", &View::setFrame>()
      .method<"bounds", &View::bounds>()
      .method<"setBounds:", &View::setBounds>()
      .method<"center", &View::center>()
      .method<"setCenter:", &View::setCenter>()
      .method<"transform", &View::transform>()
      .method<"setTransform:", &View::setTransform>()
      .method<"convertPoint:toView:", &View::convertPointToView>()
      .method<"convertRect:toView:", &View::convertRectToView>()
      .method<"convertPoint:fromView:", &View::convertPointFromView>()
      .method<"convertRect:fromView:", &View::convertRectFromView>()
      .method<"sizeThatFits:", &View::sizeThatFits>()
      .method<"sizeToFit", &View::sizeToFit>()
      .method<"intrinsicContentSize", &View::intrinsicContentSize>()
      .method<hooks::kFirstBaseline, &no_baseline_offset>()
      .method<hooks::kLastBaseline, &no_baseline_offset>()
      .method<hooks::kHeightDependsOnWidth, &height_is_independent>()
      .method<"safeAreaInsets", &View::safeAreaInsets>()
      .method<"safeAreaInsetsDidChange", &nothing>();
  view.method<"superview", &View::superview>()
      .method<"subviews", &View::subviews_array>()
      .method<"window", &View::window>()
      .method<"addSubview:", &View::addSubview>()
      .method<"insertSubview:atIndex:", &View::insertSubviewAtIndex>()
      .method<"insertSubview:belowSubview:", &View::insertBelow>()
      .method<"insertSubview:aboveSubview:", &View::insertAbove>()
      .method<"bringSubviewToFront:", &View::bringToFront>()
      .method<"sendSubviewToBack:", &View::sendToBack>()
      .method<"removeFromSuperview", &View::removeFromSuperview>()
      .method<"isDescendantOfView:", &View::isDescendantOfView>()
      .method<"viewWithTag:", &View::viewWithTag>()
      .method<"willMoveToSuperview:", &nothing_with>()
      .method<"didMoveToSuperview", &nothing>()
      .method<"willMoveToWindow:", &nothing_with>()
      .method<"didMoveToWindow", &nothing>()
      .method<"didAddSubview:", &nothing_with>()
      .method<"willRemoveSubview:", &nothing_with>()
      .method<"nextResponder", &View::nextResponder>()
      .method<"_viewControllerForAncestor", &View::view_controller_for_ancestor>()
      .method<"_viewDelegate", &View::controller>()
      .method<"becomeFirstResponder", &View::becomeFirstResponder>();
  view.method<"alpha", &View::alpha>()
      .method<"setAlpha:", &View::setAlpha>()
      .method<"isHidden", &View::isHidden>()
      .method<"setHidden:", &View::setHidden>()
      .property<"isOpaque", "setOpaque:", &View::opaque_>()
      .method<"backgroundColor", &View::backgroundColor>()
      .method<"setBackgroundColor:", &View::setBackgroundColor>()
      .method<"clipsToBounds", &View::clipsToBounds>()
      .method<"setClipsToBounds:", &View::setClipsToBounds>()
      .method<"contentMode", &View::content_mode_value>()
      .method<"setContentMode:", &View::setContentMode>()
      .method<"tintColor", &View::tintColor>()
      .method<"setTintColor:", &View::setTintColor>()
      .method<"tintColorDidChange", &nothing>()
      .method<"layer", &View::layer>()
      .property<"tag", "setTag:", &View::tag_>()
      .getter<"semanticContentAttribute", &View::semantic_attribute_>()
      .method<"setSemanticContentAttribute:", &View::setSemanticContentAttribute>()
      .method<"effectiveUserInterfaceLayoutDirection", &View::layout_direction>()
      .method<"traitCollection", &current_traits>()
      .method<"traitCollectionDidChange:", &nothing_with>()
      .property<"accessibilityLabel", "setAccessibilityLabel:", &View::accessibility_label_>()
      .property<"accessibilityIdentifier", "setAccessibilityIdentifier:", &View::accessibility_identifier_>()
      .property<"isUserInteractionEnabled", "setUserInteractionEnabled:", &View::interaction_>()
      .method<"setNeedsDisplay", &View::setNeedsDisplay>()
      .method<"hitTest:withEvent:", &View::hitTest>()
      .method<"pointInside:withEvent:", &View::pointInside>()
      .method<"addGestureRecognizer:", &View::addGestureRecognizer>()
      .method<"removeGestureRecognizer:", &View::removeGestureRecognizer>()
      .method<"gestureRecognizers", &View::recognizers_array>();
  view.method<"setNeedsLayout", &View::setNeedsLayout>()
      .method<"layoutIfNeeded", &View::layoutIfNeeded>()
      .method<"layoutSubviews", &View::layoutSubviews>()
      .getter<"layoutMargins", &View::layout_margins_>()
      .method<"setLayoutMargins:", &View::setLayoutMargins>()
      .property<"autoresizesSubviews", "setAutoresizesSubviews:", &View::autoresizes_subviews_>()
      .method<"autoresizingMask", &View::autoresizingMask>()
      .method<"setAutoresizingMask:", &View::setAutoresizingMask>()
      .method<"translatesAutoresizingMaskIntoConstraints", &View::translatesAutoresizingMask>()
      .method<"setTranslatesAutoresizingMaskIntoConstraints:", &View::setTranslatesAutoresizingMask>()
      .method<"contentHuggingPriorityForAxis:", &View::hugging>()
      .method<"setContentHuggingPriority:forAxis:", &View::setHugging>()
      .method<"contentCompressionResistancePriorityForAxis:", &View::compression>()
      .method<"setContentCompressionResistancePriority:forAxis:", &View::setCompression>()
      .method<"invalidateIntrinsicContentSize", &View::invalidateIntrinsicContentSize>()
      .method<"systemLayoutSizeFittingSize:", &View::systemLayoutSizeFittingSize>()
      .method<"systemLayoutSizeFittingSize:withHorizontalFittingPriority:verticalFittingPriority:",
              &View::systemLayoutSizeFitting>()
      .method<"constraints", &View::constraints_array>()
      .method<"addConstraint:", &View::activate>()
      .method<"removeConstraint:", &View::deactivate>()
      .method<"addConstraints:", &View::activate_all>()
      .method<"removeConstraints:", &View::deactivate_all>();
  add_anchors(view);
  view.class_method<"animateWithDuration:animations:", &Animations::plain>()
      .class_method<"animateWithDuration:animations:completion:", &Animations::with_completion>()
      .class_method<"animateWithDuration:delay:options:animations:completion:", &Animations::with_options>()
      .class_method<
          "animateWithDuration:delay:usingSpringWithDamping:initialSpringVelocity:options:"
          "animations:completion:",
          &Animations::by_spring>()
      .class_method<"performWithoutAnimation:", &Animations::without>()
      .class_method<"areAnimationsEnabled", &Animations::are_enabled>()
      .class_method<"setAnimationsEnabled:", &Animations::set_enabled>();
  view.register_class();
}

}  // namespace wispen::uikit
