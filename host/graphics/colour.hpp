// host/graphics/colour.hpp: a colour value, fixed or different by appearance.
#pragma once

#include <array>
#include <cstdint>

#include "host/graphics/appearance.hpp"

namespace wispen::graphics {

enum class ColourSpace : std::uint8_t { Rgb, Grey };

/// Red, green, blue and alpha, not premultiplied, not clamped.
struct Rgba {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 0;
  friend bool operator==(const Rgba&, const Rgba&) = default;
};

/// Hue (0 to 1, 0 is red), saturation, brightness and alpha.
struct Hsba {
  double hue = 0;
  double saturation = 0;
  double brightness = 0;
  double alpha = 0;
};

/// Components in one space, exactly as they were given: values outside 0...1 are kept.
class Components {
 public:
  static Components rgb(double red, double green, double blue, double alpha) {
    return {ColourSpace::Rgb, {red, green, blue, alpha}};
  }
  static Components grey(double white, double alpha) { return {ColourSpace::Grey, {white, alpha, 0, 0}}; }

  ColourSpace space() const { return space_; }
  /// 4 in RGB, 2 in grey; the last one is alpha.
  int count() const { return space_ == ColourSpace::Rgb ? 4 : 2; }
  /// The first count() values mean something.
  const std::array<double, 4>& values() const { return values_; }
  double alpha() const { return space_ == ColourSpace::Rgb ? values_[3] : values_[1]; }
  Components with_alpha(double alpha) const;
  Rgba to_rgba() const;
  friend bool operator==(const Components&, const Components&) = default;

 private:
  Components(ColourSpace space, std::array<double, 4> values) : space_(space), values_(values) {}

  ColourSpace space_;
  std::array<double, 4> values_;
};

/// A colour as views hold it: it may differ by appearance and is resolved only when it is drawn.
class Colour {
 public:
  /// Black with no opacity.
  Colour() : Colour(Components::grey(0, 0)) {}
  explicit Colour(Components components) : light_(components), dark_(components), elevated_(components) {}
  static Colour rgb(double red, double green, double blue, double alpha = 1) {
    return Colour(Components::rgb(red, green, blue, alpha));
  }
  static Colour grey(double white, double alpha = 1) { return Colour(Components::grey(white, alpha)); }
  /// All four from 0 to 1; a hue outside wraps round.
  static Colour hsb(double hue, double saturation, double brightness, double alpha = 1);
  /// 0xRRGGBB with an opacity.
  static Colour hex(std::uint32_t rgb, double alpha = 1);
  static Colour dynamic(const Colour& light, const Colour& dark) { return dynamic(light, dark, dark); }
  static Colour dynamic(const Colour& light, const Colour& dark, const Colour& elevated);

  bool is_dynamic() const { return !(light_ == dark_) || !(dark_ == elevated_); }
  const Components& resolved(Appearance appearance) const {
    if (appearance == Appearance::Light) return light_;
    return appearance == Appearance::Dark ? dark_ : elevated_;
  }
  Rgba rgba(Appearance appearance = Appearance::Light) const { return resolved(appearance).to_rgba(); }
  Hsba to_hsb(Appearance appearance = Appearance::Light) const;
  /// Replaces the opacity in every look.
  Colour with_alpha(double alpha) const;
  friend bool operator==(const Colour&, const Colour&) = default;

 private:
  Components light_;
  Components dark_;
  Components elevated_;
};

/// The platform's hue, saturation and brightness of components. Hue and saturation of a grey are 0.
Hsba hsb_from_rgb(const Rgba& colour);
Rgba rgb_from_hsb(const Hsba& colour);
/// Premultiplied 0xAARRGGBB of a colour clamped to what a byte can hold.
std::uint32_t premultiplied_argb(const Rgba& colour);

}  // namespace wispen::graphics
