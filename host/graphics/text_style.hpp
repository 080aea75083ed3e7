// host/graphics/text_style.hpp: sizes of the platform's text styles at the user's text sizes.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "host/graphics/font.hpp"

namespace wispen::graphics {

/// The user's text size, smallest first; Large is the default.
enum class ContentSize : std::uint8_t {
  ExtraSmall,
  Small,
  Medium,
  Large,
  ExtraLarge,
  ExtraExtraLarge,
  ExtraExtraExtraLarge,
  AccessibilityMedium,
  AccessibilityLarge,
  AccessibilityExtraLarge,
  AccessibilityExtraExtraLarge,
  AccessibilityExtraExtraExtraLarge
};

enum class TextStyle : std::uint8_t {
  LargeTitle,
  Title1,
  Title2,
  Title3,
  Headline,
  Body,
  Callout,
  Subheadline,
  Footnote,
  Caption1,
  Caption2
};

/// Points.
double text_style_size(TextStyle style, ContentSize content_size = ContentSize::Large);
/// The system font of a style; the headline is semibold, all others are regular.
Font text_style_font(TextStyle style, ContentSize content_size = ContentSize::Large);
/// `value`, made for Large, grown or shrunk as the style's font does.
double scaled_for_content_size(double value, TextStyle style, ContentSize content_size);
bool is_accessibility_size(ContentSize content_size);
/// By the platform's short words: "XS", "S", "M", "L", "XL", "XXL", "XXXL", "AccessibilityM" ...
/// "AccessibilityXXXL". Nothing for any other.
std::optional<ContentSize> content_size_from_name(std::string_view name);
std::string_view content_size_name(ContentSize content_size);

}  // namespace wispen::graphics
