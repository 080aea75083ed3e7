// colour/group_avx2.cpp: the grouping where the processor has AVX2. This source alone is compiled for it.

#if defined(__x86_64__)

#include <immintrin.h>

#include "colour/group_by_lanes.hpp"

namespace wispen::colour {

namespace {

alignas(64) constexpr std::uint8_t kOneHot[64] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,   0,
                                                  0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF};

struct Avx2Lanes {
  using V = __m256i;
  static constexpr std::size_t kLanes = 32;

  static V splat(std::uint8_t byte) { return _mm256_set1_epi8(static_cast<char>(byte)); }
  static V splat_pixel(std::uint32_t pixel) { return _mm256_set1_epi32(static_cast<int>(pixel)); }
  static V load(const std::uint8_t* bytes) { return _mm256_loadu_si256(reinterpret_cast<const V*>(bytes)); }
  static V difference(V a, V b) { return _mm256_or_si256(_mm256_subs_epu8(a, b), _mm256_subs_epu8(b, a)); }
  static V distance(V r, V g, V b, V pixel_r, V pixel_g, V pixel_b) {
    return _mm256_adds_epu8(_mm256_adds_epu8(difference(r, pixel_r), difference(g, pixel_g)),
                            difference(b, pixel_b));
  }
  static std::size_t first_within(V values, V most) {
    const int mask = _mm256_movemask_epi8(_mm256_cmpeq_epi8(_mm256_min_epu8(values, most), values));
    return mask == 0 ? kLanes : static_cast<std::size_t>(__builtin_ctz(static_cast<unsigned>(mask)));
  }
  static V mean(V a, V b) {  // the processor's own rounds up
    return _mm256_sub_epi8(_mm256_avg_epu8(a, b),
                           _mm256_and_si256(_mm256_xor_si256(a, b), _mm256_set1_epi8(1)));
  }
  static V one_hot(std::size_t lane) { return load(kOneHot + 32 - lane); }
  static V select(V mask, V yes, V no) { return _mm256_blendv_epi8(no, yes, mask); }
  static bool all_equal(const std::uint8_t* pixels, V pixel) {
    return _mm256_movemask_epi8(_mm256_cmpeq_epi32(load(pixels), pixel)) == -1;
  }
  static bool none_opaque(const std::uint8_t* pixels) {
    return (static_cast<unsigned>(_mm256_movemask_epi8(load(pixels))) & 0x88888888U) == 0;
  }
};

}  // namespace

std::size_t group_avx2(const std::uint8_t* pixels, std::size_t count, int threshold,
                       const GroupArrays& groups) {
  return Grouping<Avx2Lanes>(groups, threshold).run(pixels, count);
}

}  // namespace wispen::colour

#endif
