// host/graphics/text_style.cpp: sizes of the platform's text styles at the user's text sizes.

#include "host/graphics/text_style.hpp"

#include <array>

namespace wispen::graphics {

namespace {

constexpr std::size_t kContentSizes = 12;
constexpr std::size_t kTextStyles = 11;

// A row for each text size; the columns follow TextStyle.
constexpr std::array<std::array<std::uint8_t, kTextStyles>, kContentSizes> kSizes{{
    {31, 25, 19, 17, 14, 14, 13, 12, 12, 11, 11},
    {32, 26, 20, 18, 15, 15, 14, 13, 12, 11, 11},
    {33, 27, 21, 19, 16, 16, 15, 14, 12, 11, 11},
    {34, 28, 22, 20, 17, 17, 16, 15, 13, 12, 11},
    {36, 30, 24, 22, 19, 19, 18, 17, 15, 14, 13},
    {38, 32, 26, 24, 21, 21, 20, 19, 17, 16, 15},
    {40, 34, 28, 26, 23, 23, 22, 21, 19, 18, 17},
    {44, 38, 34, 31, 28, 28, 26, 25, 23, 22, 20},
    {48, 43, 39, 37, 33, 33, 32, 30, 27, 26, 24},
    {52, 48, 44, 43, 40, 40, 38, 36, 33, 32, 29},
    {56, 53, 50, 49, 47, 47, 44, 42, 38, 37, 34},
    {60, 58, 56, 55, 53, 53, 51, 49, 44, 43, 40},
}};

constexpr std::array<std::string_view, kContentSizes> kNames{"XS",
                                                             "S",
                                                             "M",
                                                             "L",
                                                             "XL",
                                                             "XXL",
                                                             "XXXL",
                                                             "AccessibilityM",
                                                             "AccessibilityL",
                                                             "AccessibilityXL",
                                                             "AccessibilityXXL",
                                                             "AccessibilityXXXL"};

}  // namespace

double text_style_size(TextStyle style, ContentSize content_size) {
  return kSizes[static_cast<std::size_t>(content_size)][static_cast<std::size_t>(style)];
}

Font text_style_font(TextStyle style, ContentSize content_size) {
  const double weight = style == TextStyle::Headline ? font_weight::kSemibold : font_weight::kRegular;
  return Font::system(text_style_size(style, content_size), weight);
}

double scaled_for_content_size(double value, TextStyle style, ContentSize content_size) {
  return value * text_style_size(style, content_size) / text_style_size(style);
}

bool is_accessibility_size(ContentSize content_size) {
  return content_size >= ContentSize::AccessibilityMedium;
}

std::optional<ContentSize> content_size_from_name(std::string_view name) {
  for (std::size_t i = 0; i < kNames.size(); ++i) {
    if (kNames[i] == name) return static_cast<ContentSize>(i);
  }
  return std::nullopt;
}

std::string_view content_size_name(ContentSize content_size) {
  return kNames[static_cast<std::size_t>(content_size)];
}

}  // namespace wispen::graphics
