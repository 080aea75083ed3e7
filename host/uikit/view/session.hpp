// host/uikit/view/session.hpp: what all views of one running host share.
#pragma once

#include <functional>
#include <memory>

#include "host/core/main_loop.hpp"
#include "host/uikit/view/animation.hpp"
#include "host/uikit/view/device/device_model.hpp"
#include "host/uikit/view/events/touch_dispatcher.hpp"

namespace wispen::uikit {

/// One at a time, on the main thread, between the host's start and its stop. `loop` must outlive it.
class Session {
 public:
  Session(MainLoop& loop, DeviceModel device);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  ~Session();

  /// Null while no host runs.
  static Session* current();

  MainLoop& loop() { return loop_; }
  AnimationEngine& animations() { return animations_; }
  TouchDispatcher& touches() { return touches_; }
  const DeviceModel& device() const { return device_; }
  /// Resizes every window that fills the screen, and tells the views.
  void set_device(DeviceModel device);
  /// After appearance, text size, language or direction changed: every view is told, laid out and painted
  /// again.
  void traits_changed();

 private:
  MainLoop& loop_;
  AnimationEngine animations_;
  TouchDispatcher touches_;
  DeviceModel device_;
};

/// The running host's loop. There is one whenever views exist.
MainLoop& main_loop();

/// Makes every class of UIKit known to the runtime.
void define_uikit();

}  // namespace wispen::uikit
