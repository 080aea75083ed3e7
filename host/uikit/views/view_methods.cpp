// host/uikit/views/view_methods.cpp: UIView's table.

#include "host/uikit/controllers/trait_collection.hpp"
#include "host/uikit/layout/layout_anchor.hpp"
#include "host/uikit/layout/layout_system.hpp"
#include "host/uikit/views/view.hpp"
#include "host/uikit/views/view_state.hpp"
#include "host/uikit/views/window.hpp"

namespace wispen::uikit {

/// What only messages ask for.
struct ViewMethods {
  static View init(objc::Allocated<View> self) {
    return std::move(self).initialize<"initWithFrame:">(Rect{});
  }

  static NSArray subviews(const View& self) {
    NSMutableArray all = NSMutableArray::array();
    for (const View& subview : self.parts().subviews) all.addObject(subview);
    return all;
  }
  static void insertBelow(const View& self, const View& view, const View& sibling) {
    insert_beside(self, view, sibling, 0);
  }
  static void insertAbove(const View& self, const View& view, const View& sibling) {
    insert_beside(self, view, sibling, 1);
  }
  static void bringToFront(const View& self, const View& view) {
    if (view.superview() == self) self.addSubview(view);
  }
  static void sendToBack(const View& self, const View& view) {
    if (view.superview() == self) self.insertSubviewAtIndex(view, 0);
  }
  static Responder nextResponder(const View& self) {
    if (Responder controller = self.controller()) return controller;
    return self.superview();
  }
  static Responder viewControllerForAncestor(const View& self) {
    for (View view = self; view; view = view.superview()) {
      if (Responder controller = view.controller()) return controller;
    }
    return Responder();
  }
  static Responder viewDelegate(const View& self) { return self.controller(); }

  static void layoutSubviews(const View& self) { LayoutSystem::lay_out(self); }
  static void nothing(const View&) {}
  static void nothing_with(const View&, const NSObject&) {}
  static Size sizeThatFits(const View& self, const Size&) { return self.bounds().size; }
  static Size intrinsicContentSize(const View&) { return {kNoIntrinsicMetric, kNoIntrinsicMetric}; }
  // A view without text stands on its own edges, and is as high as it is at any width.
  static double baselineOffset(const View&) { return 0; }
  static bool heightDependsOnWidth(const View&) { return false; }
  static View hitTest(const View& self, const Point& point, const NSObject&) { return self.hitTest(point); }
  static bool pointInside(const View& self, const Point& point, const NSObject&) {
    return self.bounds().contains(point);
  }
  static Point convertPointFromView(const View& self, const Point& point, const View& other) {
    if (other) return other.convertPointToView(point, self);
    const View window = self.window();
    return window ? window.convertPointToView(point, self) : point;
  }
  static Rect convertRectFromView(const View& self, const Rect& rect, const View& other) {
    if (other) return other.convertRectToView(rect, self);
    const View window = self.window();
    return window ? window.convertRectToView(rect, self) : rect;
  }

  static bool autoresizesSubviews(const View& self) { return self.parts().autoresizes_subviews; }
  static void setAutoresizesSubviews(const View& self, bool value) {
    self.parts().autoresizes_subviews = value;
  }
  static NSUInteger autoresizingMask(const View& self) { return self.parts().autoresizing_mask; }
  static NSInteger contentMode(const View& self) { return static_cast<NSInteger>(self.contentMode()); }
  static NSInteger tag(const View& self) { return self.parts().tag; }
  static void setTag(const View& self, NSInteger tag) { self.parts().tag = tag; }
  static bool isOpaque(const View& self) { return self.parts().opaque; }
  static void setOpaque(const View& self, bool opaque) { self.parts().opaque = opaque; }
  static NSInteger semanticContentAttribute(const View& self) { return self.parts().semantic_attribute; }
  static void setSemanticContentAttribute(const View& self, NSInteger attribute) {
    self.parts().semantic_attribute = attribute;
    self.setNeedsLayout();
    self.setNeedsDisplay();
  }
  static NSInteger layoutDirection(const View& self) { return self.is_right_to_left() ? 1 : 0; }
  static EdgeInsets layoutMargins(const View& self) { return self.parts().layout_margins; }
  static void setLayoutMargins(const View& self, const EdgeInsets& margins) {
    self.parts().layout_margins = margins;
    LayoutSystem::invalidate(self);
    self.setNeedsLayout();
  }
  static NSString label(const View& self) { return self.parts().accessibility_label; }
  static void setLabel(const View& self, const NSString& text) { self.parts().accessibility_label = text; }
  static NSString identifier(const View& self) { return self.parts().accessibility_identifier; }
  static void setIdentifier(const View& self, const NSString& text) {
    self.parts().accessibility_identifier = text;
  }
  static TraitCollection traitCollection(const View&) { return TraitCollection::current(); }

  static float hugging(const View& self, NSInteger axis) {
    return static_cast<float>(priority(self, axis).hugging);
  }
  static void setHugging(const View& self, const float& value, NSInteger axis) {
    priority(self, axis).hugging = value;
    LayoutSystem::invalidate(self);
  }
  static float compression(const View& self, NSInteger axis) {
    return static_cast<float>(priority(self, axis).compression);
  }
  static void setCompression(const View& self, const float& value, NSInteger axis) {
    priority(self, axis).compression = value;
    LayoutSystem::invalidate(self);
  }
  static NSArray constraints(const View& self) {
    NSMutableArray all = NSMutableArray::array();
    for (const LayoutConstraint& constraint : self.parts().constraints) all.addObject(constraint);
    return all;
  }
  static void addConstraint(const View&, const LayoutConstraint& constraint) { constraint.setActive(true); }
  static void removeConstraint(const View&, const LayoutConstraint& constraint) {
    constraint.setActive(false);
  }
  static void addConstraints(const View&, const NSArray& constraints) {
    LayoutConstraint::activate(constraints, true);
  }
  static void removeConstraints(const View&, const NSArray& constraints) {
    LayoutConstraint::activate(constraints, false);
  }
  static NSArray gestureRecognizers(const View& self) {
    NSMutableArray all = NSMutableArray::array();
    for (const GestureRecognizer& recognizer : self.parts().recognizers) all.addObject(recognizer);
    return all;
  }
  static bool becomeFirstResponder(const View& self) {
    return self.window() ? objc::send_super<"becomeFirstResponder", bool>(self, objc::class_for<Responder>())
                         : false;
  }

  // Animation.
  static void animate(objc::ClassRef, double duration, const objc::Block<void()>& changes) {
    run({.duration = duration}, changes, {});
  }
  static void animateThen(objc::ClassRef, double duration, const objc::Block<void()>& changes,
                          const objc::Block<void(bool)>& completion) {
    run({.duration = duration}, changes, completion);
  }
  static void animateWithOptions(objc::ClassRef, double duration, double delay, NSUInteger options,
                                 const objc::Block<void()>& changes,
                                 const objc::Block<void(bool)>& completion) {
    const auto curve = static_cast<animation::NamedCurve>((options >> animation_option::kCurveShift) & 3);
    run({.duration = duration, .delay = delay, .curve = animation::TimingCurve(curve)}, changes, completion);
  }
  static void animateSpring(objc::ClassRef, double duration, double delay, double damping, double velocity,
                            NSUInteger, const objc::Block<void()>& changes,
                            const objc::Block<void(bool)>& completion) {
    run({.duration = duration,
         .delay = delay,
         .spring = animation::Spring::lasting(duration, damping, velocity)},
        changes, completion);
  }
  static void performWithoutAnimation(objc::ClassRef, const objc::Block<void()>& changes) {
    if (AnimationEngine* const engine = AnimationEngine::current()) {
      engine->without_animation([&] { changes(); });
    } else {
      changes();
    }
  }
  static bool areAnimationsEnabled(objc::ClassRef) {
    const AnimationEngine* const engine = AnimationEngine::current();
    return engine != nullptr && engine->enabled();
  }
  static void setAnimationsEnabled(objc::ClassRef, bool enabled) {
    if (AnimationEngine* const engine = AnimationEngine::current()) engine->set_enabled(enabled);
  }

 private:
  static void insert_beside(const View& self, const View& view, const View& sibling, NSInteger after) {
    if (view == sibling) return;
    if (view.superview() == self) view.removeFromSuperview();
    const auto& all = self.parts().subviews;
    const auto found = std::find(all.begin(), all.end(), sibling);
    if (found == all.end()) return self.addSubview(view);
    self.insertSubviewAtIndex(view, found - all.begin() + after);
  }
  static ContentPriorities& priority(const View& self, NSInteger axis) {
    return self.parts().content_priorities[axis == 0 ? 0 : 1];
  }
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

 public:
  static void define();
};

void ViewMethods::define() {
  objc::Class<View> view;
  view.state<ViewState>().on_dealloc<&View::farewell>();
  view.initializer<"init", &init>().initializer<"initWithFrame:", &View::initWithFrame>();
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
      .method<"convertPoint:fromView:", &convertPointFromView>()
      .method<"convertRect:fromView:", &convertRectFromView>()
      .method<"sizeThatFits:", &sizeThatFits>()
      .method<"sizeToFit", &View::sizeToFit>()
      .method<"intrinsicContentSize", &intrinsicContentSize>()
      .method<"_firstBaselineOffsetFromTop", &baselineOffset>()
      .method<"_baselineOffsetFromBottom", &baselineOffset>()
      .method<"_heightDependsOnWidth", &heightDependsOnWidth>()
      .method<"safeAreaInsets", &View::safeAreaInsets>()
      .method<"safeAreaInsetsDidChange", &nothing>();
  view.method<"superview", &View::superview>()
      .method<"subviews", &subviews>()
      .method<"window", &View::window>()
      .method<"addSubview:", &View::addSubview>()
      .method<"insertSubview:atIndex:", &View::insertSubviewAtIndex>()
      .method<"insertSubview:belowSubview:", &insertBelow>()
      .method<"insertSubview:aboveSubview:", &insertAbove>()
      .method<"bringSubviewToFront:", &bringToFront>()
      .method<"sendSubviewToBack:", &sendToBack>()
      .method<"removeFromSuperview", &View::removeFromSuperview>()
      .method<"isDescendantOfView:", &View::isDescendantOfView>()
      .method<"viewWithTag:", &View::viewWithTag>()
      .method<"willMoveToSuperview:", &nothing_with>()
      .method<"didMoveToSuperview", &nothing>()
      .method<"willMoveToWindow:", &nothing_with>()
      .method<"didMoveToWindow", &nothing>()
      .method<"didAddSubview:", &nothing_with>()
      .method<"willRemoveSubview:", &nothing_with>()
      .method<"nextResponder", &nextResponder>()
      .method<"_viewControllerForAncestor", &viewControllerForAncestor>()
      .method<"_viewDelegate", &viewDelegate>()
      .method<"becomeFirstResponder", &becomeFirstResponder>();
  view.method<"alpha", &View::alpha>()
      .method<"setAlpha:", &View::setAlpha>()
      .method<"isHidden", &View::isHidden>()
      .method<"setHidden:", &View::setHidden>()
      .method<"isOpaque", &isOpaque>()
      .method<"setOpaque:", &setOpaque>()
      .method<"backgroundColor", &View::backgroundColor>()
      .method<"setBackgroundColor:", &View::setBackgroundColor>()
      .method<"clipsToBounds", &View::clipsToBounds>()
      .method<"setClipsToBounds:", &View::setClipsToBounds>()
      .method<"contentMode", &contentMode>()
      .method<"setContentMode:", &View::setContentMode>()
      .method<"tintColor", &View::tintColor>()
      .method<"setTintColor:", &View::setTintColor>()
      .method<"tintColorDidChange", &nothing>()
      .method<"layer", &View::layer>()
      .method<"tag", &tag>()
      .method<"setTag:", &setTag>()
      .method<"semanticContentAttribute", &semanticContentAttribute>()
      .method<"setSemanticContentAttribute:", &setSemanticContentAttribute>()
      .method<"effectiveUserInterfaceLayoutDirection", &layoutDirection>()
      .method<"traitCollection", &traitCollection>()
      .method<"traitCollectionDidChange:", &nothing_with>()
      .method<"accessibilityLabel", &label>()
      .method<"setAccessibilityLabel:", &setLabel>()
      .method<"accessibilityIdentifier", &identifier>()
      .method<"setAccessibilityIdentifier:", &setIdentifier>()
      .method<"isUserInteractionEnabled", &View::isUserInteractionEnabled>()
      .method<"setUserInteractionEnabled:", &View::setUserInteractionEnabled>()
      .method<"setNeedsDisplay", &View::setNeedsDisplay>()
      .method<"hitTest:withEvent:", &hitTest>()
      .method<"pointInside:withEvent:", &pointInside>()
      .method<"addGestureRecognizer:", &View::addGestureRecognizer>()
      .method<"removeGestureRecognizer:", &View::removeGestureRecognizer>()
      .method<"gestureRecognizers", &gestureRecognizers>();
  view.method<"setNeedsLayout", &View::setNeedsLayout>()
      .method<"layoutIfNeeded", &View::layoutIfNeeded>()
      .method<"layoutSubviews", &layoutSubviews>()
      .method<"layoutMargins", &layoutMargins>()
      .method<"setLayoutMargins:", &setLayoutMargins>()
      .method<"autoresizesSubviews", &autoresizesSubviews>()
      .method<"setAutoresizesSubviews:", &setAutoresizesSubviews>()
      .method<"autoresizingMask", &autoresizingMask>()
      .method<"setAutoresizingMask:", &View::setAutoresizingMask>()
      .method<"translatesAutoresizingMaskIntoConstraints", &View::translatesAutoresizingMask>()
      .method<"setTranslatesAutoresizingMaskIntoConstraints:", &View::setTranslatesAutoresizingMask>()
      .method<"contentHuggingPriorityForAxis:", &hugging>()
      .method<"setContentHuggingPriority:forAxis:", &setHugging>()
      .method<"contentCompressionResistancePriorityForAxis:", &compression>()
      .method<"setContentCompressionResistancePriority:forAxis:", &setCompression>()
      .method<"invalidateIntrinsicContentSize", &View::invalidateIntrinsicContentSize>()
      .method<"systemLayoutSizeFittingSize:", &View::systemLayoutSizeFittingSize>()
      .method<"systemLayoutSizeFittingSize:withHorizontalFittingPriority:verticalFittingPriority:",
              &View::systemLayoutSizeFitting>()
      .method<"constraints", &constraints>()
      .method<"addConstraint:", &addConstraint>()
      .method<"removeConstraint:", &removeConstraint>()
      .method<"addConstraints:", &addConstraints>()
      .method<"removeConstraints:", &removeConstraints>();
  add_anchors(view);
  view.class_method<"animateWithDuration:animations:", &animate>()
      .class_method<"animateWithDuration:animations:completion:", &animateThen>()
      .class_method<"animateWithDuration:delay:options:animations:completion:", &animateWithOptions>()
      .class_method<
          "animateWithDuration:delay:usingSpringWithDamping:initialSpringVelocity:options:"
          "animations:completion:",
          &animateSpring>()
      .class_method<"performWithoutAnimation:", &performWithoutAnimation>()
      .class_method<"areAnimationsEnabled", &areAnimationsEnabled>()
      .class_method<"setAnimationsEnabled:", &setAnimationsEnabled>();
  view.register_class();
}

void View::define() { ViewMethods::define(); }

}  // namespace wispen::uikit
