// colour/pixel_groups.cpp: the groups of like colours, one pixel after the other, and the choice of a faster
// way.

#include "colour/pixel_groups.hpp"

#include <cstdlib>

#include "colour/group_arrays.hpp"

namespace wispen::colour {

namespace {

using Kernel = std::size_t (*)(const std::uint8_t*, std::size_t, int, const GroupArrays&);

template <Kernel Run>
std::vector<Group> group_with(const std::uint8_t* pixels, std::size_t count, int threshold) {
  const std::size_t stride = count + GroupArrays::kMostLanes;
  std::vector<std::uint8_t> components(3 * stride);
  std::vector<std::int32_t> sizes(count);
  const GroupArrays arrays{components.data(), components.data() + stride, components.data() + 2 * stride,
                           sizes.data()};
  std::vector<Group> groups(Run(pixels, count, threshold, arrays));
  for (std::size_t i = 0; i < groups.size(); ++i) {
    groups[i] = {arrays.r[i], arrays.g[i], arrays.b[i], arrays.d[i]};
  }
  return groups;
}

std::vector<GroupingKernel> kernels_of_this_processor() {
  std::vector<GroupingKernel> kernels{{"plain", &group_with<&group_plain>}};
#if defined(__x86_64__)
  kernels.push_back({"sse2", &group_with<&group_sse2>});
  __builtin_cpu_init();
  if (__builtin_cpu_supports("avx2")) kernels.push_back({"avx2", &group_with<&group_avx2>});
#elif defined(__aarch64__)
  kernels.push_back({"neon", &group_with<&group_neon>});
#endif
  return kernels;
}

}  // namespace

std::size_t group_plain(const std::uint8_t* pixels, std::size_t count, int threshold,
                        const GroupArrays& groups) {
  constexpr std::uint8_t kOpacityCut = 128;
  std::size_t size = 0;
  for (const std::uint8_t* pixel = pixels; pixel != pixels + 4 * count; pixel += 4) {
    if (pixel[3] < kOpacityCut) continue;
    std::size_t i = 0;
    while (i < size && std::abs(groups.r[i] - pixel[0]) + std::abs(groups.g[i] - pixel[1]) +
                               std::abs(groups.b[i] - pixel[2]) >=
                           threshold) {
      ++i;
    }
    if (i == size) {
      groups.r[i] = pixel[0];
      groups.g[i] = pixel[1];
      groups.b[i] = pixel[2];
      groups.d[i] = 0;
      ++size;
    } else {
      groups.r[i] = static_cast<std::uint8_t>((groups.r[i] + pixel[0]) / 2);
      groups.g[i] = static_cast<std::uint8_t>((groups.g[i] + pixel[1]) / 2);
      groups.b[i] = static_cast<std::uint8_t>((groups.b[i] + pixel[2]) / 2);
      ++groups.d[i];
    }
  }
  return size;
}

const std::vector<GroupingKernel>& grouping_kernels() {
  static const std::vector<GroupingKernel> kernels = kernels_of_this_processor();
  return kernels;
}

std::vector<Group> group_pixels(const std::uint8_t* pixels, std::size_t count, int threshold) {
  return grouping_kernels().back().group(pixels, count, threshold);
}

Leaders leaders(const std::vector<Group>& groups) {
  Leaders found;
  for (const Group& group : groups) {
    if (found.first == nullptr || group.d > found.first->d) {
      found.second = found.first;
      found.first = &group;
    } else if (found.second == nullptr || group.d > found.second->d) {
      found.second = &group;
    }
  }
  return found;
}

}  // namespace wispen::colour
