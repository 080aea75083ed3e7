// host/uikit/controls/image_view.hpp: UIImageView: a picture.
#pragma once

#include "host/uikit/views/view.hpp"
#include "platform/UIKit/UIImage.hpp"

namespace wispen::graphics {
class Canvas;
}

namespace wispen::uikit {

class ImageView : public objc::Authored<ImageView, View> {
 public:
  static constexpr objc::FixedString kClass{"UIImageView"};
  using Authored::Authored;

  static void define();
  static ImageView make(const UIImage& image);

  UIImage image() const;
  void setImage(const UIImage& image) const;

 private:
  friend struct ImageViewMethods;
};

/// Draws an image laid into the bounds; templates, and symbols, take the tint.
void paint_image(const UIImage& image, graphics::Canvas& canvas, const Rect& bounds, ContentMode mode,
                 const UIColor& tint);

}  // namespace wispen::uikit
