// host/graphics/colour.cpp: a colour value, fixed or different by appearance.

#include "host/graphics/colour.hpp"

#include <algorithm>
#include <cmath>

namespace wispen::graphics {

Components Components::with_alpha(double alpha) const {
  Components copy = *this;
  copy.values_[space_ == ColourSpace::Rgb ? 3 : 1] = alpha;
  return copy;
}

Rgba Components::to_rgba() const {
  if (space_ == ColourSpace::Grey) return {values_[0], values_[0], values_[0], values_[1]};
  return {values_[0], values_[1], values_[2], values_[3]};
}

Colour Colour::hsb(double hue, double saturation, double brightness, double alpha) {
  const Rgba rgba = rgb_from_hsb({hue, saturation, brightness, alpha});
  return rgb(rgba.red, rgba.green, rgba.blue, rgba.alpha);
}

Colour Colour::hex(std::uint32_t rgb_value, double alpha) {
  return rgb(((rgb_value >> 16) & 0xFF) / 255.0, ((rgb_value >> 8) & 0xFF) / 255.0,
             (rgb_value & 0xFF) / 255.0, alpha);
}

Colour Colour::dynamic(const Colour& light, const Colour& dark, const Colour& elevated) {
  Colour colour(light.light_);
  colour.dark_ = dark.dark_;
  colour.elevated_ = elevated.elevated_;
  return colour;
}

Hsba Colour::to_hsb(Appearance appearance) const { return hsb_from_rgb(rgba(appearance)); }

Colour Colour::with_alpha(double alpha) const {
  Colour copy(light_.with_alpha(alpha));
  copy.dark_ = dark_.with_alpha(alpha);
  copy.elevated_ = elevated_.with_alpha(alpha);
  return copy;
}

Hsba hsb_from_rgb(const Rgba& colour) {
  const double largest = std::max({colour.red, colour.green, colour.blue});
  const double smallest = std::min({colour.red, colour.green, colour.blue});
  const double range = largest - smallest;
  Hsba result{0, 0, largest, colour.alpha};
  if (range == 0 || largest == 0) return result;
  result.saturation = range / largest;
  double sixths = 0;
  if (largest == colour.red) {
    sixths = (colour.green - colour.blue) / range;
  } else if (largest == colour.green) {
    sixths = 2 + (colour.blue - colour.red) / range;
  } else {
    sixths = 4 + (colour.red - colour.green) / range;
  }
  result.hue = (sixths < 0 ? sixths + 6 : sixths) / 6;
  return result;
}

Rgba rgb_from_hsb(const Hsba& colour) {
  double whole = 0;
  double sixths = std::modf(colour.hue - std::floor(colour.hue), &whole) * 6;
  if (!std::isfinite(sixths)) sixths = 0;
  const int sector = std::min(static_cast<int>(sixths), 5);
  const double fraction = sixths - sector;
  const double v = colour.brightness;
  const double low = v * (1 - colour.saturation);
  const double falling = v * (1 - colour.saturation * fraction);
  const double rising = v * (1 - colour.saturation * (1 - fraction));
  switch (sector) {
    case 0:
      return {v, rising, low, colour.alpha};
    case 1:
      return {falling, v, low, colour.alpha};
    case 2:
      return {low, v, rising, colour.alpha};
    case 3:
      return {low, falling, v, colour.alpha};
    case 4:
      return {rising, low, v, colour.alpha};
    default:
      return {v, low, falling, colour.alpha};
  }
}

std::uint32_t premultiplied_argb(const Rgba& colour) {
  const auto clamped = [](double value) { return value > 0 ? std::min(value, 1.0) : 0.0; };  // NaN gives 0
  const double alpha = clamped(colour.alpha);
  const auto byte = [&](double value) { return static_cast<std::uint32_t>(std::lround(value * 255)); };
  return byte(alpha) << 24 | byte(clamped(colour.red) * alpha) << 16 |
         byte(clamped(colour.green) * alpha) << 8 | byte(clamped(colour.blue) * alpha);
}

}  // namespace wispen::graphics
