// host/graphics/system_colours.cpp: the platform's named colours, fixed and by appearance.

#include "host/graphics/system_colours.hpp"

#include <array>
#include <cstdint>

namespace wispen::graphics {

namespace {

struct Fixed {
  std::string_view name;
  double red;
  double green;
  double blue;
};

// Full RGB on the platform, four components each.
constexpr std::array<Fixed, 9> kFixed{{{"red", 1, 0, 0},
                                       {"green", 0, 1, 0},
                                       {"blue", 0, 0, 1},
                                       {"cyan", 0, 1, 1},
                                       {"yellow", 1, 1, 0},
                                       {"magenta", 1, 0, 1},
                                       {"orange", 1, 0.5, 0},
                                       {"purple", 0.5, 0, 0.5},
                                       {"brown", 0.6, 0.4, 0.2}}};

struct Grey {
  std::string_view name;
  double white;
  double alpha;
};

// The platform keeps these in its grey space: they have two components, not four.
constexpr std::array<Grey, 6> kGreys{{{"black", 0, 1},
                                      {"darkGray", 1.0 / 3, 1},
                                      {"gray", 0.5, 1},
                                      {"lightGray", 2.0 / 3, 1},
                                      {"white", 1, 1},
                                      {"clear", 0, 0}}};

struct Dynamic {
  std::string_view name;
  std::uint32_t light;
  int light_percent;
  std::uint32_t dark;
  int dark_percent;
};

struct Elevated {
  std::string_view name;
  std::uint32_t rgb;
};

// The grounds, one step lighter where something is presented over the dark.
constexpr std::array<Elevated, 6> kElevated{{{"systemBackground", 0x1C1C1E},
                                             {"secondarySystemBackground", 0x2C2C2E},
                                             {"tertiarySystemBackground", 0x3A3A3C},
                                             {"systemGroupedBackground", 0x1C1C1E},
                                             {"secondarySystemGroupedBackground", 0x2C2C2E},
                                             {"tertiarySystemGroupedBackground", 0x3A3A3C}}};

constexpr std::array<Dynamic, 39> kDynamic{{
    {"label", 0x000000, 100, 0xFFFFFF, 100},
    {"secondaryLabel", 0x3C3C43, 60, 0xEBEBF5, 60},
    {"tertiaryLabel", 0x3C3C43, 30, 0xEBEBF5, 30},
    {"quaternaryLabel", 0x3C3C43, 18, 0xEBEBF5, 16},
    {"placeholderText", 0x3C3C43, 30, 0xEBEBF5, 30},
    {"link", 0x007AFF, 100, 0x0984FF, 100},
    {"separator", 0x3C3C43, 29, 0x545458, 60},
    {"opaqueSeparator", 0xC6C6C8, 100, 0x38383A, 100},
    {"systemBackground", 0xFFFFFF, 100, 0x000000, 100},
    {"secondarySystemBackground", 0xF2F2F7, 100, 0x1C1C1E, 100},
    {"tertiarySystemBackground", 0xFFFFFF, 100, 0x2C2C2E, 100},
    {"systemGroupedBackground", 0xF2F2F7, 100, 0x000000, 100},
    {"secondarySystemGroupedBackground", 0xFFFFFF, 100, 0x1C1C1E, 100},
    {"tertiarySystemGroupedBackground", 0xF2F2F7, 100, 0x2C2C2E, 100},
    {"systemFill", 0x787880, 20, 0x787880, 36},
    {"secondarySystemFill", 0x787880, 16, 0x787880, 32},
    {"tertiarySystemFill", 0x767680, 12, 0x767680, 24},
    {"quaternarySystemFill", 0x747480, 8, 0x747480, 18},
    {"lightText", 0xFFFFFF, 60, 0xFFFFFF, 60},
    {"darkText", 0x000000, 100, 0x000000, 100},
    {"systemRed", 0xFF3B30, 100, 0xFF453A, 100},
    {"systemOrange", 0xFF9500, 100, 0xFF9F0A, 100},
    {"systemYellow", 0xFFCC00, 100, 0xFFD60A, 100},
    {"systemGreen", 0x34C759, 100, 0x30D158, 100},
    {"systemTeal", 0x5AC8FA, 100, 0x64D2FF, 100},
    {"systemBlue", 0x007AFF, 100, 0x0A84FF, 100},
    {"systemIndigo", 0x5856D6, 100, 0x5E5CE6, 100},
    {"systemPurple", 0xAF52DE, 100, 0xBF5AF2, 100},
    {"systemPink", 0xFF2D55, 100, 0xFF375F, 100},
    {"systemBrown", 0xA2845E, 100, 0xAC8E68, 100},
    {"systemGray", 0x8E8E93, 100, 0x8E8E93, 100},
    {"systemGray2", 0xAEAEB2, 100, 0x636366, 100},
    {"systemGray3", 0xC7C7CC, 100, 0x48484A, 100},
    {"systemGray4", 0xD1D1D6, 100, 0x3A3A3C, 100},
    {"systemGray5", 0xE5E5EA, 100, 0x2C2C2E, 100},
    {"systemGray6", 0xF2F2F7, 100, 0x1C1C1E, 100},
    {"systemMint", 0x00C7BE, 100, 0x63E6E2, 100},
    {"systemCyan", 0x32ADE6, 100, 0x64D2FF, 100},
    {"tint", 0x007AFF, 100, 0x0A84FF, 100},
}};

std::optional<Colour> elevated_ground(std::string_view name) {
  for (const Elevated& entry : kElevated) {
    if (entry.name == name) return Colour::hex(entry.rgb);
  }
  return std::nullopt;
}

}  // namespace

std::optional<Colour> named_colour(std::string_view name) {
  for (const Fixed& entry : kFixed) {
    if (entry.name == name) return Colour::rgb(entry.red, entry.green, entry.blue);
  }
  for (const Grey& entry : kGreys) {
    if (entry.name == name) return Colour::grey(entry.white, entry.alpha);
  }
  for (const Dynamic& entry : kDynamic) {
    if (entry.name == name) {
      const Colour dark = Colour::hex(entry.dark, entry.dark_percent / 100.0);
      return Colour::dynamic(Colour::hex(entry.light, entry.light_percent / 100.0), dark,
                             elevated_ground(name).value_or(dark));
    }
  }
  return std::nullopt;
}

std::vector<std::string_view> colour_names() {
  std::vector<std::string_view> names;
  names.reserve(kFixed.size() + kGreys.size() + kDynamic.size());
  for (const Fixed& entry : kFixed) names.push_back(entry.name);
  for (const Grey& entry : kGreys) names.push_back(entry.name);
  for (const Dynamic& entry : kDynamic) names.push_back(entry.name);
  return names;
}

}  // namespace wispen::graphics
