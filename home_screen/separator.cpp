// home_screen/separator.cpp: the lines between rows, and between groups of rows.

#include "home_screen/separator.hpp"

#include <cmath>

namespace wispen::home_screen {

namespace {

constexpr double kSystemThin = 0.5;
constexpr double kSystemBold = 8;
constexpr double kBoldness = 3;       // how much thicker than a thin line
constexpr double kFadedShare = 0.35;  // of the line, at each end

UIImage line_image(CGSize size, const UIColor& given, LineStyle style) {
  Tone tone;
  given.getRed(&tone.red, &tone.green, &tone.blue, &tone.alpha);
  const double scale = UIScreen::mainScreen().scale();
  const double dot = std::max(size.height, 1.0);
  return painted(size, scale, [&](double x, double y) {
    double part = 1;
    if (style == LineStyle::Faded) {
      part = std::min({1.0, x / (size.width * kFadedShare), (size.width - x) / (size.width * kFadedShare)});
    } else {
      // Dots as thick as the line, half as far apart again.
      const double from_middle = std::fmod(x, dot * 2.5) - dot / 2;
      part = coverage(std::hypot(from_middle, y - size.height / 2) - dot / 2, 1 / scale);
    }
    Tone here = tone;
    here.alpha *= part;
    return here;
  });
}

UIView plain_separator(SeparatorKind kind, const Ground& ground, double y, double width) {
  const bool thin = kind == SeparatorKind::Thin;
  const UIView line = UIView::alloc().initWithFrame({{0, y}, {width, thin ? kSystemThin : kSystemBold}});
  line.setBackgroundColor(thin ? plain_line(ground) : plain_line(ground).colorWithAlphaComponent(0.15));
  return line;
}

}  // namespace

UIView make_separator(SeparatorKind kind, const SeparatorSettings& settings, const UIColor& given,
                      const Ground& ground, bool enabled, double y, double width) {
  if (!enabled) return plain_separator(kind, ground, y, width);
  const bool thin = kind == SeparatorKind::Thin;
  const double height = thin ? settings.thickness : settings.thickness * kBoldness;
  const double trim = std::min(settings.trim, width / 2);
  const CGSize size{width - 2 * trim, height};
  if ((thin ? settings.thin_hidden : settings.bold_hidden) || size.width < 1 || height <= 0) return UIView();
  const bool in_colour = given && (thin ? settings.thin_colour : settings.bold_colour);
  const UIColor ink = in_colour ? coloured_line(given, ground) : plain_line(ground);
  const CGRect frame{{trim, y}, size};
  if (settings.style == LineStyle::Solid) {
    const UIView line = UIView::alloc().initWithFrame(frame);
    line.setBackgroundColor(ink);
    return line;
  }
  const UIImageView line = UIImageView::alloc().initWithImage(line_image(size, ink, settings.style));
  line.setFrame(frame);
  return line;
}

}  // namespace wispen::home_screen
