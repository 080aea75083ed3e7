// host/graphics/bitmap_context.cpp: draws images into memory of the caller, byte for byte as told.

#include "host/graphics/bitmap_context.hpp"

#include <algorithm>
#include <cmath>
#include <string>

#include "host/graphics/resample.hpp"

namespace wispen::graphics {

namespace {

constexpr std::size_t kBytesPerPixel = 4;

std::uint32_t product_255(std::uint32_t value, std::uint32_t factor) {
  const std::uint32_t product = value * factor + 128;
  return (product + (product >> 8)) >> 8;
}

void store(std::uint8_t* out, std::uint32_t argb) {
  out[0] = static_cast<std::uint8_t>(argb >> 16);
  out[1] = static_cast<std::uint8_t>(argb >> 8);
  out[2] = static_cast<std::uint8_t>(argb);
  out[3] = static_cast<std::uint8_t>(argb >> 24);
}

void lay_over(std::uint8_t* out, const std::uint32_t* row, int count) {
  for (int i = 0; i < count; ++i, out += kBytesPerPixel) {
    const std::uint32_t above = row[i];
    const std::uint32_t alpha = above >> 24;
    if (alpha == 0) continue;
    if (alpha == 255 || out[3] == 0) {
      store(out, above);
      continue;
    }
    const std::uint32_t rest = 255 - alpha;
    const auto sum = [&](std::uint32_t component, std::uint8_t below) {
      return static_cast<std::uint8_t>(component + product_255(below, rest));
    };
    out[0] = sum((above >> 16) & 0xFF, out[0]);
    out[1] = sum((above >> 8) & 0xFF, out[1]);
    out[2] = sum(above & 0xFF, out[2]);
    out[3] = sum(alpha, out[3]);
  }
}

}  // namespace

Result<BitmapContext> BitmapContext::over(void* data, std::size_t width, std::size_t height,
                                          std::size_t bytes_per_row) {
  constexpr auto kMaximum = static_cast<std::size_t>(kMaximumPixels);
  if (data == nullptr || width == 0 || height == 0 || width > kMaximum / height ||
      bytes_per_row < width * kBytesPerPixel) {
    return Error{"a bitmap context of " + std::to_string(width) + " x " + std::to_string(height) +
                 " pixels in rows of " + std::to_string(bytes_per_row) + " bytes cannot be made"};
  }
  return BitmapContext(static_cast<std::uint8_t*>(data), width, height, bytes_per_row);
}

Result<BitmapContext> BitmapContext::create(std::size_t width, std::size_t height) {
  std::uint8_t checked_only = 0;
  // The size is judged before memory is taken, so that an absurd one costs nothing.
  if (auto check =
          over(&checked_only, width, height, width > SIZE_MAX / kBytesPerPixel ? 0 : width * kBytesPerPixel);
      !check) {
    return check;
  }
  std::vector<std::uint8_t> memory(width * height * kBytesPerPixel);
  BitmapContext context(memory.data(), width, height, width * kBytesPerPixel);
  context.own_ = std::move(memory);  // moving keeps the memory in its place
  return context;
}

Rect BitmapContext::in_memory(const Rect& where) const {
  return Rect::make(where.min_x(), static_cast<double>(height_) - where.max_y(), where.width(),
                    where.height());
}

void BitmapContext::draw(const PixelView& pixels, const Rect& where) {
  const Rect target = in_memory(where);
  const Rect all = Rect::make(0, 0, static_cast<double>(width_), static_cast<double>(height_));
  const Rect visible = all.intersection(target.pixel_aligned());
  if (pixels.empty() || visible.empty()) return;

  const int left = static_cast<int>(visible.min_x());
  const int top = static_cast<int>(visible.min_y());
  const int columns = static_cast<int>(visible.width());
  const int rows = static_cast<int>(visible.height());
  std::vector<std::uint32_t> scaled(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows));
  const MutablePixelView view{scaled.data(), columns, rows, columns};
  resample(pixels, target.offset(-left, -top), view);
  for (int y = 0; y < rows; ++y) {
    std::uint8_t* out = data_ + static_cast<std::size_t>(top + y) * bytes_per_row_ +
                        static_cast<std::size_t>(left) * kBytesPerPixel;
    lay_over(out, view.row(y), columns);
  }
}

void BitmapContext::draw(const Image& image, const Rect& where) {
  if (image.empty()) return;
  const PixelsRef& upright = image.upright_pixels();
  draw(upright->view(), where);
}

void BitmapContext::clear(const Rect& where) {
  const Rect all = Rect::make(0, 0, static_cast<double>(width_), static_cast<double>(height_));
  const Rect visible = all.intersection(in_memory(where).pixel_aligned());
  if (visible.empty()) return;
  for (auto y = static_cast<std::size_t>(visible.min_y()); y < static_cast<std::size_t>(visible.max_y());
       ++y) {
    std::fill_n(data_ + y * bytes_per_row_ + static_cast<std::size_t>(visible.min_x()) * kBytesPerPixel,
                static_cast<std::size_t>(visible.width()) * kBytesPerPixel, std::uint8_t{0});
  }
}

Result<Image> BitmapContext::make_image() const {
  auto pixels = Pixels::create(static_cast<std::int64_t>(width_), static_cast<std::int64_t>(height_));
  if (!pixels) return pixels.error();
  const MutablePixelView view = pixels->mutable_view();
  for (int y = 0; y < view.height; ++y) {
    const std::uint8_t* in = data_ + static_cast<std::size_t>(y) * bytes_per_row_;
    for (int x = 0; x < view.width; ++x, in += kBytesPerPixel) {
      view.row(y)[x] =
          std::uint32_t{in[3]} << 24 | std::uint32_t{in[0]} << 16 | std::uint32_t{in[1]} << 8 | in[2];
    }
  }
  return Image(std::make_shared<const Pixels>(*std::move(pixels)), 1);
}

}  // namespace wispen::graphics
