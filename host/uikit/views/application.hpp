// host/uikit/views/application.hpp: UIApplication, UIScreen and UIDevice: the things there is one of.
#pragma once

#include <vector>

#include "host/uikit/views/responder.hpp"
#include "host/uikit/views/window.hpp"

namespace wispen::uikit {

struct ApplicationState;

/// The host's UIApplication. It knows its windows, lowest first, and keeps none of them alive.
class Application : public objc::Authored<Application, Responder> {
 public:
  static constexpr objc::FixedString kClass{"UIApplication"};
  using Authored::Authored;

  static void define();
  static Application shared();

  std::vector<Window> windows() const;
  Window key_window() const;
  void set_key_window(const Window& window) const;
  void add_window(const Window& window) const;
  void sort_windows() const;
  /// Lays out what asked for it, in every window.
  void lay_out_windows() const;
  /// To the target, or without one to the first responder on the chain from the sender that answers it. False
  /// where nobody does.
  bool sendAction(objc::Selector action, const NSObject& target, const NSObject& sender,
                  const NSObject& event) const;
  /// URLs that were asked to be opened, oldest first.
  const std::vector<NSObject>& opened_urls() const;

 private:
  friend struct ApplicationMethods;
  ApplicationState& parts() const;
};

/// The host's UIScreen.
class Screen : public objc::Authored<Screen, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"UIScreen"};
  using Authored::Authored;
  static void define();
  static Screen main();
  Rect bounds() const;
};

/// The host's UIDevice.
class Device : public objc::Authored<Device, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"UIDevice"};
  using Authored::Authored;
  static void define();
};

}  // namespace wispen::uikit
