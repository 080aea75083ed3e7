// host/layout/autoresizing.cpp: frames that follow their superview's size without constraints.

#include "host/layout/autoresizing.hpp"

#include <algorithm>

namespace wispen::layout {

namespace {

GrowthShares shares_of(double before, double size, double after, unsigned bits) {
  const bool flexible[] = {(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0};
  const double lengths[] = {before, size, after};
  double shares[] = {0, 0, 0};
  double total = 0;
  int count = 0;
  for (int i = 0; i < 3; ++i) {
    if (!flexible[i]) continue;
    total += std::max(lengths[i], 0.0);
    ++count;
  }
  if (count == 0) return {0, 0, 1};
  for (int i = 0; i < 3; ++i) {
    if (flexible[i]) shares[i] = total > 0 ? std::max(lengths[i], 0.0) / total : 1.0 / count;
  }
  return {shares[0], shares[1], shares[2]};
}

}  // namespace

GrowthShares growth_shares(const Rect& frame, Size old_superview, unsigned mask, Axis axis) {
  if (axis == Axis::Horizontal) {
    return shares_of(frame.origin.x, frame.size.width, old_superview.width - frame.max_x(), mask & 7);
  }
  return shares_of(frame.origin.y, frame.size.height, old_superview.height - frame.max_y(), (mask >> 3) & 7);
}

Rect autoresized(const Rect& frame, Size old_superview, Size new_superview, unsigned mask) {
  const GrowthShares across = growth_shares(frame, old_superview, mask, Axis::Horizontal);
  const GrowthShares down = growth_shares(frame, old_superview, mask, Axis::Vertical);
  const double wider = new_superview.width - old_superview.width;
  const double taller = new_superview.height - old_superview.height;
  return {{frame.origin.x + across.before * wider, frame.origin.y + down.before * taller},
          {std::max(frame.size.width + across.size * wider, 0.0),
           std::max(frame.size.height + down.size * taller, 0.0)}};
}

}  // namespace wispen::layout
