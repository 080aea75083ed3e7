// colour/UIColor_Wispen.hpp: UIColor(Wispen): colours as hexadecimal text, and how dark they are.
//
// Nothing in the bundle sends these messages; they are for other code in the process:
//   +wispRGBAColorFromHexString:   a colour, never nil
//   +wispHexStringFromColor:       "#RRGGBB"
//   -wispIsDarkColor               yes or no
#pragma once

namespace wispen {

/// Adds the methods to the platform's class.
void define_color_category();

}  // namespace wispen
