// colour/group_neon.cpp: the grouping on the phone's processor.

#if defined(__aarch64__)

#include <arm_neon.h>

#include "colour/group_by_lanes.hpp"

namespace wispen::colour {

namespace {

alignas(32) constexpr std::uint8_t kOneHot[32] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF};

struct NeonLanes {
  using V = uint8x16_t;
  static constexpr std::size_t kLanes = 16;

  static V splat(std::uint8_t byte) { return vdupq_n_u8(byte); }
  static V splat_pixel(std::uint32_t pixel) { return vreinterpretq_u8_u32(vdupq_n_u32(pixel)); }
  static V load(const std::uint8_t* bytes) { return vld1q_u8(bytes); }
  static V distance(V r, V g, V b, V pixel_r, V pixel_g, V pixel_b) {
    return vqaddq_u8(vqaddq_u8(vabdq_u8(r, pixel_r), vabdq_u8(g, pixel_g)), vabdq_u8(b, pixel_b));
  }
  static std::size_t first_within(V values, V most) {
    // Four bits a lane: there is no instruction that gathers one.
    const uint8x8_t narrow = vshrn_n_u16(vreinterpretq_u16_u8(vcleq_u8(values, most)), 4);
    const std::uint64_t mask = vget_lane_u64(vreinterpret_u64_u8(narrow), 0);
    return mask == 0 ? kLanes : static_cast<std::size_t>(__builtin_ctzll(mask)) / 4;
  }
  static V mean(V a, V b) { return vhaddq_u8(a, b); }
  static V one_hot(std::size_t lane) { return load(kOneHot + 16 - lane); }
  static V select(V mask, V yes, V no) { return vbslq_u8(mask, yes, no); }
  static bool all_equal(const std::uint8_t* pixels, V pixel) {
    return vminvq_u8(vceqq_u8(load(pixels), pixel)) == 0xFF;
  }
  static bool none_opaque(const std::uint8_t* pixels) {
    return (vmaxvq_u32(vreinterpretq_u32_u8(load(pixels))) & 0x80000000U) == 0;
  }
};

}  // namespace

std::size_t group_neon(const std::uint8_t* pixels, std::size_t count, int threshold,
                       const GroupArrays& groups) {
  return Grouping<NeonLanes>(groups, threshold).run(pixels, count);
}

}  // namespace wispen::colour

#endif
