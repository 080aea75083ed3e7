// host/uikit/views/layer.cpp: CALayer: the part of a view's look that its corners, border and shadow are.

#include "host/uikit/views/layer.hpp"

#include "host/uikit/views/view.hpp"

namespace wispen::uikit {

namespace {

UIColor colour_from(const void* colour) {
  return colour != nullptr ? objc::send<"colorWithCGColor:", UIColor>(objc::class_for<UIColor>(), colour)
                           : UIColor();
}

const void* cg_colour(const UIColor& colour) { return objc::send<"CGColor", const void*>(colour); }

}  // namespace

Layer Layer::of(const View& view) {
  Layer layer = objc::make<Layer>();
  layer.state<LayerState>().view = objc::Unowned<View>(view);
  return layer;
}

void Layer::detach() const { state<LayerState>().view = objc::Unowned<View>(); }

View Layer::view() const { return state<LayerState>().view.get(); }

template <auto Member, class V>
void Layer::set(const V& value) const {
  auto& kept = state<LayerState>().style.*Member;
  if (kept == value) return;
  kept = value;
  const View shown = view();
  if (!shown) return;
  shown.clipsToBounds() ? shown.look_changed_inside() : shown.setNeedsDisplay();
}

void Layer::setCornerRadius(double radius) const { set<&LayerStyle::corner_radius>(radius); }
bool Layer::masksToBounds() const { return view().clipsToBounds(); }
void Layer::setMasksToBounds(bool masks) const { view().setClipsToBounds(masks); }
float Layer::opacity() const { return static_cast<float>(view().alpha()); }
void Layer::setOpacity(const float& opacity) const { view().setAlpha(opacity); }
void Layer::setShadowOpacity(const float& opacity) const {
  set<&LayerStyle::shadow_opacity>(double{opacity});
}
const void* Layer::borderColor() const { return cg_colour(style().border_colour); }
void Layer::setBorderColor(const void* const& colour) const {
  set<&LayerStyle::border_colour>(colour_from(colour));
}
const void* Layer::shadowColor() const { return cg_colour(style().shadow_colour); }
void Layer::setShadowColor(const void* const& colour) const {
  set<&LayerStyle::shadow_colour>(colour_from(colour));
}
Rect Layer::bounds() const { return view().bounds(); }
Rect Layer::frame() const { return view().frame(); }

void Layer::define() {
  objc::Class<Layer>()
      .state<LayerState>()
      .method<"cornerRadius", &Layer::cornerRadius>()
      .method<"setCornerRadius:", &Layer::setCornerRadius>()
      .method<"masksToBounds", &Layer::masksToBounds>()
      .method<"setMasksToBounds:", &Layer::setMasksToBounds>()
      .method<"maskedCorners", &Layer::get<&LayerStyle::masked_corners>>()
      .method<"setMaskedCorners:", &Layer::set<&LayerStyle::masked_corners, NSUInteger>>()
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
