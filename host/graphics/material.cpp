// host/graphics/material.cpp: the frosted panes that show what lies behind them.

#include "host/graphics/material.hpp"

#include <array>
#include <cstddef>
#include <cstdint>

namespace wispen::graphics {

namespace {

constexpr double kSigma = 20;
constexpr double kSaturation = 1.8;

struct Tint {
  std::uint32_t light;
  int light_percent;
  std::uint32_t dark;
  int dark_percent;
};

// Ultra thin, thin, regular, thick, and the bars' own.
constexpr std::array<Tint, 5> kSystemTints{{{0xFAFAFA, 45, 0x252525, 50},
                                            {0xF8F8F8, 60, 0x252525, 65},
                                            {0xF7F7F7, 74, 0x252525, 78},
                                            {0xF8F8F8, 87, 0x252525, 88},
                                            {0xF9F9F9, 82, 0x1D1D1D, 82}}};

enum class Look { ByAppearance, AlwaysLight, AlwaysDark };

Material material(const Tint& tint, Look look) {
  const Colour light = Colour::hex(tint.light, tint.light_percent / 100.0);
  const Colour dark = Colour::hex(tint.dark, tint.dark_percent / 100.0);
  if (look == Look::AlwaysLight) return {kSigma, kSaturation, light};
  if (look == Look::AlwaysDark) return {kSigma, kSaturation, dark};
  return {kSigma, kSaturation, Colour::dynamic(light, dark)};
}

}  // namespace

Material blur_effect_material(int style) {
  constexpr Tint kRegular{0xF7F7F7, 78, 0x1E1E1E, 76};
  constexpr Tint kProminent{0xFFFFFF, 86, 0x2C2C2E, 84};
  constexpr Tint kExtraLight{0xF9F9F9, 82, 0xF9F9F9, 82};
  constexpr Tint kLight{0xFFFFFF, 30, 0xFFFFFF, 30};
  constexpr Tint kDark{0x1C1C1C, 73, 0x1C1C1C, 73};
  constexpr Tint kExtraDark{0x0A0A0A, 82, 0x0A0A0A, 82};
  switch (style) {
    case 0:
      return material(kExtraLight, Look::AlwaysLight);
    case 1:
      return material(kLight, Look::AlwaysLight);
    case 2:
      return material(kDark, Look::AlwaysDark);
    case 3:
      return material(kExtraDark, Look::AlwaysDark);
    case 5:
      return material(kProminent, Look::ByAppearance);
    default:
      break;
  }
  constexpr int kFirstSystemStyle = 6;
  constexpr int kLastSystemStyle = 20;
  if (style < kFirstSystemStyle || style > kLastSystemStyle) return material(kRegular, Look::ByAppearance);
  const int number = style - kFirstSystemStyle;
  return material(kSystemTints[static_cast<std::size_t>(number % 5)], static_cast<Look>(number / 5));
}

Material backdrop_material(int style) {
  if (style == 1) return blur_effect_material(2);
  if (style == 2) return {kSigma, kSaturation, Colour()};
  return blur_effect_material(1);
}

}  // namespace wispen::graphics
