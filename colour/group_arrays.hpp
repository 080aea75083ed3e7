// colour/group_arrays.hpp: groups as the kernels hold them, a byte array a component.
#pragma once

#include <cstddef>
#include <cstdint>

namespace wispen::colour {

/// Components stay bytes for ever, being means of bytes. There is room for a group a pixel, and kMostLanes
/// bytes more behind each component, so that whole vectors can be read.
struct GroupArrays {
  static constexpr std::size_t kMostLanes = 32;
  std::uint8_t* r;
  std::uint8_t* g;
  std::uint8_t* b;
  std::int32_t* d;
};

/// Each gives the number of groups.
std::size_t group_plain(const std::uint8_t* pixels, std::size_t count, int threshold,
                        const GroupArrays& groups);
#if defined(__x86_64__)
std::size_t group_sse2(const std::uint8_t* pixels, std::size_t count, int threshold,
                       const GroupArrays& groups);
std::size_t group_avx2(const std::uint8_t* pixels, std::size_t count, int threshold,
                       const GroupArrays& groups);
#elif defined(__aarch64__)
std::size_t group_neon(const std::uint8_t* pixels, std::size_t count, int threshold,
                       const GroupArrays& groups);
#endif

}  // namespace wispen::colour
