// cells/WispButton.hpp: a button row in the colours of a label.
#pragma once

#include "platform/Preferences.hpp"

namespace wispen {

/// A row whose "style" is "disabled" has a grey title; it can be tapped all the same.
class WispButton : public objc::Authored<WispButton, PSTableCell> {
 public:
  static constexpr objc::FixedString kClass{"WispButton"};
  using Authored::Authored;

  static void define();
  void layoutSubviews() const;
};

}  // namespace wispen
