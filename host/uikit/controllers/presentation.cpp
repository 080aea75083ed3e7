// host/uikit/controllers/presentation.cpp: how one controller's page comes up over another's.

#include "host/uikit/controllers/presentation.hpp"

#include <algorithm>
#include <utility>

#include "host/uikit/controllers/alert_controller.hpp"
#include "host/uikit/controllers/view_controller_state.hpp"
#include "host/uikit/session.hpp"
#include "host/uikit/views/view_state.hpp"
#include "host/uikit/views/window.hpp"

namespace wispen::uikit {

namespace {

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

}  // namespace

/// Lies over all of the window, hears the gestures, and keeps the sheet in its place when the screen changes.
class PresentationArea : public objc::Authored<PresentationArea, View> {
 public:
  static constexpr objc::FixedString kClass{"WispenHostPresentationArea"};
  using Authored::Authored;

  struct State {
    Presentation* presentation = nullptr;
  };
  static PresentationArea of(Presentation* presentation) {
    PresentationArea area = alloc().initialize<"initWithFrame:">(Rect{});
    area.state<State>().presentation = presentation;
    return area;
  }
  Presentation* presentation() const { return state<State>().presentation; }
  void detach() const { state<State>().presentation = nullptr; }
  void dragged(const PanGestureRecognizer& pan) const {
    if (Presentation* const held = presentation()) held->dragged(pan);
  }
  void tapped(const GestureRecognizer&) const {
    if (Presentation* const held = presentation()) held->tapped_outside();
  }
  void layoutSubviews() const {
    if (Presentation* const held = presentation()) held->resized();
  }
  /// A drag moves the sheet only where nothing inside it has to scroll first.
  bool shouldBegin(const PanGestureRecognizer& pan) const {
    const View sheet = pan.view();
    View hit = sheet.hitTest(pan.locationInView(sheet));
    for (; hit && hit != sheet; hit = hit.superview()) {
      if (!objc::responds_to(hit, objc::selector<"contentOffset">())) continue;
      const auto offset = objc::send<"contentOffset", Point>(hit);
      const auto insets = objc::send<"adjustedContentInset", EdgeInsets>(hit);
      if (offset.y > -insets.top + 0.5) return false;
    }
    return pan.way().y > 0;
  }
  static void define() {
    objc::Class<PresentationArea>()
        .state<State>()
        .method<"_dragged:", &PresentationArea::dragged>()
        .method<"_tapped:", &PresentationArea::tapped>()
        .method<"layoutSubviews", &PresentationArea::layoutSubviews>()
        .method<"gestureRecognizerShouldBegin:", &PresentationArea::shouldBegin>()
        .register_class();
  }
};

void define_presentation() { PresentationArea::define(); }

Presentation::Presentation(const ViewController& presenter, ViewController presented)
    : presenter_(presenter), presented_(std::move(presented)), kind_(kind_of()) {
  area_ = PresentationArea::of(this);
  area_.setAutoresizingMask(18);
  dim_ = View::make();
  dim_.setBackgroundColor(UIColor::colorWithWhite(0, kDimming));
  sheet_ = View::make();
  area_.addSubview(dim_);
  area_.addSubview(sheet_);
  const auto tap = TapGestureRecognizer::alloc().initialize<"initWithTarget:action:">(
      NSObject(area_), objc::selector<"_tapped:">());
  dim_.addGestureRecognizer(tap);
  if (kind_ == PresentationKind::Card || kind_ == PresentationKind::Box) {
    const PanGestureRecognizer pan = PanGestureRecognizer::with_target(area_, objc::selector<"_dragged:">());
    pan.restrict_to(false, true);
    pan.recognition().delegate = NSObject(area_);
    sheet_.addGestureRecognizer(pan);
    dress();
  }
}

void Presentation::dress() {
  const bool card = kind_ == PresentationKind::Card;
  sheet_.setClipsToBounds(true);
  sheet_.parts().elevated = true;
  sheet_.layer().setCornerRadius(card ? kCardRadius : kBoxRadius);
  constexpr NSUInteger kUpperCorners = 3;
  constexpr NSUInteger kAllCorners = 15;
  objc::send<"setMaskedCorners:">(sheet_.layer(), card ? kUpperCorners : kAllCorners);
}

void Presentation::adapt() {
  const PresentationKind now = kind_of();
  if (now == kind_ || (now != PresentationKind::Card && now != PresentationKind::Box)) return;
  pose(0);  // a card gives its presenter back its own size
  kind_ = now;
  dress();
}

Presentation::~Presentation() { area_.as<PresentationArea>().detach(); }

PresentationKind Presentation::kind_of() const {
  if (const auto alert = objc::cast_or_nil<AlertController>(presented_)) {
    return alert.is_action_sheet() ? PresentationKind::ActionSheet : PresentationKind::Alert;
  }
  const bool regular = Session::current()->device().is_regular_width();
  switch (presented_.modal_presentation_style()) {
    case modal_style::kFullScreen:
    case modal_style::kOverFullScreen:
    case modal_style::kOverCurrentContext:
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
      Size size = presented_.preferred_content_size();
      if (size.empty()) size = kBoxSize;
      size.width = std::min(size.width, room.width() - 2 * kBoxMargin);
      size.height = std::min(size.height, room.height() - safe.top - safe.bottom - 2 * kBoxMargin);
      return {{(room.width() - size.width) / 2, (room.height() - size.height) / 2}, size};
    }
    case PresentationKind::Alert:
    case PresentationKind::ActionSheet:
      return presented_.as<AlertController>().frame_in(room, safe);
  }
  return room;
}

Rect Presentation::hidden_frame() const {
  const Rect resting = resting_frame();
  return {{resting.min_x(), area_.bounds().height()}, resting.size};
}

void Presentation::pose(double shown) {
  dim_.setAlpha(kind_ == PresentationKind::Full ? 0 : shown);
  if (kind_ == PresentationKind::Alert) {
    // Not its frame, which is that of the scaled view.
    const Rect resting = resting_frame();
    sheet_.setBounds({{}, resting.size});
    sheet_.setCenter({resting.mid_x(), resting.mid_y()});
    sheet_.setAlpha(shown);
    const double scale = hiding_ ? 1 : kAlertScale + (1 - kAlertScale) * shown;
    sheet_.setTransform(AffineTransform::scaling(scale, scale));
    return;
  }
  const Rect resting = resting_frame();
  const Rect away = hidden_frame();
  const double y = away.min_y() + (resting.min_y() - away.min_y()) * shown;
  sheet_.setFrame({{resting.min_x(), y}, resting.size});
  if (kind_ != PresentationKind::Card) return;
  const View behind = presenter_.get().view();
  const double scale = 1 + (kPresenterScale - 1) * shown;
  behind.setTransform(AffineTransform::scaling(scale, scale));
  behind.layer().setCornerRadius(shown > 0 ? kCardRadius : 0);
  behind.setClipsToBounds(shown > 0);
}

void Presentation::resized() {
  if (laid_out_size_ == area_.bounds().size) return;
  laid_out_size_ = area_.bounds().size;
  dim_.setFrame(area_.bounds());
  if (!hiding_) adapt();
  if (!hiding_ && sheet_.superview() && presented_.view_if_loaded()) pose(1);
}

void Presentation::show(bool animated, const objc::Block<void()>& completion) {
  const ViewController presenter = presenter_.get();
  const Window window = presenter.view().window();
  area_.setFrame(window.bounds());
  dim_.setFrame(area_.bounds());
  window.addSubview(area_);
  laid_out_size_ = window.bounds().size;
  const View view = presented_.view();
  presented_.parts().being_presented = true;
  const bool covers =
      kind_ == PresentationKind::Full && presented_.modal_presentation_style() == modal_style::kFullScreen;
  if (covers) presenter.will_disappear(animated);
  presented_.will_appear(animated);
  sheet_.setFrame(resting_frame());
  view.setTransform({});
  view.setFrame(sheet_.bounds());
  view.setAutoresizingMask(18);
  sheet_.addSubview(view);
  const auto shown = [presented = presented_, presenter, covers, animated, completion](bool) {
    if (covers) presenter.did_disappear(animated);
    presented.did_appear(animated);
    presented.parts().being_presented = false;
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
  if (const auto alert = objc::cast_or_nil<AlertController>(presented_)) alert.start_writing();
}

void Presentation::hide(bool animated, const objc::Block<void()>& completion) {
  if (std::exchange(hiding_, true)) return;
  const ViewController presenter = presenter_.get();
  const ViewController presented = presented_;
  presented.parts().being_dismissed = true;
  presented.will_disappear(animated);
  const bool covered =
      presented.modal_presentation_style() == modal_style::kFullScreen && kind_ == PresentationKind::Full;
  if (covered) presenter.will_appear(animated);
  const View area = area_;
  const auto gone = [presenter, presented, area, covered, animated, completion](bool) {
    area.removeFromSuperview();
    presented.view().removeFromSuperview();
    presented.did_disappear(animated);
    if (covered) presenter.did_appear(animated);
    presented.parts().being_dismissed = false;
    presented.parts().presenting = objc::Unowned<ViewController>();
    presenter.parts().presented = ViewController();
    presenter.parts().presentation.reset();
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

void Presentation::dragged(const PanGestureRecognizer& pan) {
  if (hiding_) return;
  const double height = std::max(1.0, sheet_.bounds().height());
  const bool stays = presented_.is_modal_in_presentation();
  double way = std::max(0.0, pan.translationInView(View()).y);
  if (stays) way = way / 4;  // it gives a little, and comes back
  const double shown = 1 - way / height;
  if (pan.gesture_state() == GestureState::Changed || pan.gesture_state() == GestureState::Began) {
    pose(shown);
    return;
  }
  const bool thrown = pan.velocityInView(View()).y > kThrowVelocity;
  const bool leaves =
      pan.gesture_state() == GestureState::Ended && !stays && (thrown || way / height > kDragToDismiss);
  if (leaves) {
    hide(true, {});
  } else {
    AnimationEngine::current()->animate({.duration = kSheetSeconds / 2}, [&] { pose(1); });
  }
}

void Presentation::tapped_outside() {
  if (hiding_ || presented_.is_modal_in_presentation()) return;
  if (kind_ == PresentationKind::Box) return hide(true, {});
  if (kind_ == PresentationKind::ActionSheet) presented_.as<AlertController>().cancel();
}

}  // namespace wispen::uikit
