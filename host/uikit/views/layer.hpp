// host/uikit/views/layer.hpp: CALayer: the part of a view's look that its corners, border and shadow are.
#pragma once

#include "host/uikit/views/geometry.hpp"
#include "platform/UIKit/UIColor.hpp"

namespace wispen::uikit {

class View;

/// What a layer adds to its view's look. All lengths in points.
struct LayerStyle {
  double corner_radius = 0;
  /// Bits of the corners that are rounded: top left 1, top right 2, bottom left 4, bottom right 8.
  NSUInteger masked_corners = 15;
  double border_width = 0;
  UIColor border_colour;
  double shadow_opacity = 0;
  double shadow_radius = 3;
  Size shadow_offset{0, -3};
  UIColor shadow_colour;
};

struct LayerState {
  objc::Unowned<View> view;  // it owns the layer, and clears this when it dies
  LayerStyle style;
};

/// The host's CALayer, made when a view is first asked for it.
class Layer : public objc::Authored<Layer, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"CALayer"};
  using Authored::Authored;

  static void define();
  static Layer of(const View& view);
  void detach() const;

  const LayerStyle& style() const { return state<LayerState>().style; }

  double cornerRadius() const { return style().corner_radius; }
  void setCornerRadius(double radius) const;
  bool masksToBounds() const;
  void setMasksToBounds(bool masks) const;

 private:
  View view() const;
  template <auto Member>
  auto get() const {
    return state<LayerState>().style.*Member;
  }
  template <auto Member, class V>
  void set(const V& value) const;
  float opacity() const;
  void setOpacity(const float& opacity) const;
  float shadowOpacity() const { return static_cast<float>(style().shadow_opacity); }
  void setShadowOpacity(const float& opacity) const;
  const void* borderColor() const;
  void setBorderColor(const void* const& colour) const;
  const void* shadowColor() const;
  void setShadowColor(const void* const& colour) const;
  Rect bounds() const;
  Rect frame() const;
};

}  // namespace wispen::uikit
