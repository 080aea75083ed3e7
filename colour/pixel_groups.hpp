// colour/pixel_groups.hpp: the groups of like colours among an image's pixels.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace wispen::colour {

/// A running average of colours, 0 to 255, and how many pixels joined it after the first.
struct Group {
  std::int32_t r = 0;
  std::int32_t g = 0;
  std::int32_t b = 0;
  std::int32_t d = 0;
  friend bool operator==(const Group&, const Group&) = default;
};

/// Groups `count` pixels of four bytes, red, green, blue and alpha. Those with an alpha below 128 are passed
/// over. A pixel joins the first group, in order of creation, whose city-block distance is below `threshold`
/// (1 to 255), and that group's colour becomes the truncated mean of both; where there is none it begins a
/// group. In order of creation.
std::vector<Group> group_pixels(const std::uint8_t* pixels, std::size_t count, int threshold);

/// The first two of the groups by size, largest first, equal ones in order of creation; null where there are
/// not so many.
struct Leaders {
  const Group* first = nullptr;
  const Group* second = nullptr;
};
Leaders leaders(const std::vector<Group>& groups);

/// The ways there are to do the same; all give the same groups.
struct GroupingKernel {
  const char* name;
  std::vector<Group> (*group)(const std::uint8_t* pixels, std::size_t count, int threshold);
};
/// Those that this processor can run, plain first and fastest last, which is the one group_pixels() takes.
const std::vector<GroupingKernel>& grouping_kernels();

}  // namespace wispen::colour
