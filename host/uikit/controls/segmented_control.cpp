// host/uikit/controls/segmented_control.cpp: UISegmentedControl: one of a few, side by side.

#include "host/uikit/controls/segmented_control.hpp"

#include <algorithm>
#include <utility>

#include "host/uikit/controls/control.hpp"
#include "host/uikit/view/events/focus.hpp"
#include "host/uikit/view/hooks.hpp"
#include "host/uikit/view/look.hpp"
#include "host/uikit/view/painting/painter.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

namespace {

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

}  // namespace

UISegmentedControl SegmentedControl::initWithFrame(objc::Allocated<UISegmentedControl> self,
                                                   const Rect& frame) {
  UISegmentedControl view = super_init<"initWithFrame:">(std::move(self), frame);
  if (!view) return view;
  constexpr double kPillRadius = 7;
  view.layer().setCornerRadius(9);
  UIView& pill = of(view).pill_;
  pill = objc::make<UIView>();
  pill.setUserInteractionEnabled(false);
  pill.setAlpha(0);
  pill.layer().setCornerRadius(kPillRadius);
  look::cast_thumb_shadow(pill.layer(), look::kSegmentShadow);
  view.addSubview(pill);
  return view;
}

UISegmentedControl SegmentedControl::initWithItems(objc::Allocated<UISegmentedControl> self,
                                                   const NSArray& items) {
  UISegmentedControl view = std::move(self).initialize<"initWithFrame:">(Rect{});
  for (NSUInteger i = 0, count = items.count(); view && i < count; ++i) {
    const NSObject item = items.objectAtIndex(i);
    if (const auto title = objc::cast_or_nil<NSString>(item)) {
      of(view).insert_title(title, i, false);
    } else {
      of(view).insert_image(item.as<UIImage>(), i, false);
    }
  }
  if (view) view.sizeToFit();
  return view;
}

NSInteger SegmentedControl::segment_under(const UITouch& touch) {
  const std::vector<Rect> all = rects();
  const Point point = touch.locationInView(self());
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (point.x >= all[i].min_x() && point.x < all[i].max_x()) return static_cast<NSInteger>(i);
  }
  return UISegmentedControlNoSegment;
}

bool SegmentedControl::can_choose(NSInteger index) {
  return index >= 0 && isEnabledForSegment(static_cast<NSUInteger>(index));
}

void SegmentedControl::choose(NSInteger index, const NSObject& event) {
  const UISegmentedControl kept = self();
  const bool changed = selected_ != index || momentary_;
  selected_ = index;
  slide();
  if (changed) send_actions(kept, UIControlEventValueChanged, event);
  // Who hears of it reads which segment it was; afterwards none is.
  if (momentary_) selected_ = UISegmentedControlNoSegment;
}

bool SegmentedControl::beginTracking(const UITouch& touch, const UIEvent&) {
  const NSInteger index = segment_under(touch);
  if (!can_choose(index)) return false;
  pressed_ = index;
  drags_pill_ = index == selected_ && !momentary_;
  slide();
  return true;
}

bool SegmentedControl::continueTracking(const UITouch& touch, const UIEvent&) {
  NSInteger index = self().isTouchInside() ? segment_under(touch) : UISegmentedControlNoSegment;
  // The pill stays where it was last while the finger is over what cannot be chosen.
  if (!can_choose(index)) index = drags_pill_ ? pressed_ : UISegmentedControlNoSegment;
  if (std::exchange(pressed_, index) != index) slide();
  return true;
}

void SegmentedControl::endTracking(const UITouch&, const UIEvent& event) {
  const NSInteger index = std::exchange(pressed_, UISegmentedControlNoSegment);
  drags_pill_ = false;
  if (index >= 0 && self().isTouchInside()) {
    choose(index, event);
  } else {
    slide();
  }
}

void SegmentedControl::cancelTracking(const UIEvent&) {
  pressed_ = UISegmentedControlNoSegment;
  drags_pill_ = false;
  slide();
}

bool SegmentedControl::handleKey(const UIKey& key) {
  if (!self().isEnabled() || focused_view() != self()) return false;
  if (key.press().code != KeyCode::Left && key.press().code != KeyCode::Right) return false;
  const bool forward = (key.press().code == KeyCode::Right) != is_right_to_left(self());
  const auto count = static_cast<NSInteger>(numberOfSegments());
  NSInteger index = selected_;
  if (index < 0 && !forward) index = count;
  for (index += forward ? 1 : -1; index >= 0 && index < count; index += forward ? 1 : -1) {
    if (!can_choose(index)) continue;
    choose(index, NSObject());
    break;
  }
  return true;
}

void SegmentedControl::layoutSubviews() {
  super<"layoutSubviews">();
  show();
}

void SegmentedControl::setMomentary(bool momentary) {
  momentary_ = momentary;
  if (momentary) selected_ = UISegmentedControlNoSegment;
  show();
}

void SegmentedControl::setByContent(bool by_content) {
  by_content_ = by_content;
  content_changed();
}

double SegmentedControl::width(NSUInteger index) {
  const Segment* const segment = segment_at(index);
  return segment != nullptr ? segment->width : 0;
}

void SegmentedControl::setWidth(double width, NSUInteger index) {
  Segment* const segment = segment_at(index);
  if (segment == nullptr) return;
  segment->width = std::max(0.0, width);
  content_changed();
}

NSDictionary SegmentedControl::titleAttributes(UIControlState state) {
  const auto found = attributes_.find(state);
  return found != attributes_.end() ? found->second : NSDictionary();
}

void SegmentedControl::setTitleAttributes(const NSDictionary& attributes, UIControlState state) {
  attributes_[state] = attributes;
  content_changed();
}

Segment* SegmentedControl::segment_at(NSUInteger index) {
  return segments_.empty() ? nullptr : &segments_[std::min<NSUInteger>(index, segments_.size() - 1)];
}

void SegmentedControl::content_changed() {
  self().invalidateIntrinsicContentSize();
  self().setNeedsLayout();
}

void SegmentedControl::insert(NSUInteger index, bool animated,
                              const std::function<void(Segment&)>& set_content) {
  index = std::min<NSUInteger>(index, segments_.size());
  Segment segment = make_segment();
  set_content(segment);
  segments_.insert(segments_.begin() + static_cast<std::ptrdiff_t>(index), std::move(segment));
  if (selected_ >= static_cast<NSInteger>(index)) ++selected_;
  content_changed();
  if (animated) slide();
}

void SegmentedControl::insert_title(const NSString& title, NSUInteger index, bool animated) {
  insert(index, animated, [&](Segment& segment) { set_title(segment, title); });
}
void SegmentedControl::insert_image(const UIImage& image, NSUInteger index, bool animated) {
  insert(index, animated, [&](Segment& segment) { set_image(segment, image); });
}

void SegmentedControl::remove(NSUInteger index, bool animated) {
  if (segments_.empty()) return;
  index = std::min<NSUInteger>(index, segments_.size() - 1);
  const auto place = segments_.begin() + static_cast<std::ptrdiff_t>(index);
  place->label.removeFromSuperview();
  place->picture.removeFromSuperview();
  segments_.erase(place);
  const auto removed = static_cast<NSInteger>(index);
  if (selected_ == removed) selected_ = UISegmentedControlNoSegment;
  if (selected_ > removed) --selected_;
  content_changed();
  if (animated) slide();
}

void SegmentedControl::removeAllSegments() {
  while (numberOfSegments() > 0) remove(numberOfSegments() - 1, false);
}

void SegmentedControl::setSelectedSegmentIndex(NSInteger index) {
  if (index < UISegmentedControlNoSegment || index >= static_cast<NSInteger>(segments_.size())) return;
  if (selected_ == index) return;
  selected_ = index;
  show();
}

void SegmentedControl::setTitle(const NSString& title, NSUInteger index) {
  Segment* const segment = segment_at(index);
  if (segment == nullptr) return;
  set_title(*segment, title);
  content_changed();
}

void SegmentedControl::setImage(const UIImage& image, NSUInteger index) {
  Segment* const segment = segment_at(index);
  if (segment == nullptr) return;
  set_image(*segment, image);
  content_changed();
}

NSString SegmentedControl::title(NSUInteger index) {
  const Segment* const segment = segment_at(index);
  return segment != nullptr ? segment->title : NSString();
}

UIImage SegmentedControl::image(NSUInteger index) {
  const Segment* const segment = segment_at(index);
  return segment != nullptr ? segment->image : UIImage();
}

void SegmentedControl::setEnabledForSegment(bool enabled, NSUInteger index) {
  Segment* const segment = segment_at(index);
  if (segment == nullptr) return;
  segment->enabled = enabled;
  show();
}

bool SegmentedControl::isEnabledForSegment(NSUInteger index) {
  const Segment* const segment = segment_at(index);
  return segment != nullptr && segment->enabled;
}

void SegmentedControl::setSelectedSegmentTintColor(const UIColor& colour) {
  selected_tint_ = colour;
  show();
}

Rect SegmentedControl::segment_rect(NSUInteger index) {
  const std::vector<Rect> all = rects();
  return index < all.size() ? all[index] : Rect{};
}

void define_segmented_control() {
  auto control = objc::Class<UISegmentedControl>::implemented_by<SegmentedControl>();
  control.initializer<"initWithFrame:", &SegmentedControl::initWithFrame>()
      .initializer<"initWithItems:", &SegmentedControl::initWithItems>()
      .method<"numberOfSegments", &SegmentedControl::numberOfSegments>()
      .getter<"selectedSegmentIndex", &SegmentedControl::selected_>()
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
      .method<"setWidth:forSegmentAtIndex:", &SegmentedControl::setWidth>()
      .method<"widthForSegmentAtIndex:", &SegmentedControl::width>()
      .getter<"isMomentary", &SegmentedControl::momentary_>()
      .method<"setMomentary:", &SegmentedControl::setMomentary>()
      .getter<"selectedSegmentTintColor", &SegmentedControl::selected_tint_>()
      .method<"setSelectedSegmentTintColor:", &SegmentedControl::setSelectedSegmentTintColor>()
      .getter<"apportionsSegmentWidthsByContent", &SegmentedControl::by_content_>()
      .method<"setApportionsSegmentWidthsByContent:", &SegmentedControl::setByContent>()
      .method<"titleTextAttributesForState:", &SegmentedControl::titleAttributes>()
      .method<"setTitleTextAttributes:forState:", &SegmentedControl::setTitleAttributes>();
  control.method<"sizeThatFits:", &SegmentedControl::sizeThatFits>()
      .method<"intrinsicContentSize", &SegmentedControl::intrinsicContentSize>()
      .method<"layoutSubviews", &SegmentedControl::layoutSubviews>()
      .method<"beginTrackingWithTouch:withEvent:", &SegmentedControl::beginTracking>()
      .method<"continueTrackingWithTouch:withEvent:", &SegmentedControl::continueTracking>()
      .method<"endTrackingWithTouch:withEvent:", &SegmentedControl::endTracking>()
      .method<"cancelTrackingWithEvent:", &SegmentedControl::cancelTracking>()
      .method<hooks::kControlStateChanged, &SegmentedControl::stateChanged>()
      .method<hooks::kHandleKey, &SegmentedControl::handleKey>()
      .register_class();
  set_painter<&SegmentedControl::paint>();
}

}  // namespace wispen::uikit
