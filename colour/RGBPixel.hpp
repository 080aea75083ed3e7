// colour/RGBPixel.hpp: a colour and a count, as other code in the process hands them in.
#pragma once

#include "platform/Foundation.hpp"

namespace wispen {

/// Plain numbers, 0 in a new record. The grouping itself works on arrays and makes none of these.
class RGBPixel : public objc::Authored<RGBPixel, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"RGBPixel"};
  using Authored::Authored;

  static void define();

  int r() const { return variable<int, "_r">(); }
  int g() const { return variable<int, "_g">(); }
  int b() const { return variable<int, "_b">(); }
  int d() const { return variable<int, "_d">(); }
  void setR(int value) const { variable<int, "_r">() = value; }
  void setG(int value) const { variable<int, "_g">() = value; }
  void setB(int value) const { variable<int, "_b">() = value; }
  void setD(int value) const { variable<int, "_d">() = value; }
};

}  // namespace wispen
