// wispen/colour_sheet.cpp: images beside their two colours, on one picture.

#include "wispen/colour_sheet.hpp"

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "host/graphics/canvas.hpp"
#include "host/graphics/image_file.hpp"

namespace wispen::program {

namespace {

using namespace graphics;

constexpr double kScale = 2;
constexpr Size kCell{220, 96};
constexpr double kMargin = 12;
constexpr double kImageSide = 64;
constexpr Size kSwatch{64, 64};
constexpr double kSmallText = 9;

Colour colour_of(const NamedColour& named) {
  return Colour::rgb(named.red, named.green, named.blue, named.alpha);
}

void draw_text(Canvas& canvas, const std::string& text, const Rect& box, const Colour& colour) {
  TextAttributes attributes;
  attributes.font = Font::system(kSmallText);
  TextConstraints constraints;
  constraints.width = box.width();
  constraints.maximum_lines = 1;
  constraints.alignment = TextAlignment::Centre;
  constraints.line_break = LineBreak::TruncateMiddle;
  canvas.draw(*layout_text(AttributedText(text, attributes), constraints), box.origin, colour);
}

void draw_swatch(Canvas& canvas, const ColourItem& item, Point origin) {
  const Rect box{origin, kSwatch};
  const Path path = Path::rounded_rect(box, 10);
  const Rect label = Rect::make(box.min_x(), box.mid_y() - 6, box.width(), 12);
  if (!item.error.empty()) {
    canvas.stroke(path, Colour::grey(0.8), StrokeStyle{1, false, {3, 3}});
    draw_text(canvas, "none", label, Colour::grey(0.5));
    return;
  }
  canvas.fill(path, colour_of(item.colour));
  canvas.stroke(path, Colour::grey(0, 0.12), StrokeStyle{0.5, false, {}});
  draw_text(canvas, item.colour.hex, label, item.colour.dark ? Colour::grey(1) : Colour::grey(0));
}

void draw_cell(Canvas& canvas, const ColourItem& dominant, const ColourItem& second, Point origin) {
  if (const auto image = load_image(dominant.input)) {
    canvas.draw(*image, Rect::make(origin.x, origin.y, kImageSide, kImageSide), ContentMode::AspectFit);
  }
  draw_swatch(canvas, dominant, {origin.x + kImageSide + 8, origin.y});
  draw_swatch(canvas, second, {origin.x + kImageSide + kSwatch.width + 16, origin.y});
  const std::string name = std::filesystem::path(dominant.input).filename().string();
  draw_text(canvas, name, Rect::make(origin.x, origin.y + kImageSide + 4, kCell.width - kMargin, 12),
            Colour::grey(0.3));
}

}  // namespace

Result<void> write_colour_sheet(const std::vector<ColourItem>& dominant,
                                const std::vector<ColourItem>& second, const std::string& path) {
  std::vector<std::size_t> shown;
  for (std::size_t i = 0; i < dominant.size() && shown.size() < kMostOnSheet; ++i) {
    if (dominant[i].is_image && dominant[i].error.empty()) shown.push_back(i);
  }
  if (shown.empty()) return Error{"there is no image to put on a sheet"};

  const auto columns = static_cast<std::size_t>(
      std::ceil(std::sqrt(static_cast<double>(shown.size()) * kCell.height / kCell.width)));
  const std::size_t rows = (shown.size() + columns - 1) / columns;
  const Size size{kMargin + static_cast<double>(columns) * kCell.width,
                  kMargin + static_cast<double>(rows) * kCell.height};
  auto canvas = Canvas::create(size, kScale);
  if (!canvas) return canvas.error();
  canvas->fill(Rect{{0, 0}, size}, Colour::grey(0.97));
  for (std::size_t i = 0; i < shown.size(); ++i) {
    const std::size_t column = i % columns;
    const std::size_t row = i / columns;
    draw_cell(*canvas, dominant[shown[i]], second[shown[i]],
              {kMargin + static_cast<double>(column) * kCell.width,
               kMargin + static_cast<double>(row) * kCell.height});
  }
  return write_png(canvas->pixels(), path);
}

}  // namespace wispen::program
