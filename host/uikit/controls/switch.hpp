// host/uikit/controls/switch.hpp: UISwitch: something that is on or off.
#pragma once

#include "host/uikit/controls/control.hpp"
#include "platform/UIKit/UIColor.hpp"

namespace wispen::uikit {

struct SwitchState;

/// The host's UISwitch. It has one size, whatever frame it is given. A user's change sends valueChanged,
/// before the touch's own actions; setting it from code sends nothing.
class Switch : public objc::Authored<Switch, Control> {
 public:
  static constexpr objc::FixedString kClass{"UISwitch"};
  using Authored::Authored;

  static constexpr Size kSize{51, 31};

  static void define();
  static Switch make();

  bool isOn() const;
  void setOn(bool on, bool animated) const;
  void setOnTintColor(const UIColor& colour) const;
  void setThumbTintColor(const UIColor& colour) const;

 private:
  friend struct SwitchMethods;
  SwitchState& parts() const;
};

}  // namespace wispen::uikit
