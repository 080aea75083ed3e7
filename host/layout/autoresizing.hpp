// host/layout/autoresizing.hpp: frames that follow their superview's size without constraints.
#pragma once

#include "host/geometry/geometry.hpp"
#include "host/layout/axis.hpp"

namespace wispen::layout {

/// The platform's mask, bit by bit.
enum AutoresizingMask : unsigned {
  kFlexibleLeftMargin = 1,
  kFlexibleWidth = 2,
  kFlexibleRightMargin = 4,
  kFlexibleTopMargin = 8,
  kFlexibleHeight = 16,
  kFlexibleBottomMargin = 32,
};

/// How much of a superview's growth along one axis each part takes; the three add up to 1.
struct GrowthShares {
  double before = 0;
  double size = 0;
  double after = 0;
  friend bool operator==(const GrowthShares&, const GrowthShares&) = default;
};

/// The flexible parts share growth in proportion to their old lengths, and equally where these are all zero
/// (a negative length counts as zero). With no flexible part all of it falls to the margin after the view.
GrowthShares growth_shares(const Rect& frame, Size old_superview, unsigned mask, Axis axis);

/// The frame after its superview's bounds went from one size to the other. A size never becomes negative.
Rect autoresized(const Rect& frame, Size old_superview, Size new_superview, unsigned mask);

}  // namespace wispen::layout
