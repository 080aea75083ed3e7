// host/graphics/image.hpp: an image as views hold it: pixels, and what they mean.
#pragma once

#include <cstdint>
#include <optional>

#include "host/geometry/geometry.hpp"
#include "host/graphics/pixels.hpp"

namespace wispen::graphics {

/// How stored pixels have to be turned to stand upright; the platform's numbers.
enum class Orientation : std::uint8_t {
  Up = 0,
  Down = 1,
  Left = 2,
  Right = 3,
  UpMirrored = 4,
  DownMirrored = 5,
  LeftMirrored = 6,
  RightMirrored = 7
};

/// From the number that cameras write into files (1 to 8); Up for any other.
Orientation orientation_from_exif(int number);

/// Whether an image is drawn in its own colours or as a stencil in the tint colour; the platform's numbers.
enum class RenderingMode : std::uint8_t { Automatic = 0, AlwaysOriginal = 1, AlwaysTemplate = 2 };

enum class ResizingMode : std::uint8_t { Tile = 0, Stretch = 1 };

/// The part inside the insets is tiled or stretched when the image grows; the rest keeps its size.
struct Resizing {
  EdgeInsets caps;  ///< points
  ResizingMode mode = ResizingMode::Tile;
  friend bool operator==(const Resizing&, const Resizing&) = default;
};

/// A value: copies share the pixels. An image without pixels is empty and draws nothing.
class Image {
 public:
  Image() = default;
  /// `scale` is pixels a point, above 0.
  explicit Image(PixelsRef pixels, double scale = 1, Orientation orientation = Orientation::Up);

  bool empty() const { return pixels_ == nullptr; }
  /// Points, as it stands upright.
  Size size() const;
  double scale() const { return scale_; }
  Orientation orientation() const { return orientation_; }
  RenderingMode rendering_mode() const { return rendering_mode_; }
  const std::optional<Resizing>& resizing() const { return resizing_; }
  /// Symbols are templates unless they are told otherwise.
  bool is_symbol() const { return is_symbol_; }
  /// Whether it is drawn as a stencil where nothing else is said.
  bool is_template() const {
    return rendering_mode_ == RenderingMode::AlwaysTemplate ||
           (rendering_mode_ == RenderingMode::Automatic && is_symbol_);
  }
  /// Where the baseline of a symbol lies, in points above the bottom edge; 0 for other images.
  double baseline_from_bottom() const { return baseline_from_bottom_; }

  /// As stored; null when empty.
  const PixelsRef& pixels() const { return pixels_; }
  /// Turned upright; the same object as pixels() when nothing has to be turned.
  const PixelsRef& upright_pixels() const { return upright_; }

  Image with_rendering_mode(RenderingMode mode) const;
  Image with_resizing(std::optional<Resizing> resizing) const;
  Image with_scale(double scale) const;
  Image as_symbol(double baseline_from_bottom) const;

  friend bool operator==(const Image&, const Image&) = default;

 private:
  PixelsRef pixels_;
  PixelsRef upright_;
  double scale_ = 1;
  Orientation orientation_ = Orientation::Up;
  RenderingMode rendering_mode_ = RenderingMode::Automatic;
  bool is_symbol_ = false;
  double baseline_from_bottom_ = 0;
  std::optional<Resizing> resizing_;
};

}  // namespace wispen::graphics
