// host/uikit/values/tinted_image.cpp: an image as a stencil for one colour.

#include "host/uikit/values/tinted_image.hpp"

#include <array>
#include <cstdint>
#include <memory>
#include <utility>

namespace wispen::uikit {

graphics::Image tinted(const graphics::Image& image, const graphics::Rgba& colour) {
  if (image.empty()) return image;
  const graphics::Pixels& stencil = *image.pixels();
  auto pixels = graphics::Pixels::create(stencil.width(), stencil.height());
  if (!pixels) return image;

  // One colour, 256 opacities.
  std::array<std::uint32_t, 256> by_alpha{};
  for (std::size_t alpha = 0; alpha < by_alpha.size(); ++alpha) {
    graphics::Rgba faded = colour;
    faded.alpha *= static_cast<double>(alpha) / 255;
    by_alpha[alpha] = graphics::premultiplied_argb(faded);
  }
  const auto target = pixels->mutable_view();
  for (int y = 0; y < target.height; ++y) {
    const std::uint32_t* const from = stencil.view().row(y);
    std::uint32_t* const to = target.row(y);
    for (int x = 0; x < target.width; ++x) to[x] = by_alpha[from[x] >> 24];
  }

  graphics::Image result(std::make_shared<const graphics::Pixels>(*std::move(pixels)), image.scale(),
                         image.orientation());
  if (image.is_symbol()) result = result.as_symbol(image.baseline_from_bottom());
  return result.with_rendering_mode(image.rendering_mode()).with_resizing(image.resizing());
}

}  // namespace wispen::uikit
