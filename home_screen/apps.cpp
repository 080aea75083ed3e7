// home_screen/apps.cpp: the apps on the home screen, and what is behind them.

#include "home_screen/apps.hpp"

#include <cmath>
#include <numbers>

namespace wispen::home_screen {

namespace {

constexpr double kCorner = 13.5;
constexpr double kMiddle = kIconSize / 2;

double circle(double x, double y, double middle_x, double middle_y, double radius) {
  return std::hypot(x - middle_x, y - middle_y) - radius;
}
double box(double x, double y, double middle_x, double middle_y, double half_width, double half_height,
           double corner) {
  const double dx = std::abs(x - middle_x) - half_width + corner;
  const double dy = std::abs(y - middle_y) - half_height + corner;
  return std::hypot(std::max(dx, 0.0), std::max(dy, 0.0)) + std::min(std::max(dx, dy), 0.0) - corner;
}

// How far outside of its sign's edge a place of an icon lies, in points.

double moon(double x, double y) {
  return std::max(circle(x, y, 29, 30, 18.5), -circle(x, y, 38, 23.5, 14.5));
}
double leaf(double x, double y) {
  // The stem goes on where the blade's tip points.
  const double along = (x + y) / std::numbers::sqrt2;
  const double aside = (x - y) / std::numbers::sqrt2;
  return std::min(std::max(circle(x, y, 19, 41, 25), circle(x, y, 41, 19, 25)),
                  box(along, aside, 62, 0, 6, 1.6, 1.6));
}
double clock_face(double x, double y) {
  const double hands = std::min(box(x, y, kMiddle, 23, 1.6, 8.5, 1.6), box(x, y, 35, kMiddle, 6.5, 1.6, 1.6));
  return std::min(std::abs(circle(x, y, kMiddle, kMiddle, 18)) - 2, hands);
}
double bars(double x, double y) {
  return std::min(
      {box(x, y, 18, 36, 4, 9, 2), box(x, y, kMiddle, 30, 4, 15, 2), box(x, y, 42, 33, 4, 12, 2)});
}
double bubble(double x, double y) {
  const double tail = std::max(circle(x, y, 18, 38, 8), -circle(x, y, 12, 34, 7.5));
  return std::min(box(x, y, kMiddle, 27, 19, 14, 13), std::max(tail, 34 - y));
}
double ring(double x, double y) { return std::abs(circle(x, y, kMiddle, kMiddle, 14)) - 5; }
double lens(double x, double y) {
  const double body = std::min(box(x, y, kMiddle, 32, 20, 13.5, 4), box(x, y, kMiddle, 19, 7, 4, 2));
  return std::max(body, -std::max(circle(x, y, kMiddle, 32, 9.5), -circle(x, y, kMiddle, 32, 6)));
}
double lines(double x, double y) {
  return std::min(
      {box(x, y, kMiddle, 20, 16, 2, 2), box(x, y, kMiddle, 30, 16, 2, 2), box(x, y, 24, 40, 10, 2, 2)});
}

struct Look {
  const char* name;
  Tone ground;
  Tone sign;
  double (*shape)(double x, double y);
};

// The first is dark, vivid and covers more than 60 %, and the moon on it is pale: so its dominant colour, its
// second one, and what is done for dark icons can be told apart at a glance.
constexpr std::array<Look, 4> kRow{Look{"Nightfall", {.24, .13, .52}, {1, .84, .62}, moon},
                                   Look{"Garden", {.93, .96, .90}, {.24, .62, .33}, leaf},
                                   Look{"Clock", {.13, .13, .15}, {.97, .97, .97}, clock_face},
                                   Look{"Figures", {.99, .62, .22}, {1, 1, 1}, bars}};
constexpr std::array<Look, 4> kDock{Look{"Letters", {.18, .66, .38}, {1, 1, 1}, bubble},
                                    Look{"Rings", {.20, .48, .95}, {.92, .96, 1}, ring},
                                    Look{"Camera", {.80, .82, .85}, {.22, .23, .26}, lens},
                                    Look{"Notes", {1, .86, .36}, {.42, .31, .10}, lines}};

App drawn(const Look& look, double scale) {
  const double pixel = 1 / scale;
  const UIImage icon = painted({kIconSize, kIconSize}, scale, [&](double x, double y) {
    Tone tone = mix(look.ground, look.sign, coverage(look.shape(x, y), pixel));
    tone.alpha = coverage(box(x, y, kMiddle, kMiddle, kMiddle, kMiddle, kCorner), pixel);
    return tone;
  });
  return {look.name, icon};
}

}  // namespace

Apps::Apps(double scale) {
  for (std::size_t i = 0; i < row.size(); ++i) row[i] = drawn(kRow[i], scale);
  for (std::size_t i = 0; i < dock.size(); ++i) dock[i] = drawn(kDock[i], scale);
  row[0].came_with_the_device = false;
}

UIImage wallpaper(CGSize size, bool dark) {
  const Tone zenith = dark ? Tone{.05, .07, .16} : Tone{.17, .40, .66};
  const Tone horizon = dark ? Tone{.23, .20, .36} : Tone{.84, .62, .56};
  const std::array<Tone, 3> hills =
      dark ? std::array<Tone, 3>{{{.14, .17, .30}, {.10, .13, .23}, {.06, .09, .16}}}
           : std::array<Tone, 3>{{{.42, .55, .62}, {.27, .45, .52}, {.16, .33, .40}}};
  return painted(size, 1, [&](double x, double y) {
    const double across = x / size.width;
    const double down = y / size.height;
    Tone tone = mix(zenith, horizon, std::clamp(down / 0.72, 0.0, 1.0));
    for (std::size_t i = 0; i < hills.size(); ++i) {
      const auto number = static_cast<double>(i);
      const double crest = 0.58 + 0.13 * number +
                           0.035 * std::sin(across * (5.2 + 1.7 * number) + 1.3 * number) +
                           0.012 * std::sin(across * 13 + 2.1 * number);
      tone = mix(tone, hills[i], coverage((crest - down) * size.height, 1));
    }
    return tone;
  });
}

}  // namespace wispen::home_screen
