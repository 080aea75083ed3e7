// host/uikit/containers/controllers/alert_controller.cpp: UIAlertController: a question over the page, and
// its answers.

#include "host/uikit/containers/controllers/alert_controller.hpp"

#include <algorithm>

#include "host/foundation/arrays.hpp"
#include "host/uikit/controls/label.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/font.hpp"
#include "host/uikit/view/hooks.hpp"
#include "host/uikit/view/painting/painter.hpp"
#include "host/uikit/view/session.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

namespace {

constexpr double kButtonPadding = 8;
constexpr double kWidth = 270;
constexpr double kRadius = 14;
constexpr double kPadding = 16;
constexpr double kTop = 20;
constexpr double kTextGap = 3;
constexpr double kButtonHeight = 44;
constexpr double kSheetButtonHeight = 57;
constexpr double kSheetGap = 8;  // between the answers and "Cancel"
constexpr double kSheetMargin = 8;
constexpr double kMostSheetWidth = 420;
constexpr double kFieldHeight = 30;
constexpr double kFieldGap = 8;

double hairline() { return 1 / static_cast<double>(display_settings().scale); }

// Outside of the platform's interface.
class UIAlertButton : public UIControl {
 public:
  using Base = UIControl;
  static constexpr objc::FixedString kClass{"WispenHostAlertButton"};
  using UIControl::UIControl;
};
class UIAlertPanel : public UIView {
 public:
  using Base = UIView;
  static constexpr objc::FixedString kClass{"WispenHostAlertPanel"};
  using UIView::UIView;
};

/// One answer.
class AlertButton : public objc::Implementation<AlertButton, UIAlertButton> {
 public:
  static UIControl made_for(const UIAlertAction& action, const UIAlertController& alert) {
    const UIAlertButton button = objc::make<UIAlertButton>();
    of(button).action_ = action;
    of(button).alert_ = alert;
    button.setEnabled(action.isEnabled());
    button.addTarget(button, objc::selector<"_chosen">(), UIControlEventTouchUpInside);
    return button;
  }
  const UIAlertAction& action() const { return action_; }
  void chosen() {
    if (const UIAlertController alert = alert_.lock()) AlertController::of(alert).choose(action_);
  }
  NSString title() const { return action_.title(); }
  UILabel label() const {
    const UIAlertController alert = alert_.lock();
    const UIAlertAction preferred = alert ? AlertController::of(alert).preferred_action() : UIAlertAction();
    const bool cancels = action_.style() == UIAlertActionStyle::Cancel;
    const bool bold = cancels ? !preferred : preferred == action_ && alert;
    const bool in_sheet = alert && AlertController::of(alert).is_action_sheet();
    const UILabel label = objc::make<UILabel>();
    label.setFont(font_from(graphics::Font::system(
        in_sheet ? 20 : 17, bold ? graphics::font_weight::kSemibold : graphics::font_weight::kRegular)));
    label.setText(action_.title());
    label.setTextAlignment(NSTextAlignment::Center);
    UIColor colour = self().tintColor();
    if (action_.style() == UIAlertActionStyle::Destructive) colour = UIColor::systemRedColor();
    if (!self().isEnabled()) colour = UIColor::tertiaryLabelColor();
    label.setTextColor(colour);
    return label;
  }
  void paint(graphics::Canvas& canvas, const Rect& bounds) {
    if (self().isHighlighted()) canvas.fill(bounds, colour_of(UIColor::tertiarySystemFillColor()));
    const UILabel shown = label();
    const Rect room = bounds.inset(kButtonPadding, 0);
    const auto text = text_of_label(shown, room.size);
    canvas.draw(*text, {room.min_x(), bounds.mid_y() - text->size().height / 2},
                colour_of(shown.textColor()));
  }

 private:
  UIAlertAction action_;
  objc::Weak<UIAlertController> alert_;
};

/// The rounded pane behind, with hairlines between the answers.
void paint_panel(const UIView& panel, graphics::Canvas& canvas, const Rect& bounds) {
  const graphics::Colour pane =
      graphics::Colour::dynamic(graphics::Colour::hex(0xF2F2F2, 0.94), graphics::Colour::hex(0x262626, 0.94));
  canvas.fill(graphics::Path::rounded_rect(bounds, kRadius), pane);
  const double line = hairline();
  for (const UIView& subview : View::of(panel).subviews()) {
    if (!objc::cast_or_nil<UIAlertButton>(subview)) continue;
    const Rect frame = subview.frame();
    const auto colour = colour_of(UIColor::separatorColor());
    if (frame.min_y() > 1) {
      canvas.fill(Rect{{frame.min_x(), frame.min_y() - line}, {frame.width(), line}}, colour);
    }
    if (frame.min_x() > 1) {
      canvas.fill(Rect{{frame.min_x() - line, frame.min_y()}, {line, frame.height()}}, colour);
    }
  }
}

}  // namespace

UIAlertAction AlertAction::with(objc::ClassRef, const NSString& title, UIAlertActionStyle style,
                                const objc::Block<void(UIAlertAction)>& handler) {
  UIAlertAction action = objc::make<UIAlertAction>();
  AlertAction& made = of(action);
  made.title = title;
  made.style = style;
  made.handler = handler;
  return action;
}

UIAlertController AlertController::with(objc::ClassRef, const NSString& title, const NSString& message,
                                        UIAlertControllerStyle style) {
  UIAlertController alert = objc::make<UIAlertController>();
  alert.setTitle(title);
  of(alert).message_ = message;
  of(alert).style_ = style;
  return alert;
}

UILabel AlertController::text(const NSString& content, double size, double weight) {
  const UILabel label = objc::make<UILabel>();
  label.setText(content);
  label.setNumberOfLines(0);
  label.setTextAlignment(NSTextAlignment::Center);
  label.setFont(font_from(graphics::Font::system(size, weight)));
  return label;
}

void AlertController::loadView() {
  const UIView view = objc::make<UIView>();
  self().setView(view);
  panel_ = objc::make<UIAlertPanel>();
  panel_.setClipsToBounds(true);
  panel_.layer().setCornerRadius(kRadius);
  view.addSubview(panel_);
  const bool sheet = is_action_sheet();
  title_label_ = text(self().title(), sheet ? 13 : 17, graphics::font_weight::kSemibold);
  message_label_ = text(message_, 13, graphics::font_weight::kRegular);
  if (sheet) {
    title_label_.setTextColor(UIColor::secondaryLabelColor());
    message_label_.setTextColor(UIColor::secondaryLabelColor());
    cancel_panel_ = objc::make<UIAlertPanel>();
    cancel_panel_.setClipsToBounds(true);
    cancel_panel_.layer().setCornerRadius(kRadius);
    view.addSubview(cancel_panel_);
  }
  panel_.addSubview(title_label_);
  panel_.addSubview(message_label_);
  for (const UITextField& field : fields_) panel_.addSubview(field);
  for (const UIAlertAction& action : actions_) {
    const UIControl button = AlertButton::made_for(action, self());
    const bool apart = sheet && action.style() == UIAlertActionStyle::Cancel;
    (apart ? cancel_panel_ : panel_).addSubview(button);
    buttons_.push_back(button);
  }
  lay_out(sheet ? sheet_width() : kWidth);
}

double AlertController::sheet_width() {
  const Size screen = Session::current()->device().size();
  return std::min(kMostSheetWidth, screen.width - 2 * kSheetMargin);
}

bool AlertController::side_by_side() {
  if (is_action_sheet() || buttons_.size() != 2) return false;
  return std::ranges::all_of(buttons_, [](const UIControl& button) {
    return AlertButton::of(button.as<UIAlertButton>()).label().sizeThatFits({}).width <=
           kWidth / 2 - 2 * kButtonPadding;
  });
}

void AlertController::lay_out(double width) {
  double y = 0;
  const auto place_text = [&](const UILabel& label, double gap) {
    const bool empty = !label.text() || label.text().length() == 0;
    label.setHidden(empty);
    if (empty) return;
    const double room = width - 2 * kPadding;
    const double height = label.sizeThatFits({room, 0}).height;
    y += y == 0 ? (is_action_sheet() ? 14 : kTop) : gap;
    label.setFrame(Rect{{kPadding, y}, {room, height}});
    y += height;
  };
  place_text(title_label_, kTextGap);
  place_text(message_label_, kTextGap);
  for (const UITextField& field : fields_) {
    y += y == 0 ? kTop : field == fields_.front() ? 14 : kFieldGap;
    field.setFrame(Rect{{kPadding, y}, {width - 2 * kPadding, kFieldHeight}});
    y += kFieldHeight;
  }
  if (y > 0) y += is_action_sheet() ? 14 : fields_.empty() ? kTop : kPadding;
  y = ceil_to_pixel(y, display_settings().scale);
  place_buttons(width, y);
}

void AlertController::place_buttons(double width, double y) {
  const double height = is_action_sheet() ? kSheetButtonHeight : kButtonHeight;
  std::vector<UIControl> ordered;
  std::vector<UIControl> cancels;
  for (const UIControl& button : buttons_) {
    const bool cancel =
        AlertButton::of(button.as<UIAlertButton>()).action().style() == UIAlertActionStyle::Cancel;
    (cancel ? cancels : ordered).push_back(button);
  }
  if (side_by_side()) {
    // "Cancel" stands first, wherever it was added.
    ordered.insert(ordered.begin(), cancels.begin(), cancels.end());
    for (std::size_t i = 0; i < 2; ++i) {
      const bool second = (i == 1) != is_right_to_left(panel_);
      ordered[i].setFrame(Rect{{second ? width / 2 : 0, y}, {width / 2, height}});
    }
    y += height;
  } else {
    if (!is_action_sheet()) ordered.insert(ordered.end(), cancels.begin(), cancels.end());
    for (const UIControl& button : ordered) {
      button.setFrame(Rect{{0, y}, {width, height}});
      y += height;
    }
  }
  panel_.setFrame(Rect{{0, 0}, {width, y}});
  content_height_ = y;
  if (is_action_sheet() && !cancels.empty()) {
    cancel_panel_.setFrame(Rect{{0, y + kSheetGap}, {width, height}});
    for (const UIControl& button : cancels) button.setFrame(Rect{{0, 0}, {width, height}});
    content_height_ = y + kSheetGap + height;
  }
}

void AlertController::viewWillDisappear(bool) {
  for (const UITextField& field : fields_) field.resignFirstResponder();
}

void AlertController::addAction(const UIAlertAction& action) {
  if (action) actions_.push_back(action);
}

NSArray AlertController::actions() { return array_of(actions_); }

void AlertController::addTextField(const objc::Block<void(UITextField)>& configure) {
  const UITextField field = objc::make<UITextField>();
  field.setBorderStyle(UITextBorderStyle::RoundedRect);
  field.setFont(font_from(graphics::Font::system(13)));
  fields_.push_back(field);
  configure(field);
}

NSArray AlertController::textFields() { return array_of(fields_); }

UIAlertAction AlertController::action_of_style(bool cancel) {
  for (const UIAlertAction& action : actions_) {
    if ((action.style() == UIAlertActionStyle::Cancel) == cancel) return action;
  }
  return UIAlertAction();
}

bool AlertController::handleKey(const UIKey& key) {
  UIAlertAction answer;
  if (key.press().code == KeyCode::Escape) {
    answer = action_of_style(true);
  } else if (key.press().code == KeyCode::Return) {
    answer = preferred_ ? preferred_ : action_of_style(false);
  } else {
    return false;
  }
  if (!answer && actions_.size() == 1) answer = actions_.front();  // a single answer is what either key means
  if (answer && answer.isEnabled()) choose(answer);
  return true;
}

Rect AlertController::frame_in(const Rect& room, const EdgeInsets& safe) {
  self().view();
  const double height = content_height_;
  if (!is_action_sheet()) {
    const double scale = display_settings().scale;
    return {{round_to_pixel((room.width() - kWidth) / 2, scale),
             round_to_pixel((room.height() - height) / 2, scale)},
            {kWidth, height}};
  }
  const double width = panel_.bounds().size.width;
  const double bottom = std::max(safe.bottom, kSheetMargin);
  return {{(room.width() - width) / 2, room.height() - bottom - height}, {width, height}};
}

void AlertController::start_writing() {
  if (!fields_.empty()) fields_.front().becomeFirstResponder();
}

void AlertController::choose(const UIAlertAction& action) {
  if (!self().presentingViewController() || !action.isEnabled()) return;
  // None of the handlers can run after this one; they may hold the alert, which holds them.
  const objc::Block<void(UIAlertAction)> chosen = AlertAction::of(action).handler;
  for (const UIAlertAction& each : actions_) AlertAction::of(each).handler = nullptr;
  self().dismissViewController(true, [action, chosen] { chosen(action); });
}

void AlertController::cancel() {
  if (const UIAlertAction action = action_of_style(true)) choose(action);
}

void define_alert_controller() {
  objc::Class<UIAlertAction>::implemented_by<AlertAction>()
      .class_method<"actionWithTitle:style:handler:", &AlertAction::with>()
      .getter<"title", &AlertAction::title>()
      .getter<"style", &AlertAction::style>()
      .property<"isEnabled", "setEnabled:", &AlertAction::enabled>()
      .register_class();
  objc::Class<UIAlertButton>::implemented_by<AlertButton>()
      .method<"_chosen", &AlertButton::chosen>()
      .method<"accessibilityLabel", &AlertButton::title>()
      .method<"currentTitle", &AlertButton::title>()
      .register_class();
  set_painter<&AlertButton::paint>();
  objc::Class<UIAlertPanel>().register_class();
  set_painter(objc::class_for<UIAlertPanel>(), &paint_panel);
  objc::Class<UIAlertController>::implemented_by<AlertController>()
      .class_method<"alertControllerWithTitle:message:preferredStyle:", &AlertController::with>()
      .method<"loadView", &AlertController::loadView>()
      .method<"viewWillDisappear:", &AlertController::viewWillDisappear>()
      .method<"addAction:", &AlertController::addAction>()
      .method<"actions", &AlertController::actions>()
      .method<"addTextFieldWithConfigurationHandler:", &AlertController::addTextField>()
      .method<"textFields", &AlertController::textFields>()
      .property<"message", "setMessage:", &AlertController::message_>()
      .getter<"preferredStyle", &AlertController::style_>()
      .property<"preferredAction", "setPreferredAction:", &AlertController::preferred_>()
      .method<hooks::kHandleKey, &AlertController::handleKey>()
      .register_class();
}

}  // namespace wispen::uikit
