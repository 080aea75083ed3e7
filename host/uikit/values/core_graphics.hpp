// host/uikit/values/core_graphics.hpp: what is behind the references of CoreGraphics.
#pragma once

#include <utility>

#include "host/graphics/bitmap_context.hpp"
#include "host/graphics/colour.hpp"
#include "host/graphics/image.hpp"
#include "host/uikit/values/counted.hpp"
#include "platform/CoreGraphics.hpp"

struct CGColorSpace {
  CGColorSpaceModel model;
  std::size_t components;
};

struct CGColor : wispen::uikit::Counted {
  explicit CGColor(const wispen::graphics::Components& values) : components(values) {}
  const wispen::graphics::Components components;
};

struct CGImage : wispen::uikit::Counted {
  explicit CGImage(wispen::graphics::PixelsRef stored) : pixels(std::move(stored)) {}
  const wispen::graphics::PixelsRef pixels;  // never null
};

struct CGContext : wispen::uikit::Counted {
  explicit CGContext(wispen::graphics::BitmapContext&& drawn_into) : bitmap(std::move(drawn_into)) {}
  wispen::graphics::BitmapContext bitmap;
};
