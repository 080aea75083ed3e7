// colour/group_sse2.cpp: the grouping on any 64-bit x86 processor.

#if defined(__x86_64__)

#include <emmintrin.h>

#include "colour/group_by_lanes.hpp"

namespace wispen::colour {

namespace {

alignas(32) constexpr std::uint8_t kOneHot[32] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF};

struct Sse2Lanes {
  using V = __m128i;
  static constexpr std::size_t kLanes = 16;

  static V splat(std::uint8_t byte) { return _mm_set1_epi8(static_cast<char>(byte)); }
  static V splat_pixel(std::uint32_t pixel) { return _mm_set1_epi32(static_cast<int>(pixel)); }
  static V load(const std::uint8_t* bytes) { return _mm_loadu_si128(reinterpret_cast<const V*>(bytes)); }
  static V difference(V a, V b) { return _mm_or_si128(_mm_subs_epu8(a, b), _mm_subs_epu8(b, a)); }
  static V distance(V r, V g, V b, V pixel_r, V pixel_g, V pixel_b) {
    return _mm_adds_epu8(_mm_adds_epu8(difference(r, pixel_r), difference(g, pixel_g)),
                         difference(b, pixel_b));
  }
  static std::size_t first_within(V values, V most) {
    const int mask = _mm_movemask_epi8(_mm_cmpeq_epi8(_mm_min_epu8(values, most), values));
    return static_cast<std::size_t>(__builtin_ctz(static_cast<unsigned>(mask) | 0x10000U));
  }
  static V mean(V a, V b) {  // the processor's own rounds up
    return _mm_sub_epi8(_mm_avg_epu8(a, b), _mm_and_si128(_mm_xor_si128(a, b), _mm_set1_epi8(1)));
  }
  static V one_hot(std::size_t lane) { return load(kOneHot + 16 - lane); }
  static V select(V mask, V yes, V no) {
    return _mm_or_si128(_mm_and_si128(mask, yes), _mm_andnot_si128(mask, no));
  }
  static bool all_equal(const std::uint8_t* pixels, V pixel) {
    return _mm_movemask_epi8(_mm_cmpeq_epi32(load(pixels), pixel)) == 0xFFFF;
  }
  static bool none_opaque(const std::uint8_t* pixels) {
    return (_mm_movemask_epi8(load(pixels)) & 0x8888) == 0;
  }
};

}  // namespace

std::size_t group_sse2(const std::uint8_t* pixels, std::size_t count, int threshold,
                       const GroupArrays& groups) {
  return Grouping<Sse2Lanes>(groups, threshold).run(pixels, count);
}

}  // namespace wispen::colour

#endif
