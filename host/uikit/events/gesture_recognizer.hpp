// host/uikit/events/gesture_recognizer.hpp: UIGestureRecognizer: what a finger's way means.
#pragma once

#include <vector>

#include "host/uikit/views/geometry.hpp"
#include "platform/Foundation.hpp"

namespace wispen::uikit {

class Touch;
class View;

/// The platform's values.
enum class GestureState : NSInteger {
  Possible = 0,
  Began = 1,
  Changed = 2,
  Ended = 3,
  Cancelled = 4,
  Failed = 5,
};

struct GestureTarget {
  objc::Weak<NSObject> target;
  objc::Selector action;
};

struct GestureRecognizerState {
  objc::Unowned<View> view;  // it owns the recogniser, and clears this when it dies
  std::vector<GestureTarget> targets;
  objc::Weak<NSObject> delegate;
  GestureState state = GestureState::Possible;
  bool enabled = true;
  bool cancels_touches = true;
  Point location;  // in the window
};

/// The host's UIGestureRecognizer. Its kinds read the touches that their view and all below it get.
class GestureRecognizer : public objc::Authored<GestureRecognizer, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"UIGestureRecognizer"};
  using Authored::Authored;

  static void define();
  GestureRecognizerState& recognition() const { return state<GestureRecognizerState>(); }

  View view() const;
  void set_view(const View& view) const;
  GestureState gesture_state() const { return recognition().state; }
  bool recognized() const;
  /// Tells the targets, in order of registration, unless the state only came to nothing.
  void move_to(GestureState state) const;
  void addTarget(const NSObject& target, objc::Selector action) const;
  void removeTarget(const NSObject& target, objc::Selector action) const;
  Point locationInView(const View& view) const;
  /// Back to possible, for the next finger.
  void reset() const;
  bool isEnabled() const { return recognition().enabled; }

  // By the touch dispatcher.
  void touch_began(const Touch& touch) const;
  void touch_moved(const Touch& touch) const;
  void touch_ended(const Touch& touch) const;
  void touch_cancelled(const Touch& touch) const;
};

struct TapState;

/// Taps: as many as required, each short of way and following the last soon enough.
class TapGestureRecognizer : public objc::Authored<TapGestureRecognizer, GestureRecognizer> {
 public:
  static constexpr objc::FixedString kClass{"UITapGestureRecognizer"};
  using Authored::Authored;
  static void define();
  TapState& parts() const;
};

struct LongPressState;

/// A finger that stays.
class LongPressGestureRecognizer : public objc::Authored<LongPressGestureRecognizer, GestureRecognizer> {
 public:
  static constexpr objc::FixedString kClass{"UILongPressGestureRecognizer"};
  using Authored::Authored;
  static void define();
  LongPressState& parts() const;
};

struct PanState;

/// A finger that moves away from where it came down.
class PanGestureRecognizer : public objc::Authored<PanGestureRecognizer, GestureRecognizer> {
 public:
  static constexpr objc::FixedString kClass{"UIPanGestureRecognizer"};
  using Authored::Authored;
  static void define();
  PanState& parts() const;
  static PanGestureRecognizer with_target(const NSObject& target, objc::Selector action);

  Point translationInView(const View& view) const;
  /// Points a second.
  Point velocityInView(const View& view) const;
  /// Which ways start it; both when none is set. Outside of the platform's interface.
  void restrict_to(bool horizontal, bool vertical) const;
  /// How far the finger moved in the window since it began, the first steps included.
  Point way() const;
};

/// A pan that starts at the edge of the screen: the platform's way back.
class ScreenEdgePanGestureRecognizer
    : public objc::Authored<ScreenEdgePanGestureRecognizer, PanGestureRecognizer> {
 public:
  static constexpr objc::FixedString kClass{"UIScreenEdgePanGestureRecognizer"};
  using Authored::Authored;
  static void define();
};

}  // namespace wispen::uikit
