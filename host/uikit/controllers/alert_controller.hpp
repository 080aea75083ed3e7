// host/uikit/controllers/alert_controller.hpp: UIAlertController: a question, and its answers.
#pragma once

#include <vector>

#include "host/uikit/controllers/view_controller.hpp"

namespace wispen::uikit {

/// The platform's values.
enum class AlertActionStyle : NSInteger { Default = 0, Cancel = 1, Destructive = 2 };

struct AlertActionState;

class AlertAction : public objc::Authored<AlertAction, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"UIAlertAction"};
  using Authored::Authored;
  static void define();
  AlertActionState& parts() const;
};

struct AlertActionState {
  NSString title;
  AlertActionStyle style = AlertActionStyle::Default;
  bool enabled = true;
  objc::Block<void(AlertAction)> handler;
};

struct AlertState;

class AlertController : public objc::Authored<AlertController, ViewController> {
 public:
  static constexpr objc::FixedString kClass{"UIAlertController"};
  using Authored::Authored;

  static void define();
  AlertState& alert() const;
  bool is_action_sheet() const;
  /// Where it lies in the window.
  Rect frame_in(const Rect& room, const EdgeInsets& safe_area) const;
  /// Gives its first field, where it has one, the keyboard.
  void start_writing() const;
  /// Closes it, and then tells the action.
  void choose(const AlertAction& action) const;
  /// What a click beside an action sheet means.
  void cancel() const;

 private:
  friend struct AlertMethods;
};

}  // namespace wispen::uikit
