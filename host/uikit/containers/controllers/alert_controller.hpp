// host/uikit/containers/controllers/alert_controller.hpp: UIAlertController: a question over the page, and
// its answers.
#pragma once

#include <vector>

#include "host/geometry/geometry.hpp"
#include "host/uikit/view/events/key.hpp"
#include "host/uikit/view/geometry.hpp"
#include "platform/UIKit.hpp"

namespace wispen::uikit {

class AlertAction : public objc::Implementation<AlertAction, UIAlertAction> {
 public:
  static UIAlertAction with(objc::ClassRef cls, const NSString& title, UIAlertActionStyle style,
                            const objc::Block<void(UIAlertAction)>& handler);

  NSString title;
  UIAlertActionStyle style = UIAlertActionStyle::Default;
  bool enabled = true;
  objc::Block<void(UIAlertAction)> handler;
};

class AlertController : public objc::Implementation<AlertController, UIAlertController> {
 public:
  static UIAlertController with(objc::ClassRef, const NSString& title, const NSString& message,
                                UIAlertControllerStyle style);
  static UILabel text(const NSString& content, double size, double weight);
  void loadView();
  static double sheet_width();
  /// Whether the two answers fit beside each other.
  bool side_by_side();
  void lay_out(double width);
  void place_buttons(double width, double y);
  void viewWillDisappear(bool);
  void addAction(const UIAlertAction& action);
  NSArray actions();
  void addTextField(const objc::Block<void(UITextField)>& configure);
  NSArray textFields();
  UIAlertAction action_of_style(bool cancel);
  bool handleKey(const UIKey& key);
  const UIAlertAction& preferred_action() const { return preferred_; }
  bool is_action_sheet() const { return style_ == UIAlertControllerStyle::ActionSheet; }
  /// Where it lies in the window.
  Rect frame_in(const Rect& room, const EdgeInsets& safe);
  /// Gives its first field, where it has one, the keyboard.
  void start_writing();
  /// Closes it, and then tells the action.
  void choose(const UIAlertAction& action);
  /// What a click beside an action sheet means.
  void cancel();

 private:
  friend void define_alert_controller();

  NSString message_;
  UIAlertControllerStyle style_ = UIAlertControllerStyle::ActionSheet;
  std::vector<UIAlertAction> actions_;
  UIAlertAction preferred_;
  std::vector<UITextField> fields_;
  UILabel title_label_;
  UILabel message_label_;
  std::vector<UIControl> buttons_;  // one for each action
  UIView panel_;                    // the question and its answers
  UIView cancel_panel_;             // of an action sheet
  double content_height_ = 0;
};

/// UIAlertAction and UIAlertController.
void define_alert_controller();

}  // namespace wispen::uikit
