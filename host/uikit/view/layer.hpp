// host/uikit/view/layer.hpp: CALayer: the part of a view's look that its corners, border and shadow are.
#pragma once

#include "host/geometry/geometry.hpp"
#include "host/uikit/view/geometry.hpp"
#include "platform/UIKit/UIView.hpp"

namespace wispen::uikit {

/// What a layer adds to its view's look. All lengths in points.
struct LayerStyle {
  double corner_radius = 0;
  CACornerMask masked_corners = kCALayerMinXMinYCorner | kCALayerMaxXMinYCorner | kCALayerMinXMaxYCorner |
                                kCALayerMaxXMaxYCorner;  // those that are rounded
  double border_width = 0;
  UIColor border_colour;
  double shadow_opacity = 0;
  double shadow_radius = 3;
  Size shadow_offset{0, -3};
  UIColor shadow_colour;
};

/// The host's CALayer, made when a view is first asked for it.
class Layer : public objc::Implementation<Layer, CALayer> {
 public:
  static CALayer made_for(const UIView& view);
  /// The view dies.
  void detach() { view_ = objc::Unowned<UIView>(); }
  const LayerStyle& style() const { return style_; }

  bool masksToBounds() const { return view_.get().clipsToBounds(); }
  void setMasksToBounds(bool masks) { view_.get().setClipsToBounds(masks); }
  float opacity() const { return static_cast<float>(view_.get().alpha()); }
  void setOpacity(const float& opacity) { view_.get().setAlpha(opacity); }
  float shadowOpacity() const { return static_cast<float>(style_.shadow_opacity); }
  void setShadowOpacity(const float& opacity) { set<&LayerStyle::shadow_opacity>(double{opacity}); }
  CGColorRef borderColor() const;
  void setBorderColor(CGColorRef const& colour);
  CGColorRef shadowColor() const;
  void setShadowColor(CGColorRef const& colour);
  Rect bounds() const { return view_.get().bounds(); }
  Rect frame() const { return view_.get().frame(); }

  template <auto Member>
  auto get() const {
    return style_.*Member;
  }
  template <auto Member, class V>
  void set(const V& value);

 private:
  objc::Unowned<UIView> view_;  // it owns the layer, and clears this when it dies
  LayerStyle style_;
};

}  // namespace wispen::uikit
