// wispen/colour_items.hpp: the colours of texts and images, asked for by selector.
#pragma once

#include <string>
#include <vector>

namespace wispen::program {

struct NamedColour {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 1;
  std::string hex;  ///< as the bundle writes it
  bool dark = false;
};

/// Which colour of an image is wanted.
enum class ImageColour { Dominant, Second };

/// A text or an image file.
struct ColourItem {
  std::string input;
  bool is_image = false;
  NamedColour colour;
  std::string error;  ///< a sentence; empty when there is a colour
};

/// Each argument that names a file is that image, one that names a folder the images in it and below it, by
/// name; any other is text where texts are allowed, and a missing file where not.
std::vector<ColourItem> colour_items(const std::vector<std::string>& arguments, bool texts_allowed);

/// Fills in the colours, on every core. The host runs and the bundle is loaded.
void find_colours(std::vector<ColourItem>& items, ImageColour wanted);

}  // namespace wispen::program
