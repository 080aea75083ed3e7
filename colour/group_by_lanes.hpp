// colour/group_by_lanes.hpp: the grouping over vectors of bytes, whatever the processor calls them.
//
// Included by one source a kind of processor, each compiled for that kind alone. So nothing here may end up
// as a function that another source shares: no standard library, and every function depends on Lanes.
#pragma once

#include <cstddef>
#include <cstdint>

#include "colour/group_arrays.hpp"

namespace wispen::colour {

/// Lanes gives: V, a vector of kLanes bytes; splat, splat_pixel, load; distance, the saturated sum of the
/// three components' differences; first_within, the first lane whose value is at most another's, or kLanes;
/// mean, truncated; one_hot, all ones in one lane; select; all_equal and none_opaque, over kLanes / 4 pixels.
template <class Lanes>
class Grouping {
 public:
  using V = typename Lanes::V;

  Grouping(const GroupArrays& groups, int threshold)
      : groups_(groups), most_(Lanes::splat(static_cast<std::uint8_t>(threshold - 1))) {}

  std::size_t run(const std::uint8_t* pixels, std::size_t count) {
    for (std::size_t i = 0; i < count;) {
      const std::uint32_t pixel = word(pixels + 4 * i);
      if ((pixel & kOpaque) == 0) {
        ++i;
        while (i + kPixels <= count && Lanes::none_opaque(pixels + 4 * i)) i += kPixels;
      } else if ((pixel & kColour) == last_colour_) {
        // The same pixel again finds the same group: that has only come nearer, and none before it changed.
        std::size_t length = 1;
        const V same = Lanes::splat_pixel(pixel);
        while (i + length + kPixels <= count && Lanes::all_equal(pixels + 4 * (i + length), same)) {
          length += kPixels;
        }
        join_again(pixels + 4 * i, length);
        i += length;
      } else {
        last_colour_ = pixel & kColour;
        join_or_begin(pixels + 4 * i);
        ++i;
      }
    }
    return size_;
  }

 private:
  static constexpr std::size_t kLanes = Lanes::kLanes;
  static constexpr std::size_t kPixels = kLanes / 4;
  // The last byte of a pixel is the highest of its word: both processors keep the lowest byte first.
  static constexpr std::uint32_t kOpaque = 0x80000000;
  static constexpr std::uint32_t kColour = 0x00FFFFFF;

  static std::uint32_t word(const std::uint8_t* bytes) {
    std::uint32_t value;
    __builtin_memcpy(&value, bytes, sizeof value);
    return value;
  }
  static std::uint8_t mean(unsigned a, unsigned b) { return static_cast<std::uint8_t>((a + b) / 2); }

  void join_or_begin(const std::uint8_t* pixel) {
    const V r = Lanes::splat(pixel[0]);
    const V g = Lanes::splat(pixel[1]);
    const V b = Lanes::splat(pixel[2]);
    // Lanes behind the last group hold whatever they hold: a match there comes after every real one.
    const std::size_t lane = Lanes::first_within(Lanes::distance(r_, g_, b_, r, g, b), most_);
    if (lane < kLanes && lane < size_) {
      // Most pixels join the group that the last one joined. The branch lets the processor go on before it
      // knows; without it every pixel would wait for the vector to reach memory and come back.
      if (lane != last_) {
        last_ = lane;
        hot_ = Lanes::one_hot(lane);
      }
      r_ = Lanes::select(hot_, Lanes::mean(r_, r), r_);
      g_ = Lanes::select(hot_, Lanes::mean(g_, g), g_);
      b_ = Lanes::select(hot_, Lanes::mean(b_, b), b_);
      join_in_memory(lane, pixel);
      return;
    }
    for (std::size_t first = kLanes; first < size_; first += kLanes) {
      const V distance = Lanes::distance(Lanes::load(groups_.r + first), Lanes::load(groups_.g + first),
                                         Lanes::load(groups_.b + first), r, g, b);
      const std::size_t found = Lanes::first_within(distance, most_);
      if (found == kLanes) continue;
      if (first + found >= size_) break;
      last_ = first + found;
      join_in_memory(last_, pixel);
      return;
    }
    last_ = size_++;
    groups_.r[last_] = pixel[0];
    groups_.g[last_] = pixel[1];
    groups_.b[last_] = pixel[2];
    groups_.d[last_] = 0;
    if (last_ >= kLanes) return;
    hot_ = Lanes::one_hot(last_);
    set_lanes(pixel[0], pixel[1], pixel[2]);
  }

  void join_in_memory(std::size_t group, const std::uint8_t* pixel) {
    groups_.r[group] = mean(groups_.r[group], pixel[0]);
    groups_.g[group] = mean(groups_.g[group], pixel[1]);
    groups_.b[group] = mean(groups_.b[group], pixel[2]);
    ++groups_.d[group];
  }

  /// The pixel `times` more into the group that it joined last. The mean stands still after a few.
  void join_again(const std::uint8_t* pixel, std::size_t times) {
    std::uint8_t& r = groups_.r[last_];
    std::uint8_t& g = groups_.g[last_];
    std::uint8_t& b = groups_.b[last_];
    groups_.d[last_] += static_cast<std::int32_t>(times);
    bool moved = false;
    for (; times > 0; --times) {
      const std::uint8_t next_r = mean(r, pixel[0]);
      const std::uint8_t next_g = mean(g, pixel[1]);
      const std::uint8_t next_b = mean(b, pixel[2]);
      if (next_r == r && next_g == g && next_b == b) break;
      r = next_r;
      g = next_g;
      b = next_b;
      moved = true;
    }
    if (moved && last_ < kLanes) set_lanes(r, g, b);
  }

  void set_lanes(std::uint8_t r, std::uint8_t g, std::uint8_t b) {
    r_ = Lanes::select(hot_, Lanes::splat(r), r_);
    g_ = Lanes::select(hot_, Lanes::splat(g), g_);
    b_ = Lanes::select(hot_, Lanes::splat(b), b_);
  }

  const GroupArrays groups_;
  const V most_;
  std::size_t size_ = 0;
  std::size_t last_ = 0;                    // the group that the last pixel joined
  std::uint32_t last_colour_ = 0xFFFFFFFF;  // no colour has the highest byte
  // The first groups a second time, in registers: read from memory just after a byte of them was written,
  // they would have to wait for it.
  V r_ = Lanes::splat(0);
  V g_ = Lanes::splat(0);
  V b_ = Lanes::splat(0);
  V hot_ = Lanes::splat(0);  // ones in the lane of last_, where that is in the registers
};

}  // namespace wispen::colour
