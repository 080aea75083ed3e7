// host/uikit/values/color.hpp: UIColor, and its way to and from the colours that are drawn.
#pragma once

#include "host/graphics/colour.hpp"
#include "platform/UIKit/UIColor.hpp"

namespace wispen::uikit {

struct ColorState;

class Color : public objc::Authored<Color, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"UIColor"};
  using Authored::Authored;

  static void define();
  static Color make(const graphics::Colour& colour);

  const graphics::Colour& colour() const;
  Color colorWithAlphaComponent(double alpha) const;
  Color resolvedColorWithTraitCollection(const NSObject& traits) const;
  bool getRed(double* red, double* green, double* blue, double* alpha) const;
  bool getHue(double* hue, double* saturation, double* brightness, double* alpha) const;
  bool getWhite(double* white, double* alpha) const;
  CGColorRef CGColor() const;
  bool isEqual(const NSObject& other) const;
  NSUInteger hash() const;
  NSString description() const;
  Color copy() const { return *this; }

 private:
  friend Color with_colour(Color color, const graphics::Colour& colour);
  ColorState& parts() const;
};

/// Clear for nil.
graphics::Colour colour_of(const UIColor& color);
UIColor color_from(const graphics::Colour& colour);
/// What the traits say, or the display where they leave it open.
graphics::Appearance appearance_of(const NSObject& traits);

}  // namespace wispen::uikit
