// host/uikit/controllers/alert_controller.cpp: UIAlertController: a question, and its answers.

#include "host/uikit/controllers/alert_controller.hpp"

#include <algorithm>

#include "host/graphics/canvas.hpp"
#include "host/uikit/controls/control.hpp"
#include "host/uikit/controls/label.hpp"
#include "host/uikit/controls/text_field.hpp"
#include "host/uikit/events/key.hpp"
#include "host/uikit/painting/painter.hpp"
#include "host/uikit/session.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/font.hpp"

namespace wispen::uikit {

namespace {

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

}  // namespace

struct AlertState {
  NSString message;
  NSInteger style = 0;  // 0 action sheet, 1 alert
  std::vector<AlertAction> actions;
  AlertAction preferred;
  std::vector<TextField> fields;
  Label title_label;
  Label message_label;
  std::vector<Control> buttons;  // one for each action
  View panel;                    // the question and its answers
  View cancel_panel;             // of an action sheet
  double content_height = 0;
};

AlertActionState& AlertAction::parts() const { return state<AlertActionState>(); }
AlertState& AlertController::alert() const { return state<AlertState>(); }
bool AlertController::is_action_sheet() const { return alert().style == 0; }

/// One answer.
class AlertButton : public objc::Authored<AlertButton, Control> {
 public:
  static constexpr objc::FixedString kClass{"WispenHostAlertButton"};
  using Authored::Authored;
  struct State {
    AlertAction action;
    objc::Weak<AlertController> alert;
  };
  State& parts() const { return state<State>(); }

  static AlertButton of(const AlertAction& action, const AlertController& alert) {
    AlertButton button = alloc().initialize<"initWithFrame:">(Rect{});
    button.parts().action = action;
    button.parts().alert = alert;
    button.setEnabled(action.parts().enabled);
    button.addTarget(button, objc::selector<"_chosen">(), control_event::kTouchUpInside);
    return button;
  }
  void chosen() const { parts().alert.lock().choose(parts().action); }
  NSString accessibilityLabel() const { return parts().action.parts().title; }
  static Label label_of(const AlertButton& self) {
    const AlertController alert = self.parts().alert.lock();
    const AlertActionState& action = self.parts().action.parts();
    const bool bold = action.style == AlertActionStyle::Cancel
                          ? !alert || !alert.alert().preferred
                          : alert && alert.alert().preferred == self.parts().action;
    const Label label = Label::make();
    const double size = alert && alert.is_action_sheet() ? 20 : 17;
    label.setFont(font_from(graphics::Font::system(
        size, bold ? graphics::font_weight::kSemibold : graphics::font_weight::kRegular)));
    label.setText(action.title);
    label.setTextAlignment(1);
    UIColor colour = self.tintColor();
    if (action.style == AlertActionStyle::Destructive) colour = UIColor::systemRedColor();
    if (!self.isEnabled()) colour = UIColor::tertiaryLabelColor();
    label.setTextColor(colour);
    return label;
  }
  static void paint(const View& view, graphics::Canvas& canvas, const Rect& bounds) {
    const AlertButton self = view.as<AlertButton>();
    if (self.isHighlighted()) canvas.fill(bounds, colour_of(UIColor::tertiarySystemFillColor()));
    const Label label = label_of(self);
    label.setFrame(bounds.inset(8, 0));
    const auto text = label.set_in(label.bounds().size);
    canvas.draw(*text, {bounds.min_x() + 8, bounds.mid_y() - text->size().height / 2},
                colour_of(label.textColor()));
  }
  static void define() {
    objc::Class<AlertButton>()
        .state<State>()
        .method<"_chosen", &AlertButton::chosen>()
        .method<"accessibilityLabel", &AlertButton::accessibilityLabel>()
        .register_class();
    set_painter(objc::class_for<AlertButton>(), &paint);
  }
};

/// The rounded pane behind, with hairlines between the answers.
class AlertPanel : public objc::Authored<AlertPanel, View> {
 public:
  static constexpr objc::FixedString kClass{"WispenHostAlertPanel"};
  using Authored::Authored;
  static AlertPanel make() { return alloc().initialize<"initWithFrame:">(Rect{}); }
  static void paint(const View& view, graphics::Canvas& canvas, const Rect& bounds) {
    const graphics::Colour pane = graphics::Colour::dynamic(graphics::Colour::hex(0xF2F2F2, 0.94),
                                                            graphics::Colour::hex(0x262626, 0.94));
    canvas.fill(graphics::Path::rounded_rect(bounds, kRadius), pane);
    const double line = hairline();
    for (const View& subview : view.subviews()) {
      if (!objc::cast_or_nil<AlertButton>(subview)) continue;
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
  static void define() {
    objc::Class<AlertPanel>().register_class();
    set_painter(objc::class_for<AlertPanel>(), &paint);
  }
};

struct AlertMethods {
  using Self = AlertController;

  static Self with(objc::ClassRef, const NSString& title, const NSString& message, NSInteger style) {
    Self alert = objc::make<AlertController>();
    objc::send<"setTitle:">(alert, title);
    alert.alert().message = message;
    alert.alert().style = style;
    return alert;
  }

  static Label text(const NSString& content, double size, double weight) {
    const Label label = Label::make();
    label.setText(content);
    label.setNumberOfLines(0);
    label.setTextAlignment(1);
    label.setFont(font_from(graphics::Font::system(size, weight)));
    return label;
  }

  static void loadView(const Self& self) {
    AlertState& alert = self.alert();
    const View view = View::make();
    objc::send<"setView:">(self, view);
    alert.panel = AlertPanel::make();
    alert.panel.setClipsToBounds(true);
    alert.panel.layer().setCornerRadius(kRadius);
    view.addSubview(alert.panel);
    const bool sheet = self.is_action_sheet();
    alert.title_label = text(self.title(), sheet ? 13 : 17, graphics::font_weight::kSemibold);
    alert.message_label = text(alert.message, 13, graphics::font_weight::kRegular);
    if (sheet) {
      alert.title_label.setTextColor(UIColor::secondaryLabelColor());
      alert.message_label.setTextColor(UIColor::secondaryLabelColor());
      alert.cancel_panel = AlertPanel::make();
      alert.cancel_panel.setClipsToBounds(true);
      alert.cancel_panel.layer().setCornerRadius(kRadius);
      view.addSubview(alert.cancel_panel);
    }
    alert.panel.addSubview(alert.title_label);
    alert.panel.addSubview(alert.message_label);
    for (const TextField& field : alert.fields) alert.panel.addSubview(field);
    for (const AlertAction& action : alert.actions) {
      const AlertButton button = AlertButton::of(action, self);
      const bool apart = sheet && action.parts().style == AlertActionStyle::Cancel;
      (apart ? alert.cancel_panel : alert.panel).addSubview(button);
      alert.buttons.push_back(button);
    }
    lay_out(self, sheet ? sheet_width() : kWidth);
  }

  static double sheet_width() {
    const Size screen = Session::current()->device().size();
    return std::min(kMostSheetWidth, screen.width - 2 * kSheetMargin);
  }

  /// Whether the two answers fit beside each other.
  static bool side_by_side(const Self& self) {
    const AlertState& alert = self.alert();
    if (self.is_action_sheet() || alert.buttons.size() != 2) return false;
    return std::ranges::all_of(alert.buttons, [](const Control& button) {
      return AlertButton::label_of(button.as<AlertButton>()).sizeThatFits({}).width <= kWidth / 2 - 2 * 8;
    });
  }

  static void lay_out(const Self& self, double width) {
    AlertState& alert = self.alert();
    double y = 0;
    const auto place_text = [&](const Label& label, double gap) {
      const bool empty = !label.text() || label.text().length() == 0;
      label.setHidden(empty);
      if (empty) return;
      const double room = width - 2 * kPadding;
      const double height = label.sizeThatFits({room, 0}).height;
      y += y == 0 ? (self.is_action_sheet() ? 14 : kTop) : gap;
      label.setFrame({{kPadding, y}, {room, height}});
      y += height;
    };
    place_text(alert.title_label, kTextGap);
    place_text(alert.message_label, kTextGap);
    for (const TextField& field : alert.fields) {
      y += y == 0 ? kTop : field == alert.fields.front() ? 14 : kFieldGap;
      field.setFrame({{kPadding, y}, {width - 2 * kPadding, kFieldHeight}});
      y += kFieldHeight;
    }
    if (y > 0) y += self.is_action_sheet() ? 14 : alert.fields.empty() ? kTop : kPadding;
    y = ceil_to_pixel(y, display_settings().scale);
    place_buttons(self, width, y);
  }

  static void place_buttons(const Self& self, double width, double y) {
    AlertState& alert = self.alert();
    const double height = self.is_action_sheet() ? kSheetButtonHeight : kButtonHeight;
    std::vector<Control> ordered;
    std::vector<Control> cancels;
    for (const Control& button : alert.buttons) {
      const bool cancel = button.as<AlertButton>().parts().action.parts().style == AlertActionStyle::Cancel;
      (cancel ? cancels : ordered).push_back(button);
    }
    if (side_by_side(self)) {
      // "Cancel" stands first, wherever it was added.
      ordered.insert(ordered.begin(), cancels.begin(), cancels.end());
      for (std::size_t i = 0; i < 2; ++i) {
        const bool second = (i == 1) != alert.panel.is_right_to_left();
        ordered[i].setFrame({{second ? width / 2 : 0, y}, {width / 2, height}});
      }
      y += height;
    } else {
      if (!self.is_action_sheet()) ordered.insert(ordered.end(), cancels.begin(), cancels.end());
      for (const Control& button : ordered) {
        button.setFrame({{0, y}, {width, height}});
        y += height;
      }
    }
    alert.panel.setFrame({{0, 0}, {width, y}});
    alert.content_height = y;
    if (self.is_action_sheet() && !cancels.empty()) {
      alert.cancel_panel.setFrame({{0, y + kSheetGap}, {width, height}});
      for (const Control& button : cancels) button.setFrame({{0, 0}, {width, height}});
      alert.content_height = y + kSheetGap + height;
    }
  }

  static void viewWillDisappear(const Self& self, bool) {
    for (const TextField& field : self.alert().fields) objc::send<"resignFirstResponder", bool>(field);
  }

  static void addAction(const Self& self, const AlertAction& action) {
    if (action) self.alert().actions.push_back(action);
  }
  static NSArray actions(const Self& self) {
    NSMutableArray all = NSMutableArray::array();
    for (const AlertAction& action : self.alert().actions) all.addObject(action);
    return all;
  }
  static void addTextField(const Self& self, const objc::Block<void(TextField)>& configure) {
    const TextField field = TextField::make();
    objc::send<"setBorderStyle:">(field, NSInteger{3});
    field.set_font(graphics::Font::system(13));
    self.alert().fields.push_back(field);
    configure(field);
  }
  static NSArray textFields(const Self& self) {
    NSMutableArray all = NSMutableArray::array();
    for (const TextField& field : self.alert().fields) all.addObject(field);
    return all;
  }
  static NSString message(const Self& self) { return self.alert().message; }
  static void setMessage(const Self& self, const NSString& message) { self.alert().message = message; }
  static NSInteger preferredStyle(const Self& self) { return self.alert().style; }
  static AlertAction preferredAction(const Self& self) { return self.alert().preferred; }
  static void setPreferredAction(const Self& self, const AlertAction& action) {
    self.alert().preferred = action;
  }
  static AlertAction action_of_style(const Self& self, bool cancel) {
    for (const AlertAction& action : self.alert().actions) {
      if ((action.parts().style == AlertActionStyle::Cancel) == cancel) return action;
    }
    return AlertAction();
  }
  static bool handleKey(const Self& self, const Key& key) {
    const std::vector<AlertAction>& all = self.alert().actions;
    AlertAction answer;
    if (key.code() == KeyCode::Escape) {
      answer = action_of_style(self, true);
    } else if (key.code() == KeyCode::Return) {
      answer = self.alert().preferred ? self.alert().preferred : action_of_style(self, false);
    } else {
      return false;
    }
    if (!answer && all.size() == 1) answer = all.front();  // a single answer is what either key means
    if (answer && answer.parts().enabled) self.choose(answer);
    return true;
  }
};

Rect AlertController::frame_in(const Rect& room, const EdgeInsets& safe) const {
  view();
  const double height = alert().content_height;
  if (!is_action_sheet()) {
    const double scale = display_settings().scale;
    return {{round_to_pixel((room.width() - kWidth) / 2, scale),
             round_to_pixel((room.height() - height) / 2, scale)},
            {kWidth, height}};
  }
  const double width = alert().panel.bounds().width();
  const double bottom = std::max(safe.bottom, kSheetMargin);
  return {{(room.width() - width) / 2, room.height() - bottom - height}, {width, height}};
}

void AlertController::start_writing() const {
  if (!alert().fields.empty()) objc::send<"becomeFirstResponder", bool>(alert().fields.front());
}

void AlertController::choose(const AlertAction& action) const {
  if (!presenting() || !action.parts().enabled) return;
  // None of the handlers can run after this one; they may hold the alert, which holds them.
  const objc::Block<void(AlertAction)> chosen = action.parts().handler;
  for (const AlertAction& each : alert().actions) each.parts().handler = nullptr;
  dismiss(true, [action, chosen] { chosen(action); });
}

void AlertController::cancel() const {
  if (const AlertAction action = AlertMethods::action_of_style(*this, true)) choose(action);
}

namespace {

AlertAction action_with(objc::ClassRef, const NSString& title, NSInteger style,
                        const objc::Block<void(AlertAction)>& handler) {
  AlertAction action = objc::make<AlertAction>();
  action.parts().title = title;
  action.parts().style = static_cast<AlertActionStyle>(style);
  action.parts().handler = handler;
  return action;
}
NSString action_title(const AlertAction& action) { return action.parts().title; }
NSInteger action_style(const AlertAction& action) { return static_cast<NSInteger>(action.parts().style); }
bool action_enabled(const AlertAction& action) { return action.parts().enabled; }
void set_action_enabled(const AlertAction& action, bool enabled) { action.parts().enabled = enabled; }

}  // namespace

void AlertAction::define() {
  objc::Class<AlertAction>()
      .state<AlertActionState>()
      .class_method<"actionWithTitle:style:handler:", &action_with>()
      .method<"title", &action_title>()
      .method<"style", &action_style>()
      .method<"isEnabled", &action_enabled>()
      .method<"setEnabled:", &set_action_enabled>()
      .register_class();
}

void AlertController::define() {
  using M = AlertMethods;
  AlertButton::define();
  AlertPanel::define();
  objc::Class<AlertController>()
      .state<AlertState>()
      .class_method<"alertControllerWithTitle:message:preferredStyle:", &M::with>()
      .method<"loadView", &M::loadView>()
      .method<"viewWillDisappear:", &M::viewWillDisappear>()
      .method<"addAction:", &M::addAction>()
      .method<"actions", &M::actions>()
      .method<"addTextFieldWithConfigurationHandler:", &M::addTextField>()
      .method<"textFields", &M::textFields>()
      .method<"message", &M::message>()
      .method<"setMessage:", &M::setMessage>()
      .method<"preferredStyle", &M::preferredStyle>()
      .method<"preferredAction", &M::preferredAction>()
      .method<"setPreferredAction:", &M::setPreferredAction>()
      .method<"_handleKey:", &M::handleKey>()
      .register_class();
}

}  // namespace wispen::uikit
