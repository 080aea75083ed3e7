// host/app/window/toolbar.cpp: the strip of buttons above the device's screen.

#include "host/app/window/toolbar.hpp"

#include <algorithm>

namespace wispen {

namespace {

constexpr double kTextSize = 11;
constexpr double kMargin = 4;
constexpr double kPadding = 6;

const graphics::Colour kGround = graphics::Colour::hex(0x2A2A2D);
const graphics::Colour kButton = graphics::Colour::hex(0x48484B);
const graphics::Colour kKeyText = graphics::Colour::hex(0x9A9AA0);
const graphics::Colour kText = graphics::Colour::hex(0xF2F2F4);

std::shared_ptr<const graphics::TextLayout> set(const std::string& key, const std::string& value,
                                                double density, double width) {
  graphics::TextAttributes attributes;
  attributes.font = graphics::Font::system(kTextSize * density);
  attributes.colour = kKeyText;
  graphics::AttributedText text(std::string_view{key}, attributes);
  attributes.colour = kText;
  text.append(graphics::AttributedText(std::string_view{" " + value}, attributes));
  graphics::TextConstraints one_line;
  one_line.maximum_lines = 1;
  one_line.width = width;
  one_line.line_break = graphics::LineBreak::TruncateTail;
  one_line.alignment = graphics::TextAlignment::Left;
  one_line.direction = graphics::WritingDirection::LeftToRight;
  return graphics::layout_text(text, one_line);
}

std::string abbreviated(const std::string& value) {
  constexpr std::string_view kLong = "Accessibility";
  return value.starts_with(kLong) ? "A-" + value.substr(kLong.size()) : value;
}

}  // namespace

void Toolbar::paint(const Host& host, graphics::Canvas& canvas, const Rect& area, double density) {
  canvas.fill(area, kGround);
  buttons_.clear();
  std::vector<double> widths;
  double together = 0;
  const auto label = [&](const TraitSwitch& one, double width) {
    return set("F" + std::to_string(one.key), abbreviated(shown_value(host, one)), density, width);
  };
  for (const TraitSwitch& one : switches_) {
    widths.push_back(label(one, graphics::kUnbounded)->size().width + 2 * kPadding * density);
    together += widths.back();
  }
  const double gaps = kMargin * density * static_cast<double>(switches_.size() + 1);
  // In a narrow window all give way alike.
  const double part = std::clamp((area.width() - gaps) / together, 0.0, 1.0);
  double x = area.min_x() + kMargin * density;
  for (std::size_t i = 0; i < switches_.size(); ++i) {
    const Rect button{{x, area.min_y() + kMargin * density},
                      {widths[i] * part, std::max(0.0, area.height() - 2 * kMargin * density)}};
    buttons_.push_back(button);
    x = button.max_x() + kMargin * density;
    canvas.fill(graphics::Path::rounded_rect(button, 4 * density), kButton);
    const double room = std::max(0.0, button.width() - 2 * kPadding * density * part);
    const auto text = label(switches_[i], room);
    canvas.draw(*text, {button.min_x() + kPadding * density * part, button.mid_y() - text->size().height / 2},
                kText);
  }
}

std::optional<std::size_t> Toolbar::switch_at(Point pixel) const {
  const auto found =
      std::ranges::find_if(buttons_, [&](const Rect& button) { return button.contains(pixel); });
  if (found == buttons_.end()) return std::nullopt;
  return static_cast<std::size_t>(found - buttons_.begin());
}

}  // namespace wispen
