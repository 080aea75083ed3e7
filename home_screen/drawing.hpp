// home_screen/drawing.hpp: pictures made of a formula for each place.
#pragma once

#include <algorithm>
#include <functional>

#include "platform/UIKit.hpp"

namespace wispen::home_screen {

/// Components from 0 to 1, not premultiplied.
struct Tone {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 1;

  friend constexpr Tone mix(Tone from, Tone to, double part) {
    const auto between = [part](double a, double b) { return a + (b - a) * part; };
    return {between(from.red, to.red), between(from.green, to.green), between(from.blue, to.blue),
            between(from.alpha, to.alpha)};
  }
};

inline UIColor colour(Tone tone) {
  return UIColor::colorWithRed(tone.red, tone.green, tone.blue, tone.alpha);
}

/// The tone that `tone_at` gives for the middle of each pixel; places are points from the top left corner.
/// `scale` is pixels a point.
UIImage painted(CGSize size, double scale, const std::function<Tone(double x, double y)>& tone_at);

/// How much of a pixel of that many points lies inside of a shape whose edge is `distance` points away;
/// inside is negative.
constexpr double coverage(double distance, double pixel) {
  return std::clamp(0.5 - distance / pixel, 0.0, 1.0);
}

}  // namespace wispen::home_screen
