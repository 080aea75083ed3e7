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

  int r() const { return variable(kRed); }
  int g() const { return variable(kGreen); }
  int b() const { return variable(kBlue); }
  int d() const { return variable(kCount); }
  void setR(int value) const { variable(kRed) = value; }
  void setG(int value) const { variable(kGreen) = value; }
  void setB(int value) const { variable(kBlue) = value; }
  void setD(int value) const { variable(kCount) = value; }

 private:
  static constexpr objc::InstanceVariable<"_r", int> kRed{};
  static constexpr objc::InstanceVariable<"_g", int> kGreen{};
  static constexpr objc::InstanceVariable<"_b", int> kBlue{};
  static constexpr objc::InstanceVariable<"_d", int> kCount{};
};

}  // namespace wispen
