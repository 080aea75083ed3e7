// host/uikit/view/look.hpp: the numbers of the look that several classes share. Lengths are points, times
// seconds.
#pragma once

#include "platform/UIKit.hpp"

namespace wispen::uikit::look {

/// What moves under the finger stands a little above its track.
struct ThumbShadow {
  float opacity;
  double radius;
  CGSize offset;
};
inline constexpr ThumbShadow kSwitchThumbShadow{0.15F, 4, {0, 3}};
inline constexpr ThumbShadow kSliderThumbShadow{0.2F, 4, {0, 2}};
inline constexpr ThumbShadow kSegmentShadow{0.12F, 4, {0, 3}};

inline void cast_thumb_shadow(const CALayer& layer, const ThumbShadow& shadow) {
  layer.setShadowOpacity(shadow.opacity);
  layer.setShadowRadius(shadow.radius);
  layer.setShadowOffset(shadow.offset);
}

/// A control that is not enabled shows through.
inline constexpr double kDisabledAlpha = 0.5;

}  // namespace wispen::uikit::look
