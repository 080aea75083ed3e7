// host/uikit/controls/slider.hpp: UISlider: a value between two others.
#pragma once

#include "host/uikit/controls/control.hpp"
#include "platform/UIKit/UIImage.hpp"

namespace wispen::uikit {

struct SliderState;

/// The host's UISlider. Only its thumb takes a finger. A drag sends valueChanged whenever the value changes,
/// if it is continuous, and always when the finger lifts; setting it from code sends nothing.
class Slider : public objc::Authored<Slider, Control> {
 public:
  static constexpr objc::FixedString kClass{"UISlider"};
  using Authored::Authored;

  static void define();
  static Slider make();

  float value() const;
  /// Clamped to the range; a value that is no number is ignored.
  void setValue(float value, bool animated) const;
  float minimumValue() const;
  float maximumValue() const;
  /// The other end moves along when it would be passed.
  void setMinimumValue(float value) const;
  void setMaximumValue(float value) const;
  bool isContinuous() const;
  void setContinuous(bool continuous) const;
  void setMinimumTrackTintColor(const UIColor& colour) const;
  void setMaximumTrackTintColor(const UIColor& colour) const;
  void setThumbTintColor(const UIColor& colour) const;
  /// At the ends of the track; nil for none.
  void setMinimumValueImage(const UIImage& image) const;
  void setMaximumValueImage(const UIImage& image) const;
  /// In the slider's coordinates.
  Rect thumb_rect() const;

 private:
  friend struct SliderMethods;
  SliderState& parts() const;
};

}  // namespace wispen::uikit
