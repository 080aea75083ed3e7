// platform/UIKit/UIAlertController.hpp: a question over the page.
#pragma once

#include "platform/UIKit/UITextField.hpp"
#include "platform/UIKit/UIViewController.hpp"

enum class UIAlertControllerStyle : NSInteger { ActionSheet = 0, Alert = 1 };
enum class UIAlertActionStyle : NSInteger { Default = 0, Cancel = 1, Destructive = 2 };

class UIAlertAction : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"UIAlertAction"};
  using NSObject::NSObject;

  /// The handler runs once the alert has gone; none is fine.
  static UIAlertAction actionWithTitle(const NSString& title, UIAlertActionStyle style,
                                       const objc::Block<void(UIAlertAction)>& handler = nullptr) {
    return objc::send<"actionWithTitle:style:handler:", UIAlertAction>(objc::class_for<UIAlertAction>(),
                                                                       title, style, handler);
  }
  NSString title() const { return objc::send<"title", NSString>(*this); }
  UIAlertActionStyle style() const { return objc::send<"style", UIAlertActionStyle>(*this); }
  bool isEnabled() const { return objc::send<"isEnabled", bool>(*this); }
  void setEnabled(bool enabled) const { objc::send<"setEnabled:">(*this, enabled); }
};

class UIAlertController : public UIViewController {
 public:
  using Base = UIViewController;
  static constexpr objc::FixedString kClass{"UIAlertController"};
  using UIViewController::UIViewController;

  static UIAlertController alertController(const NSString& title, const NSString& message,
                                           UIAlertControllerStyle style) {
    return objc::send<"alertControllerWithTitle:message:preferredStyle:", UIAlertController>(
        objc::class_for<UIAlertController>(), title, message, style);
  }
  void addAction(const UIAlertAction& action) const { objc::send<"addAction:">(*this, action); }
  NSArray actions() const { return objc::send<"actions", NSArray>(*this); }
  /// `configure` is called at once with the new field.
  void addTextField(const objc::Block<void(UITextField)>& configure) const {
    objc::send<"addTextFieldWithConfigurationHandler:">(*this, configure);
  }
  NSArray textFields() const { return objc::send<"textFields", NSArray>(*this); }
  NSString message() const { return objc::send<"message", NSString>(*this); }
  void setPreferredAction(const UIAlertAction& action) const {
    objc::send<"setPreferredAction:">(*this, action);
  }
};
