// host/graphics/image_name.hpp: names of image files, their variants by scale and device, and the best one.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/core/result.hpp"
#include "host/graphics/appearance.hpp"
#include "host/graphics/image.hpp"

namespace wispen::graphics {

/// "folder/name@2x~ipad.png", taken apart.
struct ImageName {
  std::string base;       ///< "folder/name"
  std::string extension;  ///< "png"; empty when there is none
  double scale = 1;       ///< of @1x, @2x or @3x; 1 when none is given
  bool has_scale = false;
  std::optional<Idiom> idiom;
};

ImageName parse_image_name(std::string_view name);

/// The file names to try for `name` (without a path in front), best first: this idiom's files before common
/// ones, never another idiom's; for either the wanted scale, then larger ones from the nearest on, then
/// smaller ones. A name without an extension means PNG, then JPEG and WebP. A name that states its scale or
/// idiom means that very file.
std::vector<std::string> image_name_candidates(std::string_view name, double scale, Idiom idiom);

/// The path of the best file for `name` in `folder`; nothing when there is none. A name may lead into
/// sub-folders and never out of the folder.
std::optional<std::string> find_image(const std::string& folder, std::string_view name, double scale,
                                      Idiom idiom);

/// The image that find_image() names, loaded. A broken best file is an error, not a reason to take the next.
Result<Image> load_named_image(const std::string& folder, std::string_view name, double scale, Idiom idiom);

/// The best variant of a file given by its whole path, loaded: the platform looks for "x@2x.png" beside
/// "x.png" too.
Result<Image> load_image_variant(const std::string& path, double scale, Idiom idiom);

}  // namespace wispen::graphics
