// host/graphics/image.cpp: an image as views hold it: pixels, and what they mean.

#include "host/graphics/image.hpp"

#include <array>
#include <utility>

namespace wispen::graphics {

namespace {

bool swaps_sides(Orientation orientation) {
  return orientation == Orientation::Left || orientation == Orientation::Right ||
         orientation == Orientation::LeftMirrored || orientation == Orientation::RightMirrored;
}

// The stored pixel that is seen at (x, y) of the upright picture.
std::uint32_t stored_pixel(const PixelView& stored, Orientation orientation, int x, int y) {
  const int right = stored.width - 1;
  const int bottom = stored.height - 1;
  switch (orientation) {
    case Orientation::UpMirrored:
      return stored.at(right - x, y);
    case Orientation::Down:
      return stored.at(right - x, bottom - y);
    case Orientation::DownMirrored:
      return stored.at(x, bottom - y);
    case Orientation::LeftMirrored:
      return stored.at(y, x);
    case Orientation::Right:
      return stored.at(y, bottom - x);
    case Orientation::RightMirrored:
      return stored.at(right - y, bottom - x);
    case Orientation::Left:
      return stored.at(right - y, x);
    case Orientation::Up:
      break;
  }
  return stored.at(x, y);
}

PixelsRef turned_upright(const PixelsRef& stored, Orientation orientation) {
  if (stored == nullptr || orientation == Orientation::Up) return stored;
  const bool swapped = swaps_sides(orientation);
  auto turned = Pixels::create(swapped ? stored->height() : stored->width(),
                               swapped ? stored->width() : stored->height());
  if (!turned) return stored;  // as many pixels as before, so this does not happen
  const MutablePixelView target = turned->mutable_view();
  const PixelView source = stored->view();
  for (int y = 0; y < target.height; ++y) {
    for (int x = 0; x < target.width; ++x) target.row(y)[x] = stored_pixel(source, orientation, x, y);
  }
  return std::make_shared<const Pixels>(*std::move(turned));
}

}  // namespace

Orientation orientation_from_exif(int number) {
  constexpr std::array<Orientation, 9> kOrientations{Orientation::Up,           Orientation::Up,
                                                     Orientation::UpMirrored,   Orientation::Down,
                                                     Orientation::DownMirrored, Orientation::LeftMirrored,
                                                     Orientation::Right,        Orientation::RightMirrored,
                                                     Orientation::Left};
  return number >= 1 && number <= 8 ? kOrientations[static_cast<std::size_t>(number)] : Orientation::Up;
}

Image::Image(PixelsRef pixels, double scale, Orientation orientation)
    : pixels_(std::move(pixels)),
      upright_(turned_upright(pixels_, orientation)),
      scale_(scale > 0 ? scale : 1),
      orientation_(orientation) {}

Size Image::size() const {
  if (empty()) return {};
  return {upright_->width() / scale_, upright_->height() / scale_};
}

Image Image::with_rendering_mode(RenderingMode mode) const {
  Image copy = *this;
  copy.rendering_mode_ = mode;
  return copy;
}

Image Image::with_resizing(std::optional<Resizing> resizing) const {
  Image copy = *this;
  copy.resizing_ = resizing;
  return copy;
}

Image Image::with_scale(double scale) const {
  Image copy = *this;
  copy.scale_ = scale > 0 ? scale : 1;
  return copy;
}

Image Image::as_symbol(double baseline_from_bottom) const {
  Image copy = *this;
  copy.is_symbol_ = true;
  copy.baseline_from_bottom_ = baseline_from_bottom;
  return copy;
}

}  // namespace wispen::graphics
