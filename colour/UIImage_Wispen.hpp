// colour/UIImage_Wispen.hpp: UIImage(Wispen): the colour that dominates an image.
//
// Nothing in the bundle sends these messages; they are for other code in the process:
//   -wispDominantColor         the more vivid of the two largest groups; red where there are fewer than two
//   -wispSecondDominantColor   the largest group, or the second where the first covers more than 60 %; raises
//                              the out-of-range exception for an image without an opaque pixel
//   -colourDistance:andB:      the city-block distance of two RGBPixels
#pragma once

namespace wispen {

/// Adds the methods to the platform's class.
void define_image_category();

}  // namespace wispen
