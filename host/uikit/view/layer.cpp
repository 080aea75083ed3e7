// host/uikit/view/layer.cpp: CALayer: the part of a view's look that its corners, border and shadow are.

#include "host/uikit/view/layer.hpp"

#include "host/uikit/view/view.hpp"
#include "host/uikit/view/views.hpp"

namespace wispen::uikit {

namespace {

UIColor colour_from(CGColorRef colour) {
  return colour != nullptr ? UIColor::colorWithCGColor(colour) : UIColor();
}

CGColorRef cg_colour(const UIColor& colour) { return colour.CGColor(); }

}  // namespace

CALayer Layer::made_for(const UIView& view) {
  CALayer layer = objc::make<CALayer>();
  of(layer).view_ = objc::Unowned<UIView>(view);
  return layer;
}

template <auto Member, class V>
void Layer::set(const V& value) {
  auto& kept = style_.*Member;
  if (kept == value) return;
  kept = value;
  const UIView shown = view_.get();
  if (!shown) return;
  shown.clipsToBounds() ? View::of(shown).look_changed_inside() : shown.setNeedsDisplay();
}

CGColorRef Layer::borderColor() const { return cg_colour(style_.border_colour); }
void Layer::setBorderColor(CGColorRef const& colour) { set<&LayerStyle::border_colour>(colour_from(colour)); }
CGColorRef Layer::shadowColor() const { return cg_colour(style_.shadow_colour); }
void Layer::setShadowColor(CGColorRef const& colour) { set<&LayerStyle::shadow_colour>(colour_from(colour)); }

void define_layer() {
  objc::Class<CALayer>::implemented_by<Layer>()
      .method<"cornerRadius", &Layer::get<&LayerStyle::corner_radius>>()
      .method<"setCornerRadius:", &Layer::set<&LayerStyle::corner_radius, double>>()
      .method<"masksToBounds", &Layer::masksToBounds>()
      .method<"setMasksToBounds:", &Layer::setMasksToBounds>()
      .method<"maskedCorners", &Layer::get<&LayerStyle::masked_corners>>()
      .method<"setMaskedCorners:", &Layer::set<&LayerStyle::masked_corners, CACornerMask>>()
      .method<"borderWidth", &Layer::get<&LayerStyle::border_width>>()
      .method<"setBorderWidth:", &Layer::set<&LayerStyle::border_width, double>>()
      .method<"borderColor", &Layer::borderColor>()
      .method<"setBorderColor:", &Layer::setBorderColor>()
      .method<"opacity", &Layer::opacity>()
      .method<"setOpacity:", &Layer::setOpacity>()
      .method<"shadowOpacity", &Layer::shadowOpacity>()
      .method<"setShadowOpacity:", &Layer::setShadowOpacity>()
      .method<"shadowRadius", &Layer::get<&LayerStyle::shadow_radius>>()
      .method<"setShadowRadius:", &Layer::set<&LayerStyle::shadow_radius, double>>()
      .method<"shadowOffset", &Layer::get<&LayerStyle::shadow_offset>>()
      .method<"setShadowOffset:", &Layer::set<&LayerStyle::shadow_offset, Size>>()
      .method<"shadowColor", &Layer::shadowColor>()
      .method<"setShadowColor:", &Layer::setShadowColor>()
      .method<"bounds", &Layer::bounds>()
      .method<"frame", &Layer::frame>()
      .register_class();
}

}  // namespace wispen::uikit
