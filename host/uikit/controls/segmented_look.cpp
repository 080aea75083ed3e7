// host/uikit/controls/segmented_look.cpp: where a segmented control's parts lie, and how they look.

#include <algorithm>

#include "host/uikit/controls/segmented_control.hpp"
#include "host/uikit/values/attributed_text.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/font.hpp"
#include "host/uikit/values/image.hpp"
#include "host/uikit/view/animation.hpp"
#include "host/uikit/view/look.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

namespace {

constexpr double kHeight = 32;
constexpr double kRadius = 9;
constexpr double kPillMargin = 2;
constexpr double kSidePadding = 12;  // of a title, on either side
constexpr double kLeastWidth = 32;
constexpr double kSeparatorMargin = 8;  // above and below
constexpr double kFontSize = 13;
constexpr double kSlideSeconds = 0.25;
constexpr double kPressedAlpha = 0.35;
constexpr double kPressedScale = 0.95;

UIColor dynamic(const graphics::Colour& light, const graphics::Colour& dark) {
  return color_from(graphics::Colour::dynamic(light, dark));
}
UIColor pill_colour() { return dynamic(graphics::Colour::hex(0xFFFFFF), graphics::Colour::hex(0x636366)); }
graphics::Colour separator_colour() {
  return graphics::Colour::dynamic(graphics::Colour::hex(0x8E8E93, 0.3),
                                   graphics::Colour::hex(0x8E8E93, 0.4));
}

}  // namespace

NSDictionary SegmentedControl::attributes_for(UIControlState state) const {
  for (const UIControlState wanted : {state, UIControlStateNormal}) {
    const auto found = attributes_.find(wanted);
    if (found != attributes_.end()) return found->second;
  }
  return NSDictionary();
}

NSInteger SegmentedControl::shown() { return drags_pill_ || momentary_ ? pressed_ : selected_; }

Size SegmentedControl::content_size(const Segment& segment) {
  if (const graphics::Image* const image = image_of(segment.image)) return image->size();
  return segment.label.sizeThatFits({});
}

std::vector<Rect> SegmentedControl::rects() {
  const Rect bounds = self().bounds();
  std::vector<double> widths;
  double fixed = 0;
  double content = 0;
  std::size_t open = 0;
  for (const Segment& segment : segments_) {
    const double own = segment.width > 0 ? segment.width : 0;
    widths.push_back(own > 0 ? own : content_size(segment).width + 2 * kSidePadding);
    fixed += own;
    if (own > 0) continue;
    ++open;
    content += widths.back();
  }
  const double room = std::max(0.0, bounds.width() - fixed);
  std::vector<Rect> all;
  double x = bounds.min_x();
  for (std::size_t i = 0; i < widths.size(); ++i) {
    double width = widths[i];
    if (segments_[i].width <= 0) {
      const bool in_proportion = by_content_ && content > 0;
      width = in_proportion ? room * width / content : room / static_cast<double>(open);
    }
    all.push_back({{x, bounds.min_y()}, {width, bounds.height()}});
    x += width;
  }
  if (is_right_to_left(self())) {
    for (Rect& rect : all) rect.origin.x = bounds.min_x() + bounds.max_x() - rect.max_x();
  }
  return all;
}

Size SegmentedControl::sizeThatFits(const Size&) {
  double widest = kLeastWidth;
  double together = 0;
  for (const Segment& segment : segments_) {
    const double width = segment.width > 0 ? segment.width : content_size(segment).width + 2 * kSidePadding;
    widest = std::max(widest, width);
    together += std::max(width, kLeastWidth);
  }
  const double width = by_content_ ? together : widest * static_cast<double>(segments_.size());
  return {ceil_to_pixel(width, display_settings().scale), kHeight};
}

Segment SegmentedControl::make_segment() {
  Segment segment;
  segment.label = objc::make<UILabel>();
  segment.label.setTextAlignment(NSTextAlignment::Center);
  segment.picture = objc::make<UIImageView>();
  self().addSubview(segment.label);
  self().addSubview(segment.picture);
  return segment;
}

void SegmentedControl::show() {
  const std::vector<Rect> all = rects();
  const NSInteger chosen = shown();
  const bool any = chosen >= 0 && chosen < static_cast<NSInteger>(all.size());
  const bool pressed_chosen = any && pressed_ == chosen && !momentary_;
  pill_.setBackgroundColor(selected_tint_ ? selected_tint_ : pill_colour());
  pill_.setAlpha(any ? (self().isEnabled() ? 1 : 0.5) : 0);
  if (any) {
    const Rect rect = all[static_cast<std::size_t>(chosen)].inset(kPillMargin, kPillMargin);
    pill_.setBounds(Rect{{0, 0}, rect.size});
    pill_.setCenter(Point{rect.mid_x(), rect.mid_y()});
    pill_.setTransform(pressed_chosen ? AffineTransform::scaling(kPressedScale, kPressedScale)
                                      : AffineTransform());
  }
  for (std::size_t i = 0; i < all.size(); ++i) {
    const Segment& segment = segments_[i];
    const bool is_chosen = any && static_cast<NSInteger>(i) == chosen;
    const bool enabled = segment.enabled && self().isEnabled();
    const NSDictionary attributes = attributes_for(!enabled    ? UIControlStateDisabled
                                                   : is_chosen ? UIControlStateSelected
                                                               : UIControlStateNormal);
    const auto font = objc::cast_or_nil<UIFont>(attributes.objectForKey(NSFontAttributeName));
    const auto colour = objc::cast_or_nil<UIColor>(attributes.objectForKey(NSForegroundColorAttributeName));
    const double weight = is_chosen ? graphics::font_weight::kSemibold : graphics::font_weight::kMedium;
    segment.label.setFont(font ? font : font_from(graphics::Font::system(kFontSize, weight)));
    const UIColor own = enabled ? UIColor::labelColor() : UIColor::tertiaryLabelColor();
    segment.label.setTextColor(colour ? colour : own);
    segment.picture.setTintColor(colour ? colour : own);
    const bool pressed = pressed_ == static_cast<NSInteger>(i) && !is_chosen;
    segment.label.setAlpha(pressed ? kPressedAlpha : 1);
    segment.picture.setAlpha(pressed ? kPressedAlpha : enabled ? 1 : 0.5);
    const Rect room = all[i].inset(kPillMargin, kPillMargin);
    segment.label.setFrame(room.inset(std::min(2.0, room.width() / 2), 0));
    segment.picture.setFrame(room);
    // A picture that is too large is seen whole, in its own proportions.
    const Size size = content_size(segment);
    const bool fits = size.width <= room.width() && size.height <= room.height();
    segment.picture.setContentMode(fits ? UIViewContentMode::Center : UIViewContentMode::ScaleAspectFit);
  }
  self().setNeedsDisplay();
}

void SegmentedControl::slide() {
  AnimationEngine* const engine = AnimationEngine::current();
  if (engine == nullptr || !self().window()) return show();
  engine->animate({.duration = kSlideSeconds}, [&] { show(); });
}

void SegmentedControl::paint(graphics::Canvas& canvas, const Rect& bounds) {
  const Rect frame{bounds.origin, bounds.size};
  canvas.fill(graphics::Path::rounded_rect(frame, kRadius), colour_of(UIColor::tertiarySystemFillColor()));
  const std::vector<Rect> all = rects();
  const NSInteger chosen = shown();
  for (std::size_t i = 1; i < all.size(); ++i) {
    const auto right = static_cast<NSInteger>(i);
    // Beside the pill its own edge parts the segments.
    if (chosen == right || chosen == right - 1) continue;
    const double edge = is_right_to_left(self()) ? all[i].max_x() : all[i].min_x();
    const double x = round_to_pixel(edge - 0.5, canvas.scale());
    canvas.fill(Rect{{x, bounds.min_y() + kSeparatorMargin}, {1, bounds.height() - 2 * kSeparatorMargin}},
                separator_colour());
  }
}

}  // namespace wispen::uikit
