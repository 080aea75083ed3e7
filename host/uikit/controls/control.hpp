// host/uikit/controls/control.hpp: UIControl: a view that turns touches and keys into actions.
#pragma once

#include <vector>

#include "host/uikit/events/key.hpp"
#include "host/uikit/events/touch.hpp"
#include "host/uikit/views/view.hpp"

namespace wispen::uikit {

/// The platform's bits.
namespace control_event {
inline constexpr NSUInteger kTouchDown = 1;
inline constexpr NSUInteger kTouchDownRepeat = 1 << 1;
inline constexpr NSUInteger kTouchDragInside = 1 << 2;
inline constexpr NSUInteger kTouchDragOutside = 1 << 3;
inline constexpr NSUInteger kTouchDragEnter = 1 << 4;
inline constexpr NSUInteger kTouchDragExit = 1 << 5;
inline constexpr NSUInteger kTouchUpInside = 1 << 6;
inline constexpr NSUInteger kTouchUpOutside = 1 << 7;
inline constexpr NSUInteger kTouchCancel = 1 << 8;
inline constexpr NSUInteger kValueChanged = 1 << 12;
inline constexpr NSUInteger kPrimaryActionTriggered = 1 << 13;
inline constexpr NSUInteger kEditingDidBegin = 1 << 16;
inline constexpr NSUInteger kEditingChanged = 1 << 17;
inline constexpr NSUInteger kEditingDidEnd = 1 << 18;
inline constexpr NSUInteger kEditingDidEndOnExit = 1 << 19;
}  // namespace control_event

namespace control_state {
inline constexpr NSUInteger kNormal = 0;
inline constexpr NSUInteger kHighlighted = 1;
inline constexpr NSUInteger kDisabled = 2;
inline constexpr NSUInteger kSelected = 4;
}  // namespace control_state

struct ControlTarget {
  objc::Weak<NSObject> target;
  bool has_target = false;  // without one the action goes along the responder chain
  objc::Selector action;
  NSUInteger events = 0;
};

struct ControlState {
  std::vector<ControlTarget> targets;
  bool enabled = true;
  bool selected = false;
  bool highlighted = false;
  bool tracking = false;
  bool inside = false;
  NSInteger vertical_alignment = 0;
  NSInteger horizontal_alignment = 0;
};

class Control : public objc::Authored<Control, View> {
 public:
  static constexpr objc::FixedString kClass{"UIControl"};
  using Authored::Authored;

  static void define();
  ControlState& control() const { return state<ControlState>(); }

  bool isEnabled() const { return control().enabled; }
  void setEnabled(bool enabled) const;
  bool isSelected() const { return control().selected; }
  void setSelected(bool selected) const;
  bool isHighlighted() const { return control().highlighted; }
  void setHighlighted(bool highlighted) const;
  NSUInteger control_states() const;
  void addTarget(const NSObject& target, objc::Selector action, NSUInteger events) const;
  void removeTarget(const NSObject& target, objc::Selector action, NSUInteger events) const;
  /// To every target of any of these events, in order of registration.
  void sendActions(NSUInteger events) const { send_actions(events, NSObject()); }
  void send_actions(NSUInteger events, const NSObject& event) const;

 private:
  friend struct ControlMethods;
};

}  // namespace wispen::uikit
