// host/uikit/controls/image_view.cpp: UIImageView: a picture.

#include "host/uikit/controls/image_view.hpp"

#include "host/uikit/controls/controls.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/values/image.hpp"
#include "host/uikit/view/painting/painter.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

namespace {

class ImageView : public objc::Implementation<ImageView, UIImageView> {
 public:
  static UIImageView initWithFrame(objc::Allocated<UIImageView> self, const Rect& frame) {
    UIImageView view = super_init<"initWithFrame:">(std::move(self), frame);
    if (view) view.setUserInteractionEnabled(false);
    return view;
  }
  static UIImageView initWithImage(objc::Allocated<UIImageView> self, const UIImage& image) {
    const graphics::Image* const pixels = image_of(image);
    UIImageView view = std::move(self).initialize<"initWithFrame:">(
        Rect{{0, 0}, pixels != nullptr ? pixels->size() : Size{}});
    if (view) view.setImage(image);
    return view;
  }
  UIImage shown() { return highlighted_ && highlighted_image_ ? highlighted_image_ : image_; }
  Size intrinsicContentSize() {
    const graphics::Image* const image = image_of(shown());
    return image != nullptr ? image->size() : Size{UIViewNoIntrinsicMetric, UIViewNoIntrinsicMetric};
  }
  Size sizeThatFits(const Size&) {
    const graphics::Image* const image = image_of(shown());
    return image != nullptr ? image->size() : Size{};
  }
  void setHighlightedImage(const UIImage& image) {
    highlighted_image_ = image;
    self().setNeedsDisplay();
  }
  void setHighlighted(bool highlighted) {
    highlighted_ = highlighted;
    self().setNeedsDisplay();
  }
  void paint(graphics::Canvas& canvas, const Rect& bounds) {
    paint_image(shown(), canvas, bounds, View::of(self()).contentMode(), self().tintColor());
  }
  Rect extent(const Rect& bounds) {
    const graphics::Image* const image = image_of(shown());
    if (image == nullptr || image->empty()) return bounds;
    return bounds.united(content_rect(View::of(self()).contentMode(), image->size(), bounds));
  }
  void setImage(const UIImage& image) {
    if (image_ == image) return;
    image_ = image;
    self().invalidateIntrinsicContentSize();
    self().setNeedsDisplay();
  }

 private:
  friend void wispen::uikit::define_image_view();

  UIImage image_;
  UIImage highlighted_image_;
  bool highlighted_ = false;
};

}  // namespace

void paint_image(const UIImage& image, graphics::Canvas& canvas, const Rect& bounds, ContentMode mode,
                 const UIColor& tint) {
  const graphics::Image* const pixels = image_of(image);
  if (pixels == nullptr || pixels->empty() || bounds.empty()) return;
  canvas.draw(*pixels, bounds, mode, colour_of(tint));
}

void define_image_view() {
  objc::Class<UIImageView>::implemented_by<ImageView>()
      .initializer<"initWithFrame:", &ImageView::initWithFrame>()
      .initializer<"initWithImage:", &ImageView::initWithImage>()
      .getter<"image", &ImageView::image_>()
      .method<"setImage:", &ImageView::setImage>()
      .getter<"highlightedImage", &ImageView::highlighted_image_>()
      .method<"setHighlightedImage:", &ImageView::setHighlightedImage>()
      .getter<"isHighlighted", &ImageView::highlighted_>()
      .method<"setHighlighted:", &ImageView::setHighlighted>()
      .method<"sizeThatFits:", &ImageView::sizeThatFits>()
      .method<"intrinsicContentSize", &ImageView::intrinsicContentSize>()
      .register_class();
  set_painter<&ImageView::paint, &ImageView::extent>();
}

}  // namespace wispen::uikit
