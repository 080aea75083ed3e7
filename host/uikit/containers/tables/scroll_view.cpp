// host/uikit/containers/tables/scroll_view.cpp: UIScrollView: a window onto something larger.

#include "host/uikit/containers/tables/scroll_view.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/uikit/view/application.hpp"
#include "host/uikit/view/events/gesture_recognizer.hpp"
#include "host/uikit/view/hooks.hpp"
#include "host/uikit/view/painting/painter.hpp"
#include "host/uikit/view/session.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

namespace {

constexpr double kOffsetSeconds = 0.3;
constexpr double kIndicatorWidth = 3;
constexpr double kIndicatorMargin = 3;
constexpr double kShortestIndicator = 36;

bool keeps_drags(const UIControl& control) {
  return objc::responds_to(control, objc::selector<hooks::kKeepsDrags>()) &&
         objc::send<hooks::kKeepsDrags, bool>(control);
}

}  // namespace

UIScrollView ScrollView::initWithFrame(objc::Allocated<UIScrollView> self, const Rect& frame) {
  UIScrollView view = super_init<"initWithFrame:">(std::move(self), frame);
  if (!view) return view;
  view.setClipsToBounds(true);
  UIPanGestureRecognizer& pan = of(view).pan_;
  pan = UIPanGestureRecognizer::alloc().initWithTarget(view, objc::selector<"_panned:">());
  PanGestureRecognizer::of(pan).restrict_to(false, true);
  pan.setDelegate(view);
  view.addGestureRecognizer(pan);
  return view;
}

void ScrollView::offset_changed() {
  self().setNeedsLayout();
  self().setNeedsDisplay();
  tell<"scrollViewDidScroll:">();
  tell_bar();
}

void ScrollView::tell_bar() {
  const double distance = contentOffset().y + adjustedContentInset().top;
  for (UIView view = self(); view; view = View::of(view).superview()) {
    const UIViewController controller = View::of(view).controller();
    if (!controller || !objc::responds_to(controller, objc::selector<hooks::kContentScrolled>())) continue;
    objc::send<hooks::kContentScrolled>(controller, self(), distance);
    return;
  }
}

void ScrollView::panned(const UIPanGestureRecognizer& pan) {
  switch (pan.state()) {
    case UIGestureRecognizerState::Began:
      stop();
      dragging_ = true;
      self().setNeedsDisplay();  // its indicator is seen from now on
      drag_start_ = contentOffset();
      tell<"scrollViewWillBeginDragging:">();
      break;
    case UIGestureRecognizerState::Changed: {
      const double wanted = drag_start_.y - pan.translationInView(self()).y;
      setContentOffset(
          {contentOffset().x, offset_under_finger(wanted, range(), self().bounds().size.height)});
      break;
    }
    case UIGestureRecognizerState::Ended:
    case UIGestureRecognizerState::Cancelled: {
      dragging_ = false;
      const bool thrown = pan.state() == UIGestureRecognizerState::Ended;
      const double velocity = thrown ? -pan.velocityInView(self()).y : 0;
      const bool goes_on = std::abs(velocity) > ScrollMotion::kSlowest || !range().holds(contentOffset().y);
      self().setNeedsDisplay();
      tell<"scrollViewDidEndDragging:willDecelerate:">(goes_on);
      if (goes_on) start_moving(velocity);
      break;
    }
    default:
      break;
  }
}

ScrollRange ScrollView::range() {
  constexpr double kFar = 1e9;
  return {nearest_resting_offset({0, -kFar}).y, nearest_resting_offset({0, kFar}).y,
          bounces_ && can_bounce()};
}

bool ScrollView::can_bounce() {
  const EdgeInsets inset = adjustedContentInset();
  const bool taller = contentSize().height + inset.top + inset.bottom > self().bounds().size.height;
  return taller || always_bounces_vertical_;
}

void ScrollView::start_moving(double velocity) {
  if (std::exchange(moving_, true)) return;
  motion_ = ScrollMotion(velocity);
  const objc::Weak<UIScrollView> weak(self());
  const auto frame = Nanoseconds(static_cast<std::int64_t>(ScrollMotion::kFrame * 1e9));
  timer_ = main_loop().add_timer(
      frame,
      [weak] {
        if (const UIScrollView alive = weak.lock()) of(alive).step();
      },
      frame);
}

void ScrollView::step() {
  const Point now = contentOffset();
  const ScrollMotion::Step step = motion_.step(now.y, range());
  setContentOffset({now.x, step.offset});
  if (step.finished) finish();
}

void ScrollView::finish() {
  stop();
  tell<"scrollViewDidEndDecelerating:">();
}

void ScrollView::layoutSubviews() {
  super<"layoutSubviews">();
  keep_place();
}

void ScrollView::keep_place() {
  const EdgeInsets inset = adjustedContentInset();
  if (!placed_) {
    if (!self().window()) return;
    placed_ = true;
    last_inset_ = inset;
    self().setBounds(Rect{{contentOffset().x, -inset.top}, self().bounds().size});
    tell_bar();
    return;
  }
  Point offset = contentOffset();
  if (!(inset == last_inset_)) {
    offset.y += last_inset_.top - inset.top;
    last_inset_ = inset;
  } else if (is_moving()) {
    return;
  }
  setContentOffset(nearest_resting_offset(offset));
}

void ScrollView::paint_indicator(graphics::Canvas& canvas, const Rect& bounds) {
  if (!shows_indicator_ || !is_moving()) return;
  const EdgeInsets inset = adjustedContentInset();
  const double content = content_size_.height + inset.top + inset.bottom;
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

void ScrollView::setContentInset(const EdgeInsets& inset) {
  content_inset_ = inset;
  keep_place();
  self().setNeedsLayout();
}

bool ScrollView::is_at_top() { return contentOffset().y <= -adjustedContentInset().top + 0.5; }

bool ScrollView::is_on_a_sheet() {
  for (UIView view = View::of(self()).superview(); view; view = View::of(view).superview()) {
    if (objc::responds_to(view, objc::selector<"_dragged:">())) return true;
  }
  return false;
}

bool ScrollView::shouldBegin(const UIGestureRecognizer& recognizer) {
  if (recognizer != pan_) return true;
  if (!scroll_enabled_ || !can_bounce()) return false;
  if (PanGestureRecognizer::of(pan_).way().y > 0 && is_at_top() && is_on_a_sheet()) return false;
  // A control that follows the finger keeps it.
  const Point start = pan_.locationInView(self());
  const Point way = PanGestureRecognizer::of(pan_).way();
  for (UIView view = self().hitTest(Point{start.x - way.x, start.y - way.y}, NSObject());
       view && view != self(); view = View::of(view).superview()) {
    const auto control = objc::cast_or_nil<UIControl>(view);
    if (control && control.isTracking() && keeps_drags(control)) return false;
  }
  return true;
}

void ScrollView::revealFocused(const UIView& view) {
  constexpr double kAround = 20;
  scrollRectToVisible(Rect(view.convertRectToView(view.bounds(), self())).inset(0, -kAround), true);
}

bool ScrollView::handleKey(const UIKey& key) {
  const EdgeInsets inset = adjustedContentInset();
  const double page = std::max(0.0, self().bounds().size.height - inset.top - inset.bottom - 40);
  double by = 0;
  switch (key.press().code) {
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
  const Point now = contentOffset();
  set_content_offset(nearest_resting_offset({now.x, now.y + by}), true);
  return true;
}

void ScrollView::stop() {
  if (!std::exchange(moving_, false)) return;
  if (Session::current() != nullptr) main_loop().cancel(timer_);
  self().setNeedsDisplay();
}

void ScrollView::setContentOffset(const Point& offset) {
  if (Point(contentOffset()) == offset || !std::isfinite(offset.x) || !std::isfinite(offset.y)) return;
  self().setBounds({offset, self().bounds().size});
  offset_changed();
}

void ScrollView::set_content_offset(const Point& offset, bool animated) {
  stop();
  AnimationEngine* const engine = AnimationEngine::current();
  if (!animated || engine == nullptr) return setContentOffset(offset);
  const UIScrollView kept = self();
  engine->animate(
      {.duration = kOffsetSeconds}, [&] { kept.setContentOffset(offset); },
      [kept](bool) { of(kept).tell<"scrollViewDidEndScrollingAnimation:">(); });
}

void ScrollView::setContentSize(const Size& size) {
  if (content_size_ == size) return;
  content_size_ = size;
  self().setNeedsLayout();
  if (is_moving()) self().setNeedsDisplay();  // its indicator is as long as the content says
}

EdgeInsets ScrollView::adjustedContentInset() {
  EdgeInsets inset = content_inset_;
  if (adjustment_ == UIScrollViewContentInsetAdjustmentBehavior::Never) return inset;
  // The safe area as it lies around the frame: the content's own offset does not change it.
  const EdgeInsets safe = self().safeAreaInsets();
  inset.top += safe.top;
  inset.bottom += safe.bottom;
  return inset;
}

Point ScrollView::nearest_resting_offset(const Point& offset) {
  const EdgeInsets inset = adjustedContentInset();
  const Size size = self().bounds().size;
  const Size content = contentSize();
  const double most_y = std::max(-inset.top, content.height + inset.bottom - size.height);
  const double most_x = std::max(-inset.left, content.width + inset.right - size.width);
  return {std::clamp(offset.x, -inset.left, most_x), std::clamp(offset.y, -inset.top, most_y)};
}

void ScrollView::scrollRectToVisible(const Rect& rect, bool animated) {
  const EdgeInsets inset = adjustedContentInset();
  Point offset = contentOffset();
  const double height = self().bounds().size.height;
  if (rect.max_y() > offset.y + height - inset.bottom) offset.y = rect.max_y() - height + inset.bottom;
  if (rect.min_y() < offset.y + inset.top) offset.y = rect.min_y() - inset.top;
  offset = nearest_resting_offset(offset);
  if (!(offset == contentOffset())) set_content_offset(offset, animated);
}

void ScrollView::wheel(double points) {
  if (!scroll_enabled_) return;
  stop();
  const Point now = contentOffset();
  setContentOffset(nearest_resting_offset({now.x, now.y - points}));
}

UIScrollView scroll_view_at(Point point) {
  const std::vector<UIWindow> windows = Application::shared().windows();
  for (std::size_t i = windows.size(); i-- > 0;) {
    for (UIView view = windows[i].hitTest(point, NSObject()); view; view = View::of(view).superview()) {
      const auto scroll = objc::cast_or_nil<UIScrollView>(view);
      if (scroll && ScrollView::of(scroll).can_bounce()) return scroll;
    }
  }
  return UIScrollView();
}

void define_scroll_view() {
  auto view = objc::Class<UIScrollView>::implemented_by<ScrollView>();
  view.initializer<"initWithFrame:", &ScrollView::initWithFrame>()
      .method<"contentOffset", &ScrollView::contentOffset>()
      .method<"setContentOffset:", &ScrollView::setContentOffset>()
      .method<"setContentOffset:animated:", &ScrollView::set_content_offset>()
      .method<"contentSize", &ScrollView::contentSize>()
      .method<"setContentSize:", &ScrollView::setContentSize>()
      .getter<"contentInset", &ScrollView::content_inset_>()
      .method<"setContentInset:", &ScrollView::setContentInset>()
      .method<"adjustedContentInset", &ScrollView::adjustedContentInset>()
      .getter<"contentInsetAdjustmentBehavior", &ScrollView::adjustment_>()
      .method<"setContentInsetAdjustmentBehavior:",
              &ScrollView::set<&ScrollView::adjustment_, UIScrollViewContentInsetAdjustmentBehavior>>()
      .getter<"isScrollEnabled", &ScrollView::scroll_enabled_>()
      .method<"setScrollEnabled:", &ScrollView::set<&ScrollView::scroll_enabled_, bool>>()
      .getter<"bounces", &ScrollView::bounces_>()
      .method<"setBounces:", &ScrollView::set<&ScrollView::bounces_, bool>>()
      .getter<"alwaysBounceVertical", &ScrollView::always_bounces_vertical_>()
      .method<"setAlwaysBounceVertical:", &ScrollView::set<&ScrollView::always_bounces_vertical_, bool>>()
      .getter<"showsVerticalScrollIndicator", &ScrollView::shows_indicator_>()
      .method<"setShowsVerticalScrollIndicator:", &ScrollView::set<&ScrollView::shows_indicator_, bool>>()
      .getter<"keyboardDismissMode", &ScrollView::keyboard_dismiss_>()
      .method<"setKeyboardDismissMode:", &ScrollView::set<&ScrollView::keyboard_dismiss_, NSInteger>>()
      .method<"delegate", &ScrollView::delegate>()
      .method<"setDelegate:", &ScrollView::setDelegate>()
      .getter<"panGestureRecognizer", &ScrollView::pan_>()
      .getter<"isDragging", &ScrollView::dragging_>()
      .getter<"isDecelerating", &ScrollView::moving_>()
      .method<"scrollRectToVisible:animated:", &ScrollView::scrollRectToVisible>()
      .method<"layoutSubviews", &ScrollView::layoutSubviews>()
      .method<"_panned:", &ScrollView::panned>()
      .method<"gestureRecognizerShouldBegin:", &ScrollView::shouldBegin>()
      .method<hooks::kRevealFocusedView, &ScrollView::revealFocused>()
      .method<hooks::kHandleKey, &ScrollView::handleKey>()
      .register_class();
  set_overlay_painter<&ScrollView::paint_indicator>();
}

}  // namespace wispen::uikit
