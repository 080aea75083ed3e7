// host/uikit/tables/scroll_view.cpp: UIScrollView: a window onto something larger.

#include "host/uikit/tables/scroll_view.hpp"

#include <algorithm>
#include <cmath>

#include "host/graphics/canvas.hpp"
#include "host/uikit/controls/control.hpp"
#include "host/uikit/events/key.hpp"
#include "host/uikit/painting/painter.hpp"
#include "host/uikit/session.hpp"
#include "host/uikit/tables/scroll_motion.hpp"
#include "host/uikit/views/application.hpp"
#include "host/uikit/views/view_state.hpp"

namespace wispen::uikit {

namespace {

constexpr double kOffsetSeconds = 0.3;
constexpr double kIndicatorWidth = 3;
constexpr double kIndicatorMargin = 3;
constexpr double kShortestIndicator = 36;

}  // namespace

struct ScrollState {
  Size content_size;
  EdgeInsets content_inset;
  NSInteger adjustment = 0;  // 0 automatic, 1 scrollable axes, 2 never, 3 always
  bool scroll_enabled = true;
  bool bounces = true;
  bool always_bounces_vertical = false;
  bool shows_indicator = true;
  NSInteger keyboard_dismiss = 0;
  objc::Weak<NSObject> delegate;
  PanGestureRecognizer pan;
  Point drag_start;
  bool dragging = false;
  ScrollMotion motion;
  TimerId timer{};
  bool moving = false;  // by itself
  EdgeInsets last_inset;
  bool placed = false;
};

ScrollState& ScrollView::scroll() const { return state<ScrollState>(); }
Size ScrollView::contentSize() const { return scroll().content_size; }
bool ScrollView::is_moving() const { return scroll().moving || scroll().dragging; }

struct ScrollMethods {
  using Self = ScrollView;

  static Self initWithFrame(objc::Allocated<Self> self, const Rect& frame) {
    Self view = std::move(self).initialize_super<"initWithFrame:">(frame);
    if (!view) return view;
    view.setClipsToBounds(true);
    ScrollState& state = view.scroll();
    state.pan = PanGestureRecognizer::with_target(view, objc::selector<"_panned:">());
    state.pan.restrict_to(false, true);
    state.pan.recognition().delegate = NSObject(view);
    view.addGestureRecognizer(state.pan);
    return view;
  }

  template <objc::FixedString Sel, class... Args>
  static void tell(const Self& self, const Args&... more) {
    const NSObject delegate = self.scroll().delegate.lock();
    if (objc::responds_to(delegate, objc::selector<Sel>())) objc::send<Sel>(delegate, self, more...);
  }

  static void offset_changed(const Self& self) {
    self.setNeedsLayout();
    self.setNeedsDisplay();
    tell<"scrollViewDidScroll:">(self);
    tell_bar(self);
  }
  /// A page's outermost scroll view tells its navigation bar how far the content is under it.
  static void tell_bar(const Self& self) {
    const double distance = self.contentOffset().y + self.adjustedContentInset().top;
    for (View view = self; view; view = view.superview()) {
      const Responder controller = view.controller();
      if (!controller || !objc::responds_to(controller, objc::selector<"_contentOf:scrolled:">())) continue;
      objc::send<"_contentOf:scrolled:">(controller, self, distance);
      return;
    }
  }

  static void panned(const Self& self, const PanGestureRecognizer& pan) {
    ScrollState& state = self.scroll();
    switch (pan.gesture_state()) {
      case GestureState::Began:
        self.stop();
        state.dragging = true;
        self.setNeedsDisplay();  // its indicator is seen from now on
        state.drag_start = self.contentOffset();
        tell<"scrollViewWillBeginDragging:">(self);
        break;
      case GestureState::Changed: {
        const double wanted = state.drag_start.y - pan.translationInView(self).y;
        self.setContentOffset(
            {self.contentOffset().x, offset_under_finger(wanted, range(self), self.bounds().height())});
        break;
      }
      case GestureState::Ended:
      case GestureState::Cancelled: {
        state.dragging = false;
        const bool thrown = pan.gesture_state() == GestureState::Ended;
        const double velocity = thrown ? -pan.velocityInView(self).y : 0;
        const bool goes_on =
            std::abs(velocity) > ScrollMotion::kSlowest || !range(self).holds(self.contentOffset().y);
        self.setNeedsDisplay();
        tell<"scrollViewDidEndDragging:willDecelerate:">(self, goes_on);
        if (goes_on) start_moving(self, velocity);
        break;
      }
      default:
        break;
    }
  }

  static ScrollRange range(const Self& self) {
    constexpr double kFar = 1e9;
    return {self.nearest_resting_offset({0, -kFar}).y, self.nearest_resting_offset({0, kFar}).y,
            self.scroll().bounces && can_bounce(self)};
  }
  static bool can_bounce(const Self& self) {
    const EdgeInsets inset = self.adjustedContentInset();
    const bool taller = self.contentSize().height + inset.top + inset.bottom > self.bounds().height();
    return taller || self.scroll().always_bounces_vertical;
  }

  static void start_moving(const Self& self, double velocity) {
    ScrollState& state = self.scroll();
    if (std::exchange(state.moving, true)) return;
    state.motion = ScrollMotion(velocity);
    const objc::Weak<Self> weak(self);
    const auto frame = Nanoseconds(static_cast<std::int64_t>(ScrollMotion::kFrame * 1e9));
    state.timer = main_loop().add_timer(
        frame,
        [weak] {
          if (const Self alive = weak.lock()) step(alive);
        },
        frame);
  }

  static void step(const Self& self) {
    const Point now = self.contentOffset();
    const ScrollMotion::Step step = self.scroll().motion.step(now.y, range(self));
    self.setContentOffset({now.x, step.offset});
    if (step.finished) finish(self);
  }

  static void finish(const Self& self) {
    self.stop();
    tell<"scrollViewDidEndDecelerating:">(self);
  }

  static void layoutSubviews(const Self& self) {
    objc::send_super<"layoutSubviews">(self, objc::class_for<View>());
    keep_place(self);
  }
  /// When the room around the content changes, the content stays where it was seen.
  static void keep_place(const Self& self) {
    ScrollState& state = self.scroll();
    const EdgeInsets inset = self.adjustedContentInset();
    if (!state.placed) {
      if (!self.window()) return;
      state.placed = true;
      state.last_inset = inset;
      self.setBounds({{self.contentOffset().x, -inset.top}, self.bounds().size});
      tell_bar(self);
      return;
    }
    Point offset = self.contentOffset();
    if (!(inset == state.last_inset)) {
      offset.y += state.last_inset.top - inset.top;
      state.last_inset = inset;
    } else if (self.is_moving()) {
      return;
    }
    self.setContentOffset(self.nearest_resting_offset(offset));
  }

  static void paint_indicator(const View& view, graphics::Canvas& canvas, const Rect& bounds) {
    const Self self = view.as<Self>();
    const ScrollState& state = self.scroll();
    if (!state.shows_indicator || !self.is_moving()) return;
    const EdgeInsets inset = self.adjustedContentInset();
    const double content = state.content_size.height + inset.top + inset.bottom;
    if (content <= bounds.height()) return;
    const double track = bounds.height() - inset.top - inset.bottom - 2 * kIndicatorMargin;
    const double length = std::max(kShortestIndicator, track * bounds.height() / content);
    const double part = std::clamp((bounds.min_y() + inset.top) / (content - bounds.height()), 0.0, 1.0);
    const double y = bounds.min_y() + inset.top + kIndicatorMargin + part * (track - length);
    const Rect bar{{bounds.max_x() - kIndicatorMargin - kIndicatorWidth, y}, {kIndicatorWidth, length}};
    const auto colour =
        graphics::Colour::dynamic(graphics::Colour::grey(0, 0.35), graphics::Colour::grey(1, 0.35));
    canvas.fill(graphics::Path::rounded_rect(bar, kIndicatorWidth / 2), colour);
  }

  static EdgeInsets contentInset(const Self& self) { return self.scroll().content_inset; }
  static void setContentInset(const Self& self, const EdgeInsets& inset) {
    self.scroll().content_inset = inset;
    keep_place(self);
    self.setNeedsLayout();
  }
  template <auto Member>
  static auto get(const Self& self) {
    return self.scroll().*Member;
  }
  template <auto Member, class V>
  static void set(const Self& self, V value) {
    self.scroll().*Member = value;
    self.setNeedsLayout();
  }
  static NSObject delegate(const Self& self) { return self.scroll().delegate.lock(); }
  static void setDelegate(const Self& self, const NSObject& delegate) { self.scroll().delegate = delegate; }
  static PanGestureRecognizer pan(const Self& self) { return self.scroll().pan; }
  static bool is_at_top(const Self& self) {
    return self.contentOffset().y <= -self.adjustedContentInset().top + 0.5;
  }
  /// Pulled down from its top, a sheet goes with the finger, and what it holds stays.
  static bool is_on_a_sheet(const Self& self) {
    for (View view = self.superview(); view; view = view.superview()) {
      if (objc::responds_to(view, objc::selector<"_dragged:">())) return true;
    }
    return false;
  }
  static bool shouldBegin(const Self& self, const GestureRecognizer& recognizer) {
    if (recognizer != self.scroll().pan) return true;
    if (!self.scroll().scroll_enabled || !can_bounce(self)) return false;
    if (self.scroll().pan.way().y > 0 && is_at_top(self) && is_on_a_sheet(self)) return false;
    // A control that follows the finger keeps it.
    const Point start = self.scroll().pan.locationInView(self);
    const Point way = self.scroll().pan.way();
    for (View view = self.hitTest({start.x - way.x, start.y - way.y}); view && view != self;
         view = view.superview()) {
      const auto control = objc::cast_or_nil<Control>(view);
      if (control && control.control().tracking && keeps_drags(control)) return false;
    }
    return true;
  }
  static bool keeps_drags(const Control& control) {
    return objc::responds_to(control, objc::selector<"_keepsDrags">()) &&
           objc::send<"_keepsDrags", bool>(control);
  }
  static void revealFocused(const Self& self, const View& view) {
    constexpr double kAround = 20;
    self.scrollRectToVisible(view.convertRectToView(view.bounds(), self).inset(0, -kAround), true);
  }
  static bool handleKey(const Self& self, const Key& key) {
    const EdgeInsets inset = self.adjustedContentInset();
    const double page = std::max(0.0, self.bounds().height() - inset.top - inset.bottom - 40);
    double by = 0;
    switch (key.code()) {
      case KeyCode::PageDown:
        by = page;
        break;
      case KeyCode::PageUp:
        by = -page;
        break;
      case KeyCode::End:
        by = 1e7;
        break;
      case KeyCode::Home:
        by = -1e7;
        break;
      default:
        return false;
    }
    const Point now = self.contentOffset();
    self.set_content_offset(self.nearest_resting_offset({now.x, now.y + by}), true);
    return true;
  }
};

void ScrollView::stop() const {
  ScrollState& state = scroll();
  if (!std::exchange(state.moving, false)) return;
  if (Session::current() != nullptr) main_loop().cancel(state.timer);
  setNeedsDisplay();
}

void ScrollView::setContentOffset(const Point& offset) const {
  if (contentOffset() == offset || !std::isfinite(offset.x) || !std::isfinite(offset.y)) return;
  setBounds({offset, bounds().size});
  ScrollMethods::offset_changed(*this);
}

void ScrollView::set_content_offset(const Point& offset, bool animated) const {
  stop();
  AnimationEngine* const engine = AnimationEngine::current();
  if (!animated || engine == nullptr) return setContentOffset(offset);
  const ScrollView kept = *this;
  engine->animate(
      {.duration = kOffsetSeconds}, [&] { kept.setContentOffset(offset); },
      [kept](bool) { ScrollMethods::tell<"scrollViewDidEndScrollingAnimation:">(kept); });
}

void ScrollView::setContentSize(const Size& size) const {
  if (scroll().content_size == size) return;
  scroll().content_size = size;
  setNeedsLayout();
  if (is_moving()) setNeedsDisplay();  // its indicator is as long as the content says
}

EdgeInsets ScrollView::adjustedContentInset() const {
  const ScrollState& state = scroll();
  EdgeInsets inset = state.content_inset;
  if (state.adjustment == 2) return inset;
  // The safe area as it lies around the frame: the content's own offset does not change it.
  const EdgeInsets safe = safeAreaInsets();
  inset.top += safe.top;
  inset.bottom += safe.bottom;
  return inset;
}

Point ScrollView::nearest_resting_offset(const Point& offset) const {
  const EdgeInsets inset = adjustedContentInset();
  const Size size = bounds().size;
  const Size content = contentSize();
  const double most_y = std::max(-inset.top, content.height + inset.bottom - size.height);
  const double most_x = std::max(-inset.left, content.width + inset.right - size.width);
  return {std::clamp(offset.x, -inset.left, most_x), std::clamp(offset.y, -inset.top, most_y)};
}

void ScrollView::scrollRectToVisible(const Rect& rect, bool animated) const {
  const EdgeInsets inset = adjustedContentInset();
  Point offset = contentOffset();
  const double height = bounds().height();
  if (rect.max_y() > offset.y + height - inset.bottom) offset.y = rect.max_y() - height + inset.bottom;
  if (rect.min_y() < offset.y + inset.top) offset.y = rect.min_y() - inset.top;
  offset = nearest_resting_offset(offset);
  if (!(offset == contentOffset())) set_content_offset(offset, animated);
}

void ScrollView::wheel(double points) const {
  if (!scroll().scroll_enabled) return;
  stop();
  const Point now = contentOffset();
  setContentOffset(nearest_resting_offset({now.x, now.y - points}));
}

ScrollView scroll_view_at(Point place) {
  const std::vector<Window> windows = Application::shared().windows();
  for (std::size_t i = windows.size(); i-- > 0;) {
    for (View view = windows[i].hitTest(place); view; view = view.superview()) {
      const auto scroll = objc::cast_or_nil<ScrollView>(view);
      if (scroll && ScrollMethods::can_bounce(scroll)) return scroll;
    }
  }
  return ScrollView();
}

void ScrollView::define() {
  using M = ScrollMethods;
  using S = ScrollState;
  objc::Class<ScrollView> view;
  view.state<ScrollState>()
      .initializer<"initWithFrame:", &M::initWithFrame>()
      .method<"contentOffset", &ScrollView::contentOffset>()
      .method<"setContentOffset:", &ScrollView::setContentOffset>()
      .method<"setContentOffset:animated:", &ScrollView::set_content_offset>()
      .method<"contentSize", &ScrollView::contentSize>()
      .method<"setContentSize:", &ScrollView::setContentSize>()
      .method<"contentInset", &M::contentInset>()
      .method<"setContentInset:", &M::setContentInset>()
      .method<"adjustedContentInset", &ScrollView::adjustedContentInset>()
      .method<"contentInsetAdjustmentBehavior", &M::get<&S::adjustment>>()
      .method<"setContentInsetAdjustmentBehavior:", &M::set<&S::adjustment, NSInteger>>()
      .method<"isScrollEnabled", &M::get<&S::scroll_enabled>>()
      .method<"setScrollEnabled:", &M::set<&S::scroll_enabled, bool>>()
      .method<"bounces", &M::get<&S::bounces>>()
      .method<"setBounces:", &M::set<&S::bounces, bool>>()
      .method<"alwaysBounceVertical", &M::get<&S::always_bounces_vertical>>()
      .method<"setAlwaysBounceVertical:", &M::set<&S::always_bounces_vertical, bool>>()
      .method<"showsVerticalScrollIndicator", &M::get<&S::shows_indicator>>()
      .method<"setShowsVerticalScrollIndicator:", &M::set<&S::shows_indicator, bool>>()
      .method<"keyboardDismissMode", &M::get<&S::keyboard_dismiss>>()
      .method<"setKeyboardDismissMode:", &M::set<&S::keyboard_dismiss, NSInteger>>()
      .method<"delegate", &M::delegate>()
      .method<"setDelegate:", &M::setDelegate>()
      .method<"panGestureRecognizer", &M::pan>()
      .method<"isDragging", &M::get<&S::dragging>>()
      .method<"isDecelerating", &M::get<&S::moving>>()
      .method<"scrollRectToVisible:animated:", &ScrollView::scrollRectToVisible>()
      .method<"layoutSubviews", &M::layoutSubviews>()
      .method<"_panned:", &M::panned>()
      .method<"gestureRecognizerShouldBegin:", &M::shouldBegin>()
      .method<"_revealFocusedView:", &M::revealFocused>()
      .method<"_handleKey:", &M::handleKey>()
      .register_class();
  set_overlay_painter(objc::class_for<ScrollView>(), &M::paint_indicator);
}

}  // namespace wispen::uikit
