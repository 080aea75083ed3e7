// host/uikit/containers/controllers/presentation.cpp: how one controller's page comes up over another's.

#include "host/uikit/containers/controllers/presentation.hpp"

#include <algorithm>
#include <utility>

#include "host/uikit/containers/controllers/alert_controller.hpp"
#include "host/uikit/view/session.hpp"
#include "host/uikit/view/view.hpp"
#include "host/uikit/view/window.hpp"

namespace wispen::uikit {

namespace {

constexpr UIViewAutoresizing kFlexibleSize =
    UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight;
constexpr double kSheetSeconds = 0.5;
constexpr double kAlertSeconds = 0.25;
constexpr double kCardRadius = 10;
constexpr double kBoxRadius = 13;
constexpr double kCardGap = 10;    // under the status bar
constexpr double kBoxMargin = 20;  // a box keeps this from the edges of the screen
constexpr Size kBoxSize{540, 620};
constexpr double kPresenterScale = 0.92;
constexpr double kDimming = 0.2;
constexpr double kAlertScale = 1.1;  // an alert shrinks into place
constexpr double kDragToDismiss = 0.35;
constexpr double kThrowVelocity = 800;

/// Outside of the platform's interface.
class UIPresentationArea : public UIView {
 public:
  using Base = UIView;
  static constexpr objc::FixedString kClass{"WispenHostPresentationArea"};
  using UIView::UIView;
};

}  // namespace

/// Lies over all of the window, hears the gestures, and keeps the sheet where it belongs when the screen
/// changes.
class PresentationArea : public objc::Implementation<PresentationArea, UIPresentationArea> {
 public:
  void dragged(const UIPanGestureRecognizer& pan) {
    if (presentation != nullptr) presentation->dragged(pan);
  }
  void tapped(const UIGestureRecognizer&) {
    if (presentation != nullptr) presentation->tapped_outside();
  }
  void layoutSubviews() {
    if (presentation != nullptr) presentation->resized();
  }
  /// A drag moves the sheet only where nothing inside it has to scroll first.
  bool should_begin(const UIPanGestureRecognizer& pan) {
    const UIView sheet = pan.view();
    UIView hit = sheet.hitTest(pan.locationInView(sheet), NSObject());
    for (; hit && hit != sheet; hit = hit.superview()) {
      const auto scroll = objc::cast_or_nil<UIScrollView>(hit);
      if (scroll && scroll.contentOffset().y > -scroll.adjustedContentInset().top + 0.5) return false;
    }
    return PanGestureRecognizer::of(pan).way().y > 0;
  }

  Presentation* presentation = nullptr;  // cleared when that goes
};

void define_presentation() {
  objc::Class<UIPresentationArea>::implemented_by<PresentationArea>()
      .method<"_dragged:", &PresentationArea::dragged>()
      .method<"_tapped:", &PresentationArea::tapped>()
      .method<"layoutSubviews", &PresentationArea::layoutSubviews>()
      .method<"gestureRecognizerShouldBegin:", &PresentationArea::should_begin>()
      .register_class();
}

Presentation::Presentation(const UIViewController& presenter, UIViewController presented)
    : presenter_(presenter), presented_(std::move(presented)), kind_(kind_of()) {
  const UIPresentationArea area = objc::make<UIPresentationArea>();
  PresentationArea::of(area).presentation = this;
  area_ = area;
  area_.setAutoresizingMask(kFlexibleSize);
  dim_ = objc::make<UIView>();
  dim_.setBackgroundColor(UIColor::colorWithWhite(0, kDimming));
  sheet_ = objc::make<UIView>();
  area_.addSubview(dim_);
  area_.addSubview(sheet_);
  dim_.addGestureRecognizer(
      UITapGestureRecognizer::alloc().initWithTarget(area_, objc::selector<"_tapped:">()));
  if (kind_ == PresentationKind::Card || kind_ == PresentationKind::Box) {
    const auto pan = UIPanGestureRecognizer::alloc().initWithTarget(area_, objc::selector<"_dragged:">());
    PanGestureRecognizer::of(pan).restrict_to(false, true);
    pan.setDelegate(area_);
    sheet_.addGestureRecognizer(pan);
    dress();
  }
}

void Presentation::dress() {
  const bool card = kind_ == PresentationKind::Card;
  sheet_.setClipsToBounds(true);
  View::of(sheet_).set_elevated(true);
  sheet_.layer().setCornerRadius(card ? kCardRadius : kBoxRadius);
  constexpr CACornerMask kUpperCorners = kCALayerMinXMinYCorner | kCALayerMaxXMinYCorner;
  constexpr CACornerMask kAllCorners = kUpperCorners | kCALayerMinXMaxYCorner | kCALayerMaxXMaxYCorner;
  sheet_.layer().setMaskedCorners(card ? kUpperCorners : kAllCorners);
}

void Presentation::adapt() {
  const PresentationKind now = kind_of();
  if (now == kind_ || (now != PresentationKind::Card && now != PresentationKind::Box)) return;
  pose(0);  // a card gives its presenter back its own size
  kind_ = now;
  dress();
}

Presentation::~Presentation() { PresentationArea::of(area_.as<UIPresentationArea>()).presentation = nullptr; }

PresentationKind Presentation::kind_of() const {
  if (const auto alert = objc::cast_or_nil<UIAlertController>(presented_)) {
    return AlertController::of(alert).is_action_sheet() ? PresentationKind::ActionSheet
                                                        : PresentationKind::Alert;
  }
  const bool regular = Session::current()->device().is_regular_width();
  switch (presented_.modalPresentationStyle()) {
    case UIModalPresentationStyle::FullScreen:
    case UIModalPresentationStyle::OverFullScreen:
    case UIModalPresentationStyle::OverCurrentContext:
      return PresentationKind::Full;
    default:
      return regular ? PresentationKind::Box : PresentationKind::Card;
  }
}

Rect Presentation::resting_frame() const {
  const Rect room = area_.bounds();
  const EdgeInsets safe = Session::current()->device().safe_area();
  switch (kind_) {
    case PresentationKind::Full:
      return room;
    case PresentationKind::Card: {
      const double top = safe.top + kCardGap;
      return {{0, top}, {room.width(), room.height() - top}};
    }
    case PresentationKind::Box: {
      Size size = presented_.preferredContentSize();
      if (size.empty()) size = kBoxSize;
      size.width = std::min(size.width, room.width() - 2 * kBoxMargin);
      size.height = std::min(size.height, room.height() - safe.top - safe.bottom - 2 * kBoxMargin);
      return {{(room.width() - size.width) / 2, (room.height() - size.height) / 2}, size};
    }
    case PresentationKind::Alert:
    case PresentationKind::ActionSheet:
      return AlertController::of(presented_.as<UIAlertController>()).frame_in(room, safe);
  }
  return room;
}

Rect Presentation::hidden_frame() const {
  const Rect resting = resting_frame();
  return {{resting.min_x(), area_.bounds().size.height}, resting.size};
}

void Presentation::pose(double shown) {
  dim_.setAlpha(kind_ == PresentationKind::Full ? 0 : shown);
  if (kind_ == PresentationKind::Alert) {
    // Not its frame, which is that of the scaled view.
    const Rect resting = resting_frame();
    sheet_.setBounds(Rect{{}, resting.size});
    sheet_.setCenter(Point{resting.mid_x(), resting.mid_y()});
    sheet_.setAlpha(shown);
    const double scale = hiding_ ? 1 : kAlertScale + (1 - kAlertScale) * shown;
    sheet_.setTransform(AffineTransform::scaling(scale, scale));
    return;
  }
  const Rect resting = resting_frame();
  const Rect away = hidden_frame();
  const double y = away.min_y() + (resting.min_y() - away.min_y()) * shown;
  sheet_.setFrame(Rect{{resting.min_x(), y}, resting.size});
  if (kind_ != PresentationKind::Card) return;
  const UIView behind = presenter_.get().view();
  const double scale = 1 + (kPresenterScale - 1) * shown;
  behind.setTransform(AffineTransform::scaling(scale, scale));
  behind.layer().setCornerRadius(shown > 0 ? kCardRadius : 0);
  behind.setClipsToBounds(shown > 0);
}

void Presentation::resized() {
  const Size size = area_.bounds().size;
  if (laid_out_size_ == size) return;
  laid_out_size_ = size;
  dim_.setFrame(area_.bounds());
  if (!hiding_) adapt();
  if (!hiding_ && sheet_.superview() && presented_.viewIfLoaded()) pose(1);
}

void Presentation::show(bool animated, const objc::Block<void()>& completion) {
  const UIViewController presenter = presenter_.get();
  const UIWindow window = presenter.view().window();
  area_.setFrame(window.bounds());
  dim_.setFrame(area_.bounds());
  window.addSubview(area_);
  laid_out_size_ = window.bounds().size;
  const UIView view = presented_.view();
  ViewController::of(presented_).set_being_presented(true);
  const bool covers = kind_ == PresentationKind::Full &&
                      presented_.modalPresentationStyle() == UIModalPresentationStyle::FullScreen;
  if (covers) presenter.beginAppearanceTransition(false, animated);
  presented_.beginAppearanceTransition(true, animated);
  sheet_.setFrame(resting_frame());
  view.setTransform(AffineTransform());
  view.setFrame(sheet_.bounds());
  view.setAutoresizingMask(kFlexibleSize);
  sheet_.addSubview(view);
  const auto shown = [presented = presented_, presenter, covers, completion](bool) {
    if (!ViewController::of(presented).is_being_dismissed()) {  // which ends its own transition
      if (covers) presenter.endAppearanceTransition();
      presented.endAppearanceTransition();
    }
    ViewController::of(presented).set_being_presented(false);
    completion();
  };
  if (!animated) {
    pose(1);
    area_.layoutIfNeeded();
    start_writing();
    main_loop().post([shown] { shown(true); });
    return;
  }
  pose(0);
  area_.layoutIfNeeded();
  start_writing();
  const double seconds = kind_ == PresentationKind::Alert ? kAlertSeconds : kSheetSeconds;
  const auto ease_out = animation::TimingCurve(animation::NamedCurve::EaseOut);
  AnimationEngine::current()->animate(
      {.duration = seconds, .curve = ease_out}, [&] { pose(1); }, shown);
}

// Not only once it is shown: what is typed while an alert comes up is meant for it.
void Presentation::start_writing() {
  if (const auto alert = objc::cast_or_nil<UIAlertController>(presented_))
    AlertController::of(alert).start_writing();
}

void Presentation::hide(bool animated, const objc::Block<void()>& completion) {
  if (std::exchange(hiding_, true)) return;
  const UIViewController presenter = presenter_.get();
  const UIViewController presented = presented_;
  ViewController::of(presented).set_being_dismissed(true);
  presented.beginAppearanceTransition(false, animated);
  const bool covered = presented.modalPresentationStyle() == UIModalPresentationStyle::FullScreen &&
                       kind_ == PresentationKind::Full;
  if (covered) presenter.beginAppearanceTransition(true, animated);
  const UIView area = area_;
  const auto gone = [presenter, presented, area, covered, completion](bool) {
    area.removeFromSuperview();
    presented.view().removeFromSuperview();
    presented.endAppearanceTransition();
    if (covered) presenter.endAppearanceTransition();
    ViewController::of(presented).set_being_dismissed(false);
    ViewController::of(presenter).forget_presented();
    completion();
  };
  if (!animated) {
    pose(0);
    gone(true);
    return;
  }
  const double seconds = kind_ == PresentationKind::Alert ? kAlertSeconds : kSheetSeconds * 0.7;
  AnimationEngine::current()->animate(
      {.duration = seconds}, [&] { pose(0); }, gone);
}

void Presentation::abandon() { area_.removeFromSuperview(); }

void Presentation::dragged(const UIPanGestureRecognizer& pan) {
  if (hiding_) return;
  const double height = std::max(1.0, sheet_.bounds().size.height);
  const bool stays = presented_.isModalInPresentation();
  double way = std::max(0.0, pan.translationInView(UIView()).y);
  if (stays) way = way / 4;  // it gives a little, and comes back
  const double shown = 1 - way / height;
  if (pan.state() == UIGestureRecognizerState::Changed || pan.state() == UIGestureRecognizerState::Began) {
    pose(shown);
    return;
  }
  const bool thrown = pan.velocityInView(UIView()).y > kThrowVelocity;
  const bool leaves =
      pan.state() == UIGestureRecognizerState::Ended && !stays && (thrown || way / height > kDragToDismiss);
  if (leaves) {
    hide(true, {});
  } else {
    AnimationEngine::current()->animate({.duration = kSheetSeconds / 2}, [&] { pose(1); });
  }
}

void Presentation::tapped_outside() {
  if (hiding_ || presented_.isModalInPresentation()) return;
  if (kind_ == PresentationKind::Box) return hide(true, {});
  if (kind_ == PresentationKind::ActionSheet)
    AlertController::of(presented_.as<UIAlertController>()).cancel();
}

}  // namespace wispen::uikit
