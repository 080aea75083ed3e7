// host/uikit/controls/image_view.cpp: UIImageView: a picture.

#include "host/uikit/controls/image_view.hpp"

#include "host/uikit/painting/painter.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/values/image.hpp"

namespace wispen::uikit {

struct ImageViewState {
  UIImage image;
  UIImage highlighted_image;
  bool highlighted = false;
};

struct ImageViewMethods {
  static ImageViewState& parts(const ImageView& self) { return self.state<ImageViewState>(); }

  static ImageView initWithFrame(objc::Allocated<ImageView> self, const Rect& frame) {
    ImageView view = std::move(self).initialize_super<"initWithFrame:">(frame);
    if (view) view.setUserInteractionEnabled(false);
    return view;
  }
  static ImageView initWithImage(objc::Allocated<ImageView> self, const UIImage& image) {
    const graphics::Image* const pixels = image_of(image);
    ImageView view = std::move(self).initialize<"initWithFrame:">(
        Rect{{0, 0}, pixels != nullptr ? pixels->size() : Size{}});
    if (view) view.setImage(image);
    return view;
  }
  static UIImage shown(const ImageView& self) {
    const ImageViewState& state = parts(self);
    return state.highlighted && state.highlighted_image ? state.highlighted_image : state.image;
  }
  static Size intrinsicContentSize(const ImageView& self) {
    const graphics::Image* const image = image_of(shown(self));
    return image != nullptr ? image->size() : Size{kNoIntrinsicMetric, kNoIntrinsicMetric};
  }
  static Size sizeThatFits(const ImageView& self, const Size&) {
    const graphics::Image* const image = image_of(shown(self));
    return image != nullptr ? image->size() : Size{};
  }
  static UIImage highlightedImage(const ImageView& self) { return parts(self).highlighted_image; }
  static void setHighlightedImage(const ImageView& self, const UIImage& image) {
    parts(self).highlighted_image = image;
    self.setNeedsDisplay();
  }
  static bool isHighlighted(const ImageView& self) { return parts(self).highlighted; }
  static void setHighlighted(const ImageView& self, bool highlighted) {
    parts(self).highlighted = highlighted;
    self.setNeedsDisplay();
  }
  static void paint(const View& view, graphics::Canvas& canvas, const Rect& bounds) {
    paint_image(shown(view.as<ImageView>()), canvas, bounds, view.contentMode(), view.tintColor());
  }
  static Rect extent(const View& view, const Rect& bounds) {
    const graphics::Image* const image = image_of(shown(view.as<ImageView>()));
    if (image == nullptr || image->empty()) return bounds;
    return bounds.united(content_rect(view.contentMode(), image->size(), bounds));
  }
};

ImageView ImageView::make(const UIImage& image) { return alloc().initialize<"initWithImage:">(image); }
UIImage ImageView::image() const { return ImageViewMethods::parts(*this).image; }

void ImageView::setImage(const UIImage& image) const {
  ImageViewState& state = ImageViewMethods::parts(*this);
  if (state.image == image) return;
  state.image = image;
  invalidateIntrinsicContentSize();
  setNeedsDisplay();
}

void paint_image(const UIImage& image, graphics::Canvas& canvas, const Rect& bounds, ContentMode mode,
                 const UIColor& tint) {
  const graphics::Image* const pixels = image_of(image);
  if (pixels == nullptr || pixels->empty() || bounds.empty()) return;
  canvas.draw(*pixels, bounds, mode, colour_of(tint));
}

void ImageView::define() {
  using M = ImageViewMethods;
  objc::Class<ImageView>()
      .state<ImageViewState>()
      .initializer<"initWithFrame:", &M::initWithFrame>()
      .initializer<"initWithImage:", &M::initWithImage>()
      .method<"image", &ImageView::image>()
      .method<"setImage:", &ImageView::setImage>()
      .method<"highlightedImage", &M::highlightedImage>()
      .method<"setHighlightedImage:", &M::setHighlightedImage>()
      .method<"isHighlighted", &M::isHighlighted>()
      .method<"setHighlighted:", &M::setHighlighted>()
      .method<"sizeThatFits:", &M::sizeThatFits>()
      .method<"intrinsicContentSize", &M::intrinsicContentSize>()
      .register_class();
  set_painter(objc::class_for<ImageView>(), &M::paint, &M::extent);
}

}  // namespace wispen::uikit
