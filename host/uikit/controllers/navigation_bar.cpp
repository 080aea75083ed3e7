// host/uikit/controllers/navigation_bar.cpp: UINavigationBar: title, way back and buttons at the top of a
// page.

#include "host/uikit/controllers/navigation_bar.hpp"

#include <algorithm>

#include "host/graphics/canvas.hpp"
#include "host/uikit/controls/button.hpp"
#include "host/uikit/controls/label.hpp"
#include "host/uikit/painting/painter.hpp"
#include "host/uikit/painting/panes.hpp"
#include "host/uikit/session.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/font.hpp"
#include "host/uikit/views/view_state.hpp"

namespace wispen::uikit {

struct NavigationBarState {
  std::vector<NavigationItem> items;
  View content;     // all that belongs to the top item
  View large_area;  // the large title slides out of it, under the row
  Label large_title;
  View title;  // a label, or the item's own view
  Button back;
  std::vector<View> left;
  std::vector<View> right;
  std::vector<View> placed_custom;
  objc::Weak<NSObject> back_target;
  bool prefers_large_titles = false;
  bool translucent = true;
  UIColor bar_tint;
  NSDictionary title_attributes;
  double scrolled = 0;
};

namespace {

constexpr double kMargin = 16;
constexpr double kBackMargin = 8;
constexpr double kGap = 8;
constexpr double kFadeDistance = 10;  // points of scrolling until the background is whole
constexpr double kFadeSeconds = 0.3;

Button text_button(const NSString& title, bool bold) {
  const Button button = Button::make(ButtonType::System);
  button.set_title(title);
  button.set_font(
      graphics::Font::system(17, bold ? graphics::font_weight::kSemibold : graphics::font_weight::kRegular));
  return button;
}

}  // namespace

NavigationBarState& NavigationBar::bar() const { return state<NavigationBarState>(); }

double NavigationBar::row_height() {
  const Session* const session = Session::current();
  if (session == nullptr) return 44;
  const DeviceModel& device = session->device();
  if (device.is_pad()) return 50;
  return device.orientation == Orientation::Landscape ? 32 : 44;
}

struct NavigationBarMethods {
  using Self = NavigationBar;

  static Self initWithFrame(objc::Allocated<Self> self, const Rect& frame) {
    Self bar = std::move(self).initialize_super<"initWithFrame:">(frame);
    if (!bar) return bar;
    NavigationBarState& state = bar.bar();
    state.large_area = View::make();
    state.large_area.setClipsToBounds(true);
    state.large_title = Label::make();
    state.large_title.setFont(font_from(graphics::Font::system(34, graphics::font_weight::kBold)));
    state.large_area.addSubview(state.large_title);
    state.content = View::make();
    bar.addSubview(state.large_area);
    bar.addSubview(state.content);
    return bar;
  }

  static void build(const Self& self, bool animated) {
    NavigationBarState& state = self.bar();
    const View old = state.content;
    // A title view is one object: it moves to the new content, and is not faded out with the old.
    const View content = View::make(old.frame());
    state.content = content;
    state.left.clear();
    state.right.clear();
    state.title = View();
    state.back = Button();
    self.insertSubviewAtIndex(content, static_cast<NSInteger>(self.subviews().size()));
    if (!state.items.empty()) fill(self, content);
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
    self.setNeedsLayout();
  }

  static void fill(const Self& self, const View& content) {
    NavigationBarState& state = self.bar();
    const NavigationItemState& item = state.items.back().parts();
    if (state.items.size() > 1 && !item.hides_back_button && item.left.empty()) {
      const NavigationItemState& before = state.items[state.items.size() - 2].parts();
      NSString title = before.back_title ? before.back_title : before.title;
      if (!title || title.length() == 0) title = "Back"_ns;
      state.back = text_button(title, false);
      const char* const chevron = self.is_right_to_left() ? "chevron.right" : "chevron.left";
      state.back.set_image(UIImage::systemImageNamed(NSString(chevron)));
      state.back.addTarget(self, objc::selector<"_backTapped">(), control_event::kTouchUpInside);
      content.addSubview(state.back);
    }
    for (const BarButtonItem& button : item.left) state.left.push_back(add_button(self, content, button));
    for (const BarButtonItem& button : item.right) state.right.push_back(add_button(self, content, button));
    if (item.title_view) {
      state.title = item.title_view;
      // Its own size stands, if it has one; else it is fitted.
      if (state.title.bounds().size.empty()) state.title.sizeToFit();
    } else {
      const Label label = Label::make();
      label.setText(item.title);
      label.setFont(font_from(graphics::Font::system(17, graphics::font_weight::kSemibold)));
      label.setTextAlignment(1);
      state.title = label;
    }
    content.addSubview(state.title);
    state.large_title.setText(item.title);
  }

  static View add_button(const Self& self, const View& content, const BarButtonItem& item) {
    const BarButtonItemState& parts = item.parts();
    if (parts.custom_view) {
      if (parts.custom_view.bounds().size.empty()) parts.custom_view.sizeToFit();
      content.addSubview(parts.custom_view);
      return parts.custom_view;
    }
    const Button button = text_button(parts.title, parts.style == 2);
    if (parts.image) button.set_image(parts.image);
    button.setEnabled(parts.enabled);
    if (parts.tint) button.setTintColor(parts.tint);
    const NSObject target = parts.target.lock();
    if (parts.action) button.addTarget(target, parts.action, control_event::kTouchUpInside);
    content.addSubview(button);
    (void)self;
    return button;
  }

  static void layoutSubviews(const Self& self) {
    NavigationBarState& state = self.bar();
    const Rect bounds = self.bounds();
    const double row = NavigationBar::row_height();
    const double top = std::max(0.0, bounds.height() - row - extra(self));
    const EdgeInsets safe = self.safeAreaInsets();
    const double large = std::max(0.0, extra(self) - std::max(0.0, state.scrolled));
    state.content.setFrame({{0, top}, {bounds.width(), row}});
    state.large_area.setFrame({{0, top + row}, {bounds.width(), large}});
    const double inner = bounds.width() - safe.left - safe.right - 2 * kMargin;
    state.large_title.setFrame(
        {{safe.left + kMargin, large - NavigationBar::kLargeTitleHeight + 3}, {inner, 41}});
    state.large_title.setHidden(extra(self) == 0);
    place_row(self, safe, row);
  }

  static void place_row(const Self& self, const EdgeInsets& safe, double row) {
    NavigationBarState& state = self.bar();
    const double width = self.bounds().width();
    const bool turned = self.is_right_to_left();
    double leading = turned ? safe.right : safe.left;
    double trailing = turned ? safe.left : safe.right;
    const auto place = [&](const View& view, double from_leading, Size size) {
      const double x = turned ? width - from_leading - size.width : from_leading;
      view.setFrame({{x, round_to_pixel((row - size.height) / 2, display_settings().scale)}, size});
    };
    double used = leading + kMargin;
    if (state.back) {
      Size size = state.back.sizeThatFits({});
      size.width = std::min(size.width, width / 2 - kMargin);
      place(state.back, leading + kBackMargin, {size.width, row});
      used = leading + kBackMargin + size.width + kGap;
    }
    for (const View& view : state.left) {
      const Size size = size_of(view, row);
      place(view, used, size);
      used += size.width + kGap;
    }
    double used_trailing = trailing + kMargin;
    for (const View& view : state.right) {
      const Size size = size_of(view, row);
      place(view, width - used_trailing - size.width, size);
      used_trailing += size.width + kGap;
    }
    if (!state.title) return;
    const bool label = bool{objc::cast_or_nil<Label>(state.title)} && !is_own_title(state);
    const double room = std::max(0.0, width - used - used_trailing);
    Size size = label ? state.title.sizeThatFits({}) : state.title.bounds().size;
    size.width = std::min(size.width, room);
    // In the middle of the bar where that leaves the buttons alone, else in the middle of what is left.
    double x = (width - size.width) / 2;
    if (x < used || x + size.width > width - used_trailing) x = used + (room - size.width) / 2;
    x = round_to_pixel(x, display_settings().scale);
    if (turned) x = width - x - size.width;
    const double y = round_to_pixel((row - size.height) / 2, display_settings().scale);
    state.title.setFrame({{x, y}, size});
    if (label) state.title.setAlpha(title_alpha(self));
  }

  static bool is_own_title(const NavigationBarState& state) {
    return !state.items.empty() && state.items.back().parts().title_view == state.title;
  }
  static Size size_of(const View& view, double row) {
    if (objc::cast_or_nil<Button>(view)) return {view.sizeThatFits({}).width, row};
    return view.bounds().size;
  }
  static double extra(const Self& self) {
    return self.shows_large_title() ? NavigationBar::kLargeTitleHeight : 0;
  }
  static double title_alpha(const Self& self) {
    if (!self.shows_large_title()) return 1;
    return std::clamp((self.bar().scrolled - NavigationBar::kLargeTitleHeight + 14) / 8, 0.0, 1.0);
  }
  static double background_alpha(const Self& self) {
    return std::clamp((self.bar().scrolled - extra(self)) / kFadeDistance, 0.0, 1.0);
  }

  static void paint(const View& view, graphics::Canvas& canvas, const Rect& bounds) {
    const Self self = view.as<Self>();
    const double alpha = background_alpha(self);
    if (alpha <= 0) return;
    const Rect area{bounds.origin, {bounds.width(), bounds.height() - extra(self)}};
    constexpr int kChromeMaterial = 10;
    if (const UIColor tint = self.bar().bar_tint) {
      canvas.fill(area, colour_of(tint));
    } else {
      paint_pane(view, canvas, area, graphics::blur_effect_material(kChromeMaterial));
    }
    const double line = 1 / canvas.scale();
    canvas.fill(Rect{{area.min_x(), area.max_y() - line}, {area.width(), line}},
                colour_of(UIColor::separatorColor()));
  }

  static void didMoveToWindow(const Self& self) { note_pane(self); }
  static void backTapped(const Self& self) { objc::send<"_goBack">(self.bar().back_target.lock()); }
  static NavigationItem topItem(const Self& self) {
    return self.bar().items.empty() ? NavigationItem() : self.bar().items.back();
  }
  static NavigationItem backItem(const Self& self) {
    const auto& items = self.bar().items;
    return items.size() < 2 ? NavigationItem() : items[items.size() - 2];
  }
  static NSArray items(const Self& self) {
    NSMutableArray all = NSMutableArray::array();
    for (const NavigationItem& item : self.bar().items) all.addObject(item);
    return all;
  }
  static bool prefersLargeTitles(const Self& self) { return self.bar().prefers_large_titles; }
  static void setPrefersLargeTitles(const Self& self, bool prefers) {
    self.bar().prefers_large_titles = prefers;
    self.setNeedsLayout();
    if (const View above = self.superview()) above.setNeedsLayout();
  }
  static UIColor barTintColor(const Self& self) { return self.bar().bar_tint; }
  static void setBarTintColor(const Self& self, const UIColor& colour) {
    self.bar().bar_tint = colour;
    self.setNeedsDisplay();
  }
  static bool isTranslucent(const Self& self) { return self.bar().translucent; }
  static void setTranslucent(const Self& self, bool translucent) { self.bar().translucent = translucent; }
  static NSDictionary titleTextAttributes(const Self& self) { return self.bar().title_attributes; }
  static void setTitleTextAttributes(const Self& self, const NSDictionary& attributes) {
    self.bar().title_attributes = attributes;
  }
  static bool pointInside(const Self& self, const Point& point, const NSObject&) {
    // The empty room of a large title lets touches through to what scrolls below.
    return self.bounds().contains(point) && point.y < self.bounds().height() - extra(self);
  }
};

bool NavigationBar::shows_large_title() const {
  const NavigationBarState& state = bar();
  if (!state.prefers_large_titles || state.items.empty()) return false;
  switch (state.items.back().parts().large_title_mode) {
    case 1:
      return true;
    case 2:
      return false;
    default:
      return state.items.size() == 1;
  }
}

void NavigationBar::set_items(std::vector<NavigationItem> items, bool animated) const {
  for (const NavigationItem& item : bar().items) item.set_bar(View());
  bar().items = std::move(items);
  for (const NavigationItem& item : bar().items) item.set_bar(*this);
  bar().scrolled = 0;
  NavigationBarMethods::build(*this, animated);
}

void NavigationBar::item_changed(const NavigationItem& item) const {
  const auto& items = bar().items;
  const bool shown =
      !items.empty() && (items.back() == item || (items.size() > 1 && items[items.size() - 2] == item));
  if (shown) NavigationBarMethods::build(*this, false);
}

void NavigationBar::set_back_target(const NSObject& target) const { bar().back_target = target; }

void NavigationBar::set_content_scrolled(double distance) const {
  if (bar().scrolled == distance) return;
  bar().scrolled = distance;
  setNeedsLayout();
  setNeedsDisplay();
}

void NavigationBar::define() {
  using M = NavigationBarMethods;
  objc::Class<NavigationBar>()
      .state<NavigationBarState>()
      .initializer<"initWithFrame:", &M::initWithFrame>()
      .method<"layoutSubviews", &M::layoutSubviews>()
      .method<"pointInside:withEvent:", &M::pointInside>()
      .method<"topItem", &M::topItem>()
      .method<"backItem", &M::backItem>()
      .method<"items", &M::items>()
      .method<"prefersLargeTitles", &M::prefersLargeTitles>()
      .method<"setPrefersLargeTitles:", &M::setPrefersLargeTitles>()
      .method<"barTintColor", &M::barTintColor>()
      .method<"setBarTintColor:", &M::setBarTintColor>()
      .method<"isTranslucent", &M::isTranslucent>()
      .method<"setTranslucent:", &M::setTranslucent>()
      .method<"titleTextAttributes", &M::titleTextAttributes>()
      .method<"setTitleTextAttributes:", &M::setTitleTextAttributes>()
      .method<"didMoveToWindow", &M::didMoveToWindow>()
      .method<"_backTapped", &M::backTapped>()
      .register_class();
  set_painter(objc::class_for<NavigationBar>(), &M::paint);
}

}  // namespace wispen::uikit
