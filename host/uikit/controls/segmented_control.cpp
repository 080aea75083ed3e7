// host/uikit/controls/segmented_control.cpp: UISegmentedControl: one of a few, side by side.

#include "host/uikit/controls/segmented_control.hpp"

#include <algorithm>

#include "host/uikit/controls/segmented_state.hpp"
#include "host/uikit/events/focus.hpp"
#include "host/uikit/painting/painter.hpp"
#include "host/uikit/values/image.hpp"

namespace wispen::uikit {

SegmentedState& SegmentedControl::parts() const { return state<SegmentedState>(); }

SegmentedControl SegmentedControl::make(const NSArray& items) {
  return alloc().initialize<"initWithItems:">(items);
}

NSUInteger SegmentedControl::numberOfSegments() const { return parts().segments.size(); }
NSInteger SegmentedControl::selectedSegmentIndex() const { return parts().selected; }

Segment* SegmentedMethods::segment_at(const Self& self, NSUInteger index) {
  auto& segments = self.parts().segments;
  return segments.empty() ? nullptr : &segments[std::min<NSUInteger>(index, segments.size() - 1)];
}

void SegmentedMethods::content_changed(const Self& self) {
  self.invalidateIntrinsicContentSize();
  self.setNeedsLayout();
}

namespace {

using Self = SegmentedControl;
using M = SegmentedMethods;

void set_title(Segment& segment, const NSString& title) {
  segment.title = title;
  segment.image = UIImage();
  segment.label.setText(title);
  segment.picture.setImage(UIImage());
}
void set_image(Segment& segment, const UIImage& image) {
  segment.title = NSString();
  segment.image = image;
  segment.label.setText(NSString());
  // A picture without a wish of its own takes the text's colour here.
  const bool plain = image && image.renderingMode() == UIImageRenderingMode::Automatic;
  segment.picture.setImage(plain ? image.imageWithRenderingMode(UIImageRenderingMode::AlwaysTemplate)
                                 : image);
}

void insert(const Self& self, NSUInteger index, bool animated, auto set_content) {
  SegmentedState& state = self.parts();
  index = std::min<NSUInteger>(index, state.segments.size());
  Segment segment = M::make_segment(self);
  set_content(segment);
  state.segments.insert(state.segments.begin() + static_cast<std::ptrdiff_t>(index), std::move(segment));
  if (state.selected >= static_cast<NSInteger>(index)) ++state.selected;
  M::content_changed(self);
  if (animated) M::slide(self);
}

}  // namespace

void SegmentedControl::insert_title(const NSString& title, NSUInteger index, bool animated) const {
  insert(*this, index, animated, [&](Segment& segment) { set_title(segment, title); });
}
void SegmentedControl::insert_image(const UIImage& image, NSUInteger index, bool animated) const {
  insert(*this, index, animated, [&](Segment& segment) { set_image(segment, image); });
}

void SegmentedControl::remove(NSUInteger index, bool animated) const {
  SegmentedState& state = parts();
  if (state.segments.empty()) return;
  index = std::min<NSUInteger>(index, state.segments.size() - 1);
  const auto place = state.segments.begin() + static_cast<std::ptrdiff_t>(index);
  place->label.removeFromSuperview();
  place->picture.removeFromSuperview();
  state.segments.erase(place);
  const auto removed = static_cast<NSInteger>(index);
  if (state.selected == removed) state.selected = kNoSegment;
  if (state.selected > removed) --state.selected;
  SegmentedMethods::content_changed(*this);
  if (animated) SegmentedMethods::slide(*this);
}

void SegmentedControl::removeAllSegments() const {
  while (numberOfSegments() > 0) remove(numberOfSegments() - 1, false);
}

void SegmentedControl::setSelectedSegmentIndex(NSInteger index) const {
  SegmentedState& state = parts();
  if (index < kNoSegment || index >= static_cast<NSInteger>(state.segments.size())) return;
  if (state.selected == index) return;
  state.selected = index;
  SegmentedMethods::show(*this);
}

void SegmentedControl::setTitle(const NSString& title, NSUInteger index) const {
  Segment* const segment = SegmentedMethods::segment_at(*this, index);
  if (segment == nullptr) return;
  set_title(*segment, title);
  SegmentedMethods::content_changed(*this);
}
void SegmentedControl::setImage(const UIImage& image, NSUInteger index) const {
  Segment* const segment = SegmentedMethods::segment_at(*this, index);
  if (segment == nullptr) return;
  set_image(*segment, image);
  SegmentedMethods::content_changed(*this);
}
NSString SegmentedControl::title(NSUInteger index) const {
  const Segment* const segment = SegmentedMethods::segment_at(*this, index);
  return segment != nullptr ? segment->title : NSString();
}
UIImage SegmentedControl::image(NSUInteger index) const {
  const Segment* const segment = SegmentedMethods::segment_at(*this, index);
  return segment != nullptr ? segment->image : UIImage();
}
void SegmentedControl::setEnabledForSegment(bool enabled, NSUInteger index) const {
  Segment* const segment = SegmentedMethods::segment_at(*this, index);
  if (segment == nullptr) return;
  segment->enabled = enabled;
  SegmentedMethods::show(*this);
}
bool SegmentedControl::isEnabledForSegment(NSUInteger index) const {
  const Segment* const segment = SegmentedMethods::segment_at(*this, index);
  return segment != nullptr && segment->enabled;
}
void SegmentedControl::setSelectedSegmentTintColor(const UIColor& colour) const {
  parts().selected_tint = colour;
  SegmentedMethods::show(*this);
}
Rect SegmentedControl::segment_rect(NSUInteger index) const {
  const std::vector<Rect> all = SegmentedMethods::rects(*this);
  return index < all.size() ? all[index] : Rect{};
}

namespace {

struct Messages {
  static Self initWithFrame(objc::Allocated<Self> self, const Rect& frame) {
    Self view = std::move(self).initialize_super<"initWithFrame:">(frame);
    if (!view) return view;
    constexpr double kPillRadius = 7;
    view.layer().setCornerRadius(9);
    View& pill = view.parts().pill;
    pill = View::make();
    pill.setUserInteractionEnabled(false);
    pill.setAlpha(0);
    const Layer layer = pill.layer();
    layer.setCornerRadius(kPillRadius);
    objc::send<"setShadowOpacity:">(layer, 0.12F);
    objc::send<"setShadowRadius:">(layer, 4.0);
    objc::send<"setShadowOffset:">(layer, Size{0, 3});
    view.addSubview(pill);
    return view;
  }
  static Self initWithItems(objc::Allocated<Self> self, const NSArray& items) {
    Self view = std::move(self).initialize<"initWithFrame:">(Rect{});
    for (NSUInteger i = 0, count = items.count(); view && i < count; ++i) {
      const NSObject item = items.objectAtIndex(i);
      if (const auto title = objc::cast_or_nil<NSString>(item)) {
        view.insert_title(title, i, false);
      } else {
        view.insert_image(item.as<UIImage>(), i, false);
      }
    }
    if (view) view.sizeToFit();
    return view;
  }

  static NSInteger segment_under(const Self& self, const Touch& touch) {
    const std::vector<Rect> all = M::rects(self);
    const Point place = touch.locationInView(self);
    for (std::size_t i = 0; i < all.size(); ++i) {
      if (place.x >= all[i].min_x() && place.x < all[i].max_x()) return static_cast<NSInteger>(i);
    }
    return SegmentedControl::kNoSegment;
  }
  static bool can_choose(const Self& self, NSInteger index) {
    return index >= 0 && self.isEnabledForSegment(static_cast<NSUInteger>(index));
  }
  static void choose(const Self& self, NSInteger index, const NSObject& event) {
    const Self kept = self;
    SegmentedState& state = kept.parts();
    const bool changed = state.selected != index || state.momentary;
    state.selected = index;
    M::slide(kept);
    if (changed) kept.send_actions(control_event::kValueChanged, event);
    // Who hears of it reads which segment it was; afterwards none is.
    if (state.momentary) state.selected = SegmentedControl::kNoSegment;
  }

  static bool beginTracking(const Self& self, const Touch& touch, const Event&) {
    SegmentedState& state = self.parts();
    const NSInteger index = segment_under(self, touch);
    if (!can_choose(self, index)) return false;
    state.pressed = index;
    state.drags_pill = index == state.selected && !state.momentary;
    M::slide(self);
    return true;
  }
  static bool continueTracking(const Self& self, const Touch& touch, const Event&) {
    SegmentedState& state = self.parts();
    NSInteger index = self.control().inside ? segment_under(self, touch) : SegmentedControl::kNoSegment;
    // The pill stays where it was last while the finger is over what cannot be chosen.
    if (!can_choose(self, index)) index = state.drags_pill ? state.pressed : SegmentedControl::kNoSegment;
    if (std::exchange(state.pressed, index) != index) M::slide(self);
    return true;
  }
  static void endTracking(const Self& self, const Touch&, const Event& event) {
    SegmentedState& state = self.parts();
    const NSInteger index = std::exchange(state.pressed, SegmentedControl::kNoSegment);
    state.drags_pill = false;
    if (index >= 0 && self.control().inside) {
      choose(self, index, event);
    } else {
      M::slide(self);
    }
  }
  static void cancelTracking(const Self& self, const Event&) {
    self.parts().pressed = SegmentedControl::kNoSegment;
    self.parts().drags_pill = false;
    M::slide(self);
  }

  /// Arrows go to the next segment that can be chosen.
  static bool handleKey(const Self& self, const Key& key) {
    if (!self.isEnabled() || focused_view() != self) return false;
    if (key.code() != KeyCode::Left && key.code() != KeyCode::Right) return false;
    const bool forward = (key.code() == KeyCode::Right) != self.is_right_to_left();
    const auto count = static_cast<NSInteger>(self.numberOfSegments());
    NSInteger index = self.parts().selected;
    if (index < 0 && !forward) index = count;
    for (index += forward ? 1 : -1; index >= 0 && index < count; index += forward ? 1 : -1) {
      if (!can_choose(self, index)) continue;
      choose(self, index, NSObject());
      break;
    }
    return true;
  }

  static void layoutSubviews(const Self& self) {
    objc::send_super<"layoutSubviews">(self, objc::class_for<Control>());
    M::show(self);
  }
  static Size intrinsicContentSize(const Self& self) { return M::sizeThatFits(self, {}); }
  static void stateChanged(const Self& self) { M::show(self); }
  static bool isMomentary(const Self& self) { return self.parts().momentary; }
  static void setMomentary(const Self& self, bool momentary) {
    self.parts().momentary = momentary;
    if (momentary) self.parts().selected = SegmentedControl::kNoSegment;
    M::show(self);
  }
  static UIColor selectedTint(const Self& self) { return self.parts().selected_tint; }
  static bool byContent(const Self& self) { return self.parts().by_content; }
  static void setByContent(const Self& self, bool by_content) {
    self.parts().by_content = by_content;
    M::content_changed(self);
  }
  static double width(const Self& self, NSUInteger index) {
    const Segment* const segment = M::segment_at(self, index);
    return segment != nullptr ? segment->width : 0;
  }
  static void setWidth(const Self& self, double width, NSUInteger index) {
    Segment* const segment = M::segment_at(self, index);
    if (segment == nullptr) return;
    segment->width = std::max(0.0, width);
    M::content_changed(self);
  }
  static NSDictionary titleAttributes(const Self& self, NSUInteger state) {
    const auto found = self.parts().attributes.find(state);
    return found != self.parts().attributes.end() ? found->second : NSDictionary();
  }
  static void setTitleAttributes(const Self& self, const NSDictionary& attributes, NSUInteger state) {
    self.parts().attributes[state] = attributes;
    M::content_changed(self);
  }
};

}  // namespace

void SegmentedControl::define() {
  using T = Messages;
  objc::Class<SegmentedControl> control;
  control.state<SegmentedState>()
      .initializer<"initWithFrame:", &T::initWithFrame>()
      .initializer<"initWithItems:", &T::initWithItems>()
      .method<"numberOfSegments", &SegmentedControl::numberOfSegments>()
      .method<"selectedSegmentIndex", &SegmentedControl::selectedSegmentIndex>()
      .method<"setSelectedSegmentIndex:", &SegmentedControl::setSelectedSegmentIndex>()
      .method<"insertSegmentWithTitle:atIndex:animated:", &SegmentedControl::insert_title>()
      .method<"insertSegmentWithImage:atIndex:animated:", &SegmentedControl::insert_image>()
      .method<"removeSegmentAtIndex:animated:", &SegmentedControl::remove>()
      .method<"removeAllSegments", &SegmentedControl::removeAllSegments>()
      .method<"setTitle:forSegmentAtIndex:", &SegmentedControl::setTitle>()
      .method<"titleForSegmentAtIndex:", &SegmentedControl::title>()
      .method<"setImage:forSegmentAtIndex:", &SegmentedControl::setImage>()
      .method<"imageForSegmentAtIndex:", &SegmentedControl::image>()
      .method<"setEnabled:forSegmentAtIndex:", &SegmentedControl::setEnabledForSegment>()
      .method<"isEnabledForSegmentAtIndex:", &SegmentedControl::isEnabledForSegment>()
      .method<"setWidth:forSegmentAtIndex:", &T::setWidth>()
      .method<"widthForSegmentAtIndex:", &T::width>()
      .method<"isMomentary", &T::isMomentary>()
      .method<"setMomentary:", &T::setMomentary>()
      .method<"selectedSegmentTintColor", &T::selectedTint>()
      .method<"setSelectedSegmentTintColor:", &SegmentedControl::setSelectedSegmentTintColor>()
      .method<"apportionsSegmentWidthsByContent", &T::byContent>()
      .method<"setApportionsSegmentWidthsByContent:", &T::setByContent>()
      .method<"titleTextAttributesForState:", &T::titleAttributes>()
      .method<"setTitleTextAttributes:forState:", &T::setTitleAttributes>();
  control.method<"sizeThatFits:", &M::sizeThatFits>()
      .method<"intrinsicContentSize", &T::intrinsicContentSize>()
      .method<"layoutSubviews", &T::layoutSubviews>()
      .method<"beginTrackingWithTouch:withEvent:", &T::beginTracking>()
      .method<"continueTrackingWithTouch:withEvent:", &T::continueTracking>()
      .method<"endTrackingWithTouch:withEvent:", &T::endTracking>()
      .method<"cancelTrackingWithEvent:", &T::cancelTracking>()
      .method<"_controlStateChanged", &T::stateChanged>()
      .method<"_handleKey:", &T::handleKey>()
      .register_class();
  set_painter(objc::class_for<SegmentedControl>(), &M::paint);
}

}  // namespace wispen::uikit
