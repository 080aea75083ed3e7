// host/uikit/controls/activity_indicator.hpp: UIActivityIndicatorView: something is under way.
#pragma once

#include "host/uikit/views/view.hpp"

namespace wispen::uikit {

/// The platform's values; the first three are those of old systems.
enum class ActivityStyle : NSInteger { WhiteLarge = 0, White = 1, Gray = 2, Medium = 100, Large = 101 };

struct ActivityState;

/// The host's UIActivityIndicatorView. It turns by the host's clock, and only while it is in a window.
class ActivityIndicator : public objc::Authored<ActivityIndicator, View> {
 public:
  static constexpr objc::FixedString kClass{"UIActivityIndicatorView"};
  using Authored::Authored;

  static void define();
  static ActivityIndicator make(ActivityStyle style);

  void startAnimating() const;
  void stopAnimating() const;
  bool isAnimating() const;

 private:
  friend struct ActivityMethods;
  ActivityState& parts() const;
  void farewell();
};

}  // namespace wispen::uikit
