// host/uikit/containers/controllers/navigation_bar.cpp: UINavigationBar: title, way back and buttons at the
// top of a page.

#include "host/uikit/containers/controllers/navigation_bar.hpp"

#include <algorithm>

#include "host/foundation/arrays.hpp"
#include "host/graphics/canvas.hpp"
#include "host/uikit/containers/controllers/navigation_item.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/font.hpp"
#include "host/uikit/view/hooks.hpp"
#include "host/uikit/view/painting/painter.hpp"
#include "host/uikit/view/painting/panes.hpp"
#include "host/uikit/view/session.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

namespace {

constexpr double kMargin = 16;
constexpr double kBackMargin = 8;
constexpr double kGap = 8;
constexpr double kFadeDistance = 10;  // points of scrolling until the background is whole
constexpr double kFadeSeconds = 0.3;

UIButton text_button(const NSString& title, bool bold) {
  const UIButton button = UIButton::buttonWithType(UIButtonType::System);
  button.setTitle(title, UIControlStateNormal);
  const double weight = bold ? graphics::font_weight::kSemibold : graphics::font_weight::kRegular;
  button.titleLabel().setFont(font_from(graphics::Font::system(17, weight)));
  return button;
}

}  // namespace

UINavigationBar NavigationBar::initWithFrame(objc::Allocated<UINavigationBar> self, const Rect& frame) {
  UINavigationBar bar = super_init<"initWithFrame:">(std::move(self), frame);
  if (!bar) return bar;
  of(bar).large_area_ = objc::make<UIView>();
  of(bar).large_area_.setClipsToBounds(true);
  of(bar).large_title_ = objc::make<UILabel>();
  of(bar).large_title_.setFont(font_from(graphics::Font::system(34, graphics::font_weight::kBold)));
  of(bar).large_area_.addSubview(of(bar).large_title_);
  of(bar).content_ = objc::make<UIView>();
  bar.addSubview(of(bar).large_area_);
  bar.addSubview(of(bar).content_);
  return bar;
}

void NavigationBar::build(bool animated) {
  const UIView old = content_;
  // A title view is one object: it moves to the new content, and is not faded out with the old.
  const UIView content = UIView::alloc().initWithFrame(old.frame());
  content_ = content;
  left_.clear();
  right_.clear();
  title_ = UIView();
  back_ = UIButton();
  self().insertSubview(content, static_cast<NSInteger>(self().subviews().count()));
  if (!items_.empty()) fill(content);
  if (animated) {
    content.setAlpha(0);
    AnimationEngine::current()->animate(
        {.duration = kFadeSeconds},
        [&] {
          content.setAlpha(1);
          old.setAlpha(0);
        },
        [old](bool) { old.removeFromSuperview(); });
  } else {
    old.removeFromSuperview();
  }
  self().setNeedsLayout();
}

void NavigationBar::fill(const UIView& content) {
  const NavigationItem& item = NavigationItem::of(items_.back());
  if (items_.size() > 1 && !item.hidesBackButton() && item.left().empty()) {
    const NavigationItem& before = NavigationItem::of(items_[items_.size() - 2]);
    NSString title = before.backButtonTitle() ? before.backButtonTitle() : before.title();
    if (!title || title.length() == 0) title = "Back"_ns;
    back_ = text_button(title, false);
    const char* const chevron = is_right_to_left(self()) ? "chevron.right" : "chevron.left";
    back_.setImage(UIImage::systemImageNamed(NSString(chevron)), UIControlStateNormal);
    back_.addTarget(self(), objc::selector<"_backTapped">(), UIControlEventTouchUpInside);
    content.addSubview(back_);
  }
  for (const UIBarButtonItem& button : item.left()) left_.push_back(add_button(content, button));
  for (const UIBarButtonItem& button : item.right()) right_.push_back(add_button(content, button));
  if (item.titleView()) {
    title_ = item.titleView();
    // Its own size stands, if it has one; else it is fitted.
    if (Size(title_.bounds().size).empty()) title_.sizeToFit();
  } else {
    const UILabel label = objc::make<UILabel>();
    label.setText(item.title());
    label.setFont(font_from(graphics::Font::system(17, graphics::font_weight::kSemibold)));
    label.setTextAlignment(NSTextAlignment::Center);
    title_ = label;
  }
  content.addSubview(title_);
  large_title_.setText(item.title());
}

UIView NavigationBar::add_button(const UIView& content, const UIBarButtonItem& item) {
  if (const UIView custom = item.customView()) {
    if (Size(custom.bounds().size).empty()) custom.sizeToFit();
    content.addSubview(custom);
    return custom;
  }
  const UIButton button = text_button(item.title(), item.style() == UIBarButtonItemStyle::Done);
  if (const UIImage image = item.image()) button.setImage(image, UIControlStateNormal);
  button.setEnabled(item.isEnabled());
  if (const UIColor tint = item.tintColor()) button.setTintColor(tint);
  if (item.action()) button.addTarget(item.target(), item.action(), UIControlEventTouchUpInside);
  content.addSubview(button);
  return button;
}

void NavigationBar::layoutSubviews() {
  const Rect bounds = self().bounds();
  const double row = row_height();
  const double top = std::max(0.0, bounds.height() - row - extra());
  const EdgeInsets safe = self().safeAreaInsets();
  const double large = std::max(0.0, extra() - std::max(0.0, scrolled_));
  content_.setFrame(Rect{{0, top}, {bounds.width(), row}});
  large_area_.setFrame(Rect{{0, top + row}, {bounds.width(), large}});
  const double inner = bounds.width() - safe.left - safe.right - 2 * kMargin;
  large_title_.setFrame(Rect{{safe.left + kMargin, large - kLargeTitleHeight + 3}, {inner, 41}});
  large_title_.setHidden(extra() == 0);
  place_row(safe, row);
}

void NavigationBar::place_row(const EdgeInsets& safe, double row) {
  const double width = self().bounds().size.width;
  const bool turned = is_right_to_left(self());
  double leading = turned ? safe.right : safe.left;
  double trailing = turned ? safe.left : safe.right;
  const auto place = [&](const UIView& view, double from_leading, Size size) {
    const double x = turned ? width - from_leading - size.width : from_leading;
    view.setFrame(Rect{{x, round_to_pixel((row - size.height) / 2, display_settings().scale)}, size});
  };
  double used = leading + kMargin;
  if (back_) {
    Size size = back_.sizeThatFits({});
    size.width = std::min(size.width, width / 2 - kMargin);
    place(back_, leading + kBackMargin, {size.width, row});
    used = leading + kBackMargin + size.width + kGap;
  }
  for (const UIView& view : left_) {
    const Size size = size_of(view, row);
    place(view, used, size);
    used += size.width + kGap;
  }
  double used_trailing = trailing + kMargin;
  for (const UIView& view : right_) {
    const Size size = size_of(view, row);
    place(view, width - used_trailing - size.width, size);
    used_trailing += size.width + kGap;
  }
  if (!title_) return;
  const bool label = bool{objc::cast_or_nil<UILabel>(title_)} && !shows_item_view();
  const double room = std::max(0.0, width - used - used_trailing);
  Size size = label ? title_.sizeThatFits({}) : title_.bounds().size;
  size.width = std::min(size.width, room);
  // In the middle of the bar where that leaves the buttons alone, else in the middle of what is left.
  double x = (width - size.width) / 2;
  if (x < used || x + size.width > width - used_trailing) x = used + (room - size.width) / 2;
  x = round_to_pixel(x, display_settings().scale);
  if (turned) x = width - x - size.width;
  const double y = round_to_pixel((row - size.height) / 2, display_settings().scale);
  title_.setFrame(Rect{{x, y}, size});
  if (label) title_.setAlpha(title_alpha());
}

bool NavigationBar::shows_item_view() const {
  return !items_.empty() && NavigationItem::of(items_.back()).titleView() == title_;
}

Size NavigationBar::size_of(const UIView& view, double row) {
  if (objc::cast_or_nil<UIButton>(view)) return {view.sizeThatFits({}).width, row};
  return view.bounds().size;
}

void NavigationBar::didMoveToWindow() { note_pane(self()); }

void NavigationBar::backTapped() { objc::send<hooks::kGoBack>(back_target_.lock()); }

double NavigationBar::extra() { return shows_large_title() ? kLargeTitleHeight : 0; }

double NavigationBar::title_alpha() {
  if (!shows_large_title()) return 1;
  return std::clamp((scrolled_ - kLargeTitleHeight + 14) / 8, 0.0, 1.0);
}

double NavigationBar::background_alpha() {
  return std::clamp((scrolled_ - extra()) / kFadeDistance, 0.0, 1.0);
}

void NavigationBar::paint(graphics::Canvas& canvas, const Rect& bounds) {
  const double alpha = background_alpha();
  if (alpha <= 0) return;
  const Rect area{bounds.origin, {bounds.width(), bounds.height() - extra()}};
  constexpr int kChromeMaterial = 10;
  if (const UIColor tint = bar_tint_) {
    canvas.fill(area, colour_of(tint));
  } else {
    paint_pane(self(), canvas, area, graphics::blur_effect_material(kChromeMaterial));
  }
  const double line = 1 / canvas.scale();
  canvas.fill(Rect{{area.min_x(), area.max_y() - line}, {area.width(), line}},
              colour_of(UIColor::separatorColor()));
}

UINavigationItem NavigationBar::topItem() { return items_.empty() ? UINavigationItem() : items_.back(); }

UINavigationItem NavigationBar::backItem() {
  return items_.size() < 2 ? UINavigationItem() : items_[items_.size() - 2];
}

NSArray NavigationBar::items() { return array_of(items_); }

void NavigationBar::setPrefersLargeTitles(bool prefers) {
  prefers_large_titles_ = prefers;
  self().setNeedsLayout();
  if (const UIView above = self().superview()) above.setNeedsLayout();
}

void NavigationBar::setBarTintColor(const UIColor& colour) {
  bar_tint_ = colour;
  self().setNeedsDisplay();
}

bool NavigationBar::pointInside(const Point& point, const NSObject&) {
  // The empty room of a large title lets touches through to what scrolls below.
  return Rect(self().bounds()).contains(point) && point.y < self().bounds().size.height - extra();
}

double NavigationBar::row_height() {
  const Session* const session = Session::current();
  if (session == nullptr) return 44;
  const DeviceModel& device = session->device();
  if (device.is_pad()) return 50;
  return device.orientation == Orientation::Landscape ? 32 : 44;
}

bool NavigationBar::shows_large_title() {
  if (!prefers_large_titles_ || items_.empty()) return false;
  switch (NavigationItem::of(items_.back()).large_title_mode()) {
    case UINavigationItemLargeTitleDisplayMode::Always:
      return true;
    case UINavigationItemLargeTitleDisplayMode::Never:
      return false;
    default:
      return items_.size() == 1;
  }
}

void NavigationBar::set_items(std::vector<UINavigationItem> items, bool animated) {
  for (const UINavigationItem& item : items_) NavigationItem::of(item).set_bar(UINavigationBar());
  items_ = std::move(items);
  for (const UINavigationItem& item : items_) NavigationItem::of(item).set_bar(self());
  scrolled_ = 0;
  build(animated);
}

void NavigationBar::item_changed(const UINavigationItem& item) {
  if (topItem() == item || (items_.size() > 1 && backItem() == item)) build(false);
}

void NavigationBar::set_content_scrolled(double distance) {
  if (scrolled_ == distance) return;
  scrolled_ = distance;
  self().setNeedsLayout();
  self().setNeedsDisplay();
}

void define_navigation_bar() {
  objc::Class<UINavigationBar>::implemented_by<NavigationBar>()
      .initializer<"initWithFrame:", &NavigationBar::initWithFrame>()
      .method<"layoutSubviews", &NavigationBar::layoutSubviews>()
      .method<"pointInside:withEvent:", &NavigationBar::pointInside>()
      .method<"topItem", &NavigationBar::topItem>()
      .method<"backItem", &NavigationBar::backItem>()
      .method<"items", &NavigationBar::items>()
      .getter<"prefersLargeTitles", &NavigationBar::prefers_large_titles_>()
      .method<"setPrefersLargeTitles:", &NavigationBar::setPrefersLargeTitles>()
      .getter<"barTintColor", &NavigationBar::bar_tint_>()
      .method<"setBarTintColor:", &NavigationBar::setBarTintColor>()
      .property<"isTranslucent", "setTranslucent:", &NavigationBar::translucent_>()
      .property<"titleTextAttributes", "setTitleTextAttributes:", &NavigationBar::title_attributes_>()
      .method<"didMoveToWindow", &NavigationBar::didMoveToWindow>()
      .method<"_backTapped", &NavigationBar::backTapped>()
      .register_class();
  set_painter<&NavigationBar::paint>();
}

}  // namespace wispen::uikit
