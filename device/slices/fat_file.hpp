// device/slices/fat_file.hpp: several images in one file, of which each processor takes its own.
#pragma once

#include <span>
#include <string>

#include "host/core/result.hpp"

namespace wispen::slices {

/// Joins images, each on pages of 16 KB, as it is: a signature stays good. An error where one is not an
/// image, or two are for the same processor.
Result<std::string> join(std::span<const std::string> images);

}  // namespace wispen::slices
