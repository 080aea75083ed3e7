// colour/RGBPixel.cpp: a colour and a count.

#include "colour/RGBPixel.hpp"

namespace wispen {

void RGBPixel::define() {
  objc::Class<RGBPixel>()
      .variable(kRed)
      .variable(kGreen)
      .variable(kBlue)
      .variable(kCount)
      .method<"r", &RGBPixel::r>()
      .method<"g", &RGBPixel::g>()
      .method<"b", &RGBPixel::b>()
      .method<"d", &RGBPixel::d>()
      .method<"setR:", &RGBPixel::setR>()
      .method<"setG:", &RGBPixel::setG>()
      .method<"setB:", &RGBPixel::setB>()
      .method<"setD:", &RGBPixel::setD>()
      .register_class();
}

}  // namespace wispen
